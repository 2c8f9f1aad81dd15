#include "IioScanLayout.h"

#include <QDir>
#include <QRegularExpression>
#include <algorithm>

#include "IioSysfs.h"

bool IioScanLayout::ParseType(const QByteArray& text, Channel* channel) {
    static const QRegularExpression format(
        QStringLiteral("^(be|le):([su])(\\d+)/(\\d+)(?:X(\\d+))?>>(\\d+)$"));
    const QRegularExpressionMatch match = format.match(QString::fromLatin1(text.trimmed()));
    if (!match.hasMatch()) return false;
    const int bits = match.captured(3).toInt();
    const int storage = match.captured(4).toInt();
    const int repeat = match.captured(5).isEmpty() ? 1 : match.captured(5).toInt();
    const int shift = match.captured(6).toInt();
    const bool storageOk = storage == 8 || storage == 16 || storage == 32 || storage == 64;
    if (!storageOk || bits < 1 || bits + shift > storage || repeat < 1) return false;
    channel->bigEndian = match.captured(1) == QLatin1String("be");
    channel->isSigned = match.captured(2) == QLatin1String("s");
    channel->bits = bits;
    channel->storageBits = storage;
    channel->repeat = repeat;
    channel->shift = shift;
    return true;
}

bool IioScanLayout::Read(const QString& device, IioScanLayout* layout, QString* error) {
    const QDir elements(device + QStringLiteral("/scan_elements"));
    std::vector<Channel> channels;
    for (const QString& file : elements.entryList({QStringLiteral("*_en")}, QDir::Files)) {
        const QString stem = file.chopped(3);  // "in_accel_x"
        if (IioSysfs::Text(elements.filePath(file)) != "1") continue;
        Channel channel;
        channel.name = stem.mid(3).toLatin1();
        bool indexOk = false;
        channel.index = IioSysfs::Text(elements.filePath(stem + QStringLiteral("_index")))
                            .toInt(&indexOk);
        const QByteArray type = IioSysfs::Text(elements.filePath(stem + QStringLiteral("_type")));
        if (!indexOk || !ParseType(type, &channel)) {
            *error = QStringLiteral("%1: unreadable scan element %2").arg(device, stem);
            return false;
        }
        channels.push_back(channel);
    }
    if (!layout->Arrange(std::move(channels))) {
        *error = QStringLiteral("%1: x, y and z are not all in the scan").arg(device);
        return false;
    }
    return true;
}

bool IioScanLayout::Arrange(std::vector<Channel> channels) {
    std::sort(channels.begin(), channels.end(),
              [](const Channel& a, const Channel& b) { return a.index < b.index; });
    channels_ = std::move(channels);
    axes_ = {-1, -1, -1};
    timestamp_ = -1;
    int offset = 0;
    int largest = 1;
    for (int i = 0; i < int(channels_.size()); ++i) {
        Channel& channel = channels_[i];
        const int bytes = channel.storageBits / 8;
        offset = (offset + bytes - 1) / bytes * bytes;
        channel.offset = offset;
        offset += bytes * channel.repeat;
        largest = std::max(largest, bytes);
        for (int axis = 0; axis < 3; ++axis) {
            if (channel.name == QByteArray("accel_") + "xyz"[axis]) axes_[axis] = i;
        }
        if (channel.name == "timestamp") timestamp_ = i;
    }
    scanBytes_ = (offset + largest - 1) / largest * largest;
    return std::all_of(axes_.begin(), axes_.end(), [](int i) { return i >= 0; });
}

long long IioScanLayout::Value(const std::uint8_t* scan, const Channel& channel) const {
    const int bytes = channel.storageBits / 8;
    std::uint64_t word = 0;
    for (int b = 0; b < bytes; ++b) {
        const int from = channel.bigEndian ? b : bytes - 1 - b;
        word = (word << 8) | scan[channel.offset + from];
    }
    word >>= channel.shift;
    if (channel.bits < 64) {
        word &= (std::uint64_t{1} << channel.bits) - 1;
        if (channel.isSigned && (word >> (channel.bits - 1)) != 0)
            word |= ~std::uint64_t{0} << channel.bits;
    }
    return static_cast<long long>(word);
}

void IioScanLayout::Decode(const std::uint8_t* scan, std::array<long long, 3>* axes,
                           qint64* timeNs) const {
    for (int axis = 0; axis < 3; ++axis) (*axes)[axis] = Value(scan, channels_[axes_[axis]]);
    if (timestamp_ >= 0) *timeNs = Value(scan, channels_[timestamp_]);
}
