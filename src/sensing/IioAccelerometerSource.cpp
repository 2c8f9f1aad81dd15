#include "IioAccelerometerSource.h"

#include <QDir>
#include <charconv>

namespace {
constexpr double kStandardGravity = 9.80665;
const char* const kAxes[] = {"x", "y", "z"};

// A whole sysfs attribute as a number; false if missing or not a number.
bool readNumber(const QString& path, double& value) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    const QByteArray text = file.read(64).trimmed();
    bool ok = false;
    value = text.toDouble(&ok);
    return ok;
}

// The axis's own attribute, else the one shared by all axes.
bool readAttribute(const QString& device, const char* axis, const char* attribute, double& value) {
    return readNumber(QStringLiteral("%1/in_accel_%2_%3")
                          .arg(device, QLatin1String(axis), QLatin1String(attribute)),
                      value) ||
           readNumber(QStringLiteral("%1/in_accel_%2").arg(device, QLatin1String(attribute)),
                      value);
}
}  // namespace

IioAccelerometerSource::IioAccelerometerSource(const QString& devicesRoot)
    : device_(FindDevice(devicesRoot)) {}

IioAccelerometerSource::~IioAccelerometerSource() {
    Stop();
}

QString IioAccelerometerSource::FindDevice(const QString& root) {
    const QDir dir(root);
    const QStringList entries = dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& entry : entries) {
        const QString device = dir.filePath(entry);
        bool complete = true;
        for (const char* axis : kAxes) {
            double scale = 0.0;
            if (!QFile::exists(
                    QStringLiteral("%1/in_accel_%2_raw").arg(device, QLatin1String(axis))) ||
                !readAttribute(device, axis, "scale", scale)) {
                complete = false;
                break;
            }
        }
        if (complete) return device;
    }
    return {};
}

bool IioAccelerometerSource::IsAvailable() const {
    return !device_.isEmpty();
}

bool IioAccelerometerSource::OpenDevice() {
    if (device_.isEmpty()) return false;
    for (int i = 0; i < 3; ++i) {
        Axis& axis = axes_[i];
        if (!readAttribute(device_, kAxes[i], "scale", axis.scale)) return false;
        axis.offset = 0.0;
        readAttribute(device_, kAxes[i], "offset", axis.offset);
        axis.raw.setFileName(
            QStringLiteral("%1/in_accel_%2_raw").arg(device_, QLatin1String(kAxes[i])));
        if (!axis.raw.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) return false;
    }
    return true;
}

bool IioAccelerometerSource::ReadRaw(QFile& file, double& value) {
    // sysfs attributes are re-read from the start for a fresh value.
    char text[32];
    if (!file.seek(0)) return false;
    const qint64 got = file.read(text, sizeof text);
    if (got <= 0) return false;
    const char* begin = text;
    const char* end = text + got;
    while (end != begin && (end[-1] == '\n' || end[-1] == ' ')) --end;
    long long raw = 0;
    const auto [next, ec] = std::from_chars(begin, end, raw);
    if (ec != std::errc() || next != end) return false;
    value = static_cast<double>(raw);
    return true;
}

IioAccelerometerSource::PollResult IioAccelerometerSource::Poll(AccelerationSample& sample) {
    double g[3];
    for (int i = 0; i < 3; ++i) {
        double raw = 0.0;
        if (!ReadRaw(axes_[i].raw, raw)) return PollResult::NoSample;
        g[i] = (raw + axes_[i].offset) * axes_[i].scale / kStandardGravity;
    }
    sample = {static_cast<float>(g[0]), static_cast<float>(g[1]), static_cast<float>(g[2])};
    return PollResult::Sample;
}

void IioAccelerometerSource::CloseDevice() {
    for (Axis& axis : axes_) axis.raw.close();
}
