#include "FakeIioDevice.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <cmath>

namespace {
constexpr double kStandardGravity = 9.80665;

bool writeFile(const QString& path, const QByteArray& text) {
    QDir().mkpath(path.section(QLatin1Char('/'), 0, -2));
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(text + '\n') >= 0;
}
}  // namespace

const std::vector<FakeIioDevice::Shape>& FakeIioDevice::Shapes() {
    static const std::vector<Shape> shapes = {
        {"inv_mpu6050", "mpu6050", false, 0.002394, "sampling_frequency", "50",
         "sampling_frequency_available", "10 20 50 100 200 500", "", "", "c",
         "E:ACCEL_MOUNT_MATRIX=0, 1, 0; -1, 0, 0; 0, 0, 1", "be:s16/16>>0", "mpu6050-dev%1",
         true},
        {"st_lsm6dsx", "lsm9ds1_accel", true, 0.002392, "sampling_frequency", "10",
         "sampling_frequency_available", "10 50 119 238 476 952", "mount_matrix",
         "-1, 0, 0; 0, 1, 0; 0, 0, -1", "+iio", "E:ACCEL_LOCATION=display", "le:s16/16>>0", "",
         false},
        {"st_accel", "lis3dh", false, 0.038307, "sampling_frequency", "1",
         "sampling_frequency_available", "1 10 25 50 100 200 400 1600 5000", "", "", "", "",
         "le:s12/16>>4", "lis3dh-trigger", false},
        {"bmc150", "bmc150_accel", false, 0.038300, "in_accel_sampling_frequency", "15.620000",
         "sampling_frequency_available", "15.620000 31.260000 62.500000 125 250 500 1000",
         "in_mount_matrix", "0, -1, 0; 1, 0, 0; 0, 0, 1", "", "", "le:s12/16>>4",
         "bmc150_accel-dev%1", false},
        {"hid-sensor-accel-3d", "accel_3d", false, 0.009807, "in_accel_sampling_frequency", "0",
         "", "", "", "", "c", "E:ACCEL_LOCATION=base", "le:s32/32>>0", "accel_3d-dev%1", false},
    };
    return shapes;
}

FakeIioDevice::FakeIioDevice(const QString& root, const Shape& shape, int number)
    : root_(root), shape_(shape), number_(number) {
    const QString node = QStringLiteral("iio:device%1").arg(number);
    const QString real =
        root + QStringLiteral("/sys/devices/platform/%1.%2/%3").arg(shape.driver).arg(number).arg(node);
    QDir().mkpath(real);
    QDir().mkpath(DevicesRoot());
    QFile::link(real, DevicesRoot() + QLatin1Char('/') + node);
    const QString at = real + QLatin1Char('/');
    writeFile(at + QStringLiteral("name"), shape.name);
    writeFile(at + QStringLiteral("dev"), QByteArray("241:") + QByteArray::number(number));
    for (const char* axis : {"x", "y", "z"}) {
        writeFile(at + QStringLiteral("in_accel_%1_raw").arg(axis), "0");
        if (shape.perAxisScale)
            writeFile(at + QStringLiteral("in_accel_%1_scale").arg(axis), QByteArray::number(shape.scale, 'f', 6));
    }
    if (!shape.perAxisScale) writeFile(at + QStringLiteral("in_accel_scale"), QByteArray::number(shape.scale, 'f', 6));
    writeFile(at + QLatin1String(shape.rateAttribute), shape.rate);
    if (*shape.offeredAttribute != 0) writeFile(at + QLatin1String(shape.offeredAttribute), shape.offered);
    if (*shape.matrixAttribute != 0) writeFile(at + QLatin1String(shape.matrixAttribute), shape.matrix);
    if (*shape.udevFile != 0) {
        const QString file = QByteArray(shape.udevFile) == "c"
                                 ? QStringLiteral("c241:%1").arg(number)
                                 : QStringLiteral("+iio:") + node;
        writeFile(UdevDataRoot() + QLatin1Char('/') + file,
                  QByteArray("I:1234\nE:SUBSYSTEM=iio\n") + shape.udevProperties);
    }
    // The buffer and its scan elements; only x, y and z are on at first (and the
    // temperature, for the driver that has one in its scan).
    writeFile(at + QStringLiteral("buffer/enable"), "0");
    writeFile(at + QStringLiteral("buffer/length"), "480");
    writeFile(at + QStringLiteral("buffer/watermark"), "1");
    std::vector<IioScanLayout::Channel> channels;
    const auto element = [&](const char* name, int index, const char* type, bool on) {
        const QString stem = at + QStringLiteral("scan_elements/in_") + QLatin1String(name);
        writeFile(stem + QStringLiteral("_en"), on ? "1" : "0");
        writeFile(stem + QStringLiteral("_index"), QByteArray::number(index));
        writeFile(stem + QStringLiteral("_type"), type);
        IioScanLayout::Channel channel;
        channel.name = name;
        channel.index = index;
        IioScanLayout::ParseType(type, &channel);
        if (on || qstrcmp(name, "timestamp") == 0) channels.push_back(channel);
    };
    element("accel_x", 0, shape.scanType, true);
    element("accel_y", 1, shape.scanType, true);
    element("accel_z", 2, shape.scanType, true);
    element("temp", 3, "be:s16/16>>0", shape.tempInScan);
    element("anglvel_x", 4, "be:s16/16>>0", false);
    element("timestamp", 7, "le:s64/64>>0", false);
    layout_.Arrange(channels);
    if (*shape.trigger != 0) {
        const QString trigger = QString::fromLatin1(shape.trigger).replace(QLatin1String("%1"), QString::number(number));
        writeFile(at + QStringLiteral("trigger/current_trigger"), "");
        writeFile(DevicesRoot() + QStringLiteral("/trigger%1/name").arg(number), trigger.toLatin1());
    }
    QDir().mkpath(DevRoot());
    ::mkfifo((DevRoot() + QLatin1Char('/') + node).toLocal8Bit().constData(), 0666);
}

QString FakeIioDevice::Folder() const {
    return DevicesRoot() + QStringLiteral("/iio:device%1").arg(number_);
}

bool FakeIioDevice::Write(const QString& attribute, const QByteArray& value) const {
    return writeFile(Folder() + QLatin1Char('/') + attribute, value);
}

QByteArray FakeIioDevice::Read(const QString& attribute) const {
    QFile file(Folder() + QLatin1Char('/') + attribute);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
}

std::array<long long, 3> FakeIioDevice::Counts(const AccelerationSample& chip) const {
    const double g[] = {chip.x, chip.y, chip.z};
    std::array<long long, 3> counts{};
    for (int i = 0; i < 3; ++i) counts[i] = std::llround(g[i] * kStandardGravity / shape_.scale);
    return counts;
}

bool FakeIioDevice::SetReading(const AccelerationSample& chip) const {
    // In place and at a fixed width, as a reader holding the file open sees sysfs change:
    // never an empty file, never another file.
    const std::array<long long, 3> counts = Counts(chip);
    bool ok = true;
    for (int i = 0; i < 3; ++i) {
        const QString path = Folder() + QStringLiteral("/in_accel_%1_raw").arg(QLatin1Char("xyz"[i]));
        const QByteArray text = QByteArray::number(counts[i]).leftJustified(11, ' ') + '\n';
        const int fd = ::open(path.toLocal8Bit().constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
        ok = fd >= 0 && ::pwrite(fd, text.constData(), size_t(text.size()), 0) == text.size() && ok;
        if (fd >= 0) ::close(fd);
    }
    return ok;
}

QByteArray FakeIioDevice::Scan(const AccelerationSample& chip, qint64 timeNs) const {
    QByteArray scan(layout_.ScanBytes(), '\0');
    const std::array<long long, 3> counts = Counts(chip);
    IioScanLayout::Channel axis;
    IioScanLayout::ParseType(shape_.scanType, &axis);
    // Each axis at its place: x, y, z lead every layout here, in storage-size steps.
    const auto put = [&scan](int offset, int bytes, bool bigEndian, unsigned long long word) {
        for (int b = 0; b < bytes; ++b)
            scan[offset + (bigEndian ? bytes - 1 - b : b)] = char((word >> (8 * b)) & 0xff);
    };
    const int bytes = axis.storageBits / 8;
    for (int i = 0; i < 3; ++i) {
        const unsigned long long word = (static_cast<unsigned long long>(counts[i]) << axis.shift) &
                                        (bytes == 8 ? ~0ull : ((1ull << (8 * bytes)) - 1));
        put(i * bytes, bytes, axis.bigEndian, word);
    }
    if (shape_.tempInScan) put(3 * bytes, 2, true, 0x0123);
    put(layout_.ScanBytes() - 8, 8, false, static_cast<unsigned long long>(timeNs));
    return scan;
}

int FakeIioDevice::OpenFeed() const {
    const QString node = DevRoot() + QStringLiteral("/iio:device%1").arg(number_);
    return ::open(node.toLocal8Bit().constData(), O_RDWR | O_CLOEXEC);
}
