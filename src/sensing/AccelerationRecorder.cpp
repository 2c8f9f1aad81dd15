#include "AccelerationRecorder.h"

#include <charconv>

namespace {
constexpr std::size_t kFlushAt = 1 << 20;

void appendSeconds(std::string& out, qint64 ns) {
    if (ns < 0) out += '-';
    const quint64 magnitude = ns < 0 ? 0 - static_cast<quint64>(ns) : static_cast<quint64>(ns);
    char digits[32];
    auto [end, ec] = std::to_chars(digits, digits + sizeof digits, magnitude / 1'000'000'000);
    out.append(digits, end);
    out += '.';
    quint64 fraction = magnitude % 1'000'000'000;
    char decimals[9];
    for (int i = 8; i >= 0; --i) {
        decimals[i] = static_cast<char>('0' + fraction % 10);
        fraction /= 10;
    }
    out.append(decimals, sizeof decimals);
}

void appendValue(std::string& out, float value) {
    char text[32];
    auto [end, ec] = std::to_chars(text, text + sizeof text, value);
    out += ',';
    out.append(text, end);
}
}  // namespace

AccelerationRecorder::AccelerationRecorder(Unit unit) : unit_(unit) {}

AccelerationRecorder::~AccelerationRecorder() {
    Close(nullptr);
}

bool AccelerationRecorder::Open(const QString& path, QString* error) {
    Close(nullptr);
    file_.setFileName(path);
    if (!file_.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        if (error) *error = QStringLiteral("%1: cannot write: %2").arg(path, file_.errorString());
        return false;
    }
    writeError_.clear();
    samples_ = 0;
    buffer_.clear();
    buffer_.reserve(kFlushAt + 256);
    const char* unit = unit_ == Unit::StandardGravity ? "g" : "m/s^2";
    buffer_ += "\"Time (s)\"";
    for (const char* axis : {"x", "y", "z"}) {
        buffer_ += ",\"Acceleration ";
        buffer_ += axis;
        buffer_ += " (";
        buffer_ += unit;
        buffer_ += ")\"";
    }
    buffer_ += '\n';
    return true;
}

void AccelerationRecorder::Append(qint64 timeNs, float x, float y, float z) {
    if (!file_.isOpen()) return;
    if (samples_ == 0) firstNs_ = timeNs;
    ++samples_;
    appendSeconds(buffer_, timeNs - firstNs_);
    appendValue(buffer_, x);
    appendValue(buffer_, y);
    appendValue(buffer_, z);
    buffer_ += '\n';
    if (buffer_.size() >= kFlushAt) Flush();
}

void AccelerationRecorder::Flush() {
    if (buffer_.empty()) return;
    const qint64 size = static_cast<qint64>(buffer_.size());
    if (writeError_.isEmpty() && file_.write(buffer_.data(), size) != size) {
        writeError_ =
            QStringLiteral("%1: cannot write: %2").arg(file_.fileName(), file_.errorString());
    }
    buffer_.clear();
}

bool AccelerationRecorder::Close(QString* error) {
    if (!file_.isOpen()) return writeError_.isEmpty();
    Flush();
    if (writeError_.isEmpty() && !file_.flush()) {
        writeError_ =
            QStringLiteral("%1: cannot write: %2").arg(file_.fileName(), file_.errorString());
    }
    file_.close();
    if (!writeError_.isEmpty() && error) *error = writeError_;
    return writeError_.isEmpty();
}
