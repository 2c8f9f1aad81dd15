#include "IioAccelerometerSource.h"

#include <QDir>
#include <charconv>

namespace {
constexpr double kStandardGravity = 9.80665;
const char* const kAxes[] = {"x", "y", "z"};

// A whole sysfs attribute, trimmed; empty if missing.
QByteArray readText(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return file.read(4096).trimmed();
}

// A whole sysfs attribute as a number; false if missing or not a number.
bool readNumber(const QString& path, double& value) {
    bool ok = false;
    const double read = readText(path).toDouble(&ok);
    if (ok) value = read;
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

bool isAccelerometer(const QString& device) {
    for (const char* axis : kAxes) {
        double scale = 0.0;
        if (!QFile::exists(QStringLiteral("%1/in_accel_%2_raw").arg(device, QLatin1String(axis))) ||
            !readAttribute(device, axis, "scale", scale)) {
            return false;
        }
    }
    return true;
}

// udev's ACCEL_MOUNT_MATRIX for the device, from the property file of its character
// device ("c<major>:<minor>"); empty when udev has none.
QString udevMountMatrix(const QString& device, const QString& udevDataRoot) {
    const QByteArray number = readText(device + QStringLiteral("/dev"));
    if (number.isEmpty()) return {};
    QFile data(udevDataRoot + QStringLiteral("/c") + QString::fromLatin1(number));
    if (!data.open(QIODevice::ReadOnly)) return {};
    const QByteArray key("E:ACCEL_MOUNT_MATRIX=");
    for (const QByteArray& line : data.readAll().split('\n')) {
        if (line.startsWith(key)) return QString::fromLatin1(line.mid(key.size()));
    }
    return {};
}
}  // namespace

IioAccelerometerSource::IioAccelerometerSource(const QString& devicesRoot,
                                               const QString& udevDataRoot)
    : root_(devicesRoot), udevRoot_(udevDataRoot), device_(FindDevice(devicesRoot)) {}

IioAccelerometerSource::~IioAccelerometerSource() {
    Stop();
}

QString IioAccelerometerSource::FindDevice(const QString& root) {
    const QDir dir(root);
    QString display, plain, base;
    for (const QString& entry : dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        const QString device = dir.filePath(entry);
        if (!isAccelerometer(device)) continue;
        const QByteArray label = readText(device + QStringLiteral("/label"));
        QString& slot = label == "accel-display" ? display : label == "accel-base" ? base : plain;
        if (slot.isEmpty()) slot = device;
    }
    return !display.isEmpty() ? display : !plain.isEmpty() ? plain : base;
}

IioMountMatrix IioAccelerometerSource::ReadMountMatrix(const QString& device,
                                                       const QString& udevDataRoot) {
    IioMountMatrix matrix;
    const QString candidates[] = {udevMountMatrix(device, udevDataRoot),
                                  QString::fromLatin1(readText(device + "/in_accel_mount_matrix")),
                                  QString::fromLatin1(readText(device + "/mount_matrix"))};
    for (const QString& text : candidates) {
        if (!text.isEmpty() && IioMountMatrix::Parse(text, &matrix)) break;
    }
    return matrix;
}

bool IioAccelerometerSource::IsAvailable() const {
    return !device_.isEmpty();
}

void IioAccelerometerSource::RaiseSamplingFrequency(const QString& device) {
    for (const QString& prefix : {QStringLiteral("/in_accel_"), QStringLiteral("/")}) {
        const QString attribute = device + prefix + QStringLiteral("sampling_frequency");
        double current = 0.0;
        if (!readNumber(attribute, current)) continue;
        if (current >= kWantedFrequencyHz) return;
        // The slowest offered rate that is fast enough; a device that offers none
        // is left as it is.
        double best = 0.0;
        for (const QByteArray& item :
             readText(attribute + QStringLiteral("_available")).split(' ')) {
            bool ok = false;
            const double rate = item.toDouble(&ok);
            if (ok && rate >= kWantedFrequencyHz && (best == 0.0 || rate < best)) best = rate;
        }
        if (best == 0.0) return;
        QFile file(attribute);
        if (file.open(QIODevice::WriteOnly)) file.write(QByteArray::number(best) + '\n');
        return;
    }
}

bool IioAccelerometerSource::OpenAxes(const QString& device) {
    for (int i = 0; i < 3; ++i) {
        Axis& axis = axes_[i];
        axis.raw.close();
        if (!readAttribute(device, kAxes[i], "scale", axis.scale)) return false;
        axis.offset = 0.0;
        readAttribute(device, kAxes[i], "offset", axis.offset);
        axis.raw.setFileName(
            QStringLiteral("%1/in_accel_%2_raw").arg(device, QLatin1String(kAxes[i])));
        if (!axis.raw.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) return false;
    }
    matrix_ = ReadMountMatrix(device, udevRoot_);
    RaiseSamplingFrequency(device);
    return true;
}

bool IioAccelerometerSource::OpenDevice() {
    if (device_.isEmpty()) return false;
    pollsSinceLost_ = 0;
    open_ = OpenAxes(device_);
    if (!open_) CloseDevice();
    return open_;
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
    if (reopen_.exchange(false) && open_) {
        CloseDevice();
        pollsSinceLost_ = kReopenPolls - 1;  // look for it again right now
    }
    if (!open_) {
        if (++pollsSinceLost_ < kReopenPolls) return PollResult::NoSample;
        pollsSinceLost_ = 0;
        const QString device = FindDevice(root_);
        open_ = !device.isEmpty() && OpenAxes(device);
        if (!open_) {
            CloseDevice();
            return PollResult::NoSample;
        }
    }
    std::array<double, 3> chip{};
    for (int i = 0; i < 3; ++i) {
        double raw = 0.0;
        if (!ReadRaw(axes_[i].raw, raw)) {
            // Gone (or renumbered): look for it again on later polls.
            CloseDevice();
            return PollResult::NoSample;
        }
        chip[i] = (raw + axes_[i].offset) * axes_[i].scale / kStandardGravity;
    }
    const std::array<double, 3> g = matrix_.Apply(chip);
    sample = {static_cast<float>(g[0]), static_cast<float>(g[1]), static_cast<float>(g[2])};
    return PollResult::Sample;
}

void IioAccelerometerSource::CloseDevice() {
    for (Axis& axis : axes_) axis.raw.close();
    open_ = false;
}
