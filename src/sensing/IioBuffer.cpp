#include "IioBuffer.h"

#include <fcntl.h>
#include <unistd.h>

#include <QDir>
#include <QFileInfo>
#include <cerrno>
#include <cmath>
#include <cstring>

#include "IioSamplingFrequency.h"
#include "IioSysfs.h"

namespace {
// A rate to lay the buffer out for when the device does not say its own.
constexpr double kAssumedHz = 50.0;
// The name of the hrtimer trigger used by drivers without a trigger of their own.
constexpr char kTimerTrigger[] = "pedometer";

QString describe(const QString& path, int error) {
    return QStringLiteral("%1: %2").arg(path, QString::fromLocal8Bit(std::strerror(error)));
}
}  // namespace

QString IioBuffer::PickTrigger(const QString& device) {
    const QByteArray name = IioSysfs::Text(device + QStringLiteral("/name"));
    if (name.isEmpty()) return {};
    const QString number = QFileInfo(device).fileName().section(QLatin1String("device"), -1);
    const QString own[] = {QStringLiteral("%1-dev%2").arg(QString::fromLatin1(name), number),
                           QString::fromLatin1(name) + QStringLiteral("-trigger")};
    const QDir devices(QFileInfo(device).absolutePath());
    QString fallback, timer;
    for (const QString& entry : devices.entryList({QStringLiteral("trigger*")}, QDir::Dirs)) {
        const QString folder = devices.filePath(entry);
        const QString trigger =
            QString::fromLatin1(IioSysfs::Text(folder + QStringLiteral("/name")));
        if (trigger == own[0] || trigger == own[1]) return folder;
        if (fallback.isEmpty() && trigger.startsWith(QString::fromLatin1(name)) &&
            !trigger.contains(QLatin1String("motion")))
            fallback = folder;
        if (trigger == QLatin1String(kTimerTrigger)) timer = folder;
    }
    return fallback.isEmpty() ? timer : fallback;
}

IioBuffer::Result IioBuffer::Open(const QString& device, const QString& devRoot, double minimumHz,
                                  QString* why) {
    Close();
    device_ = device;
    const QString buffer = device + QStringLiteral("/buffer");
    if (!QFileInfo::exists(buffer + QStringLiteral("/enable")) ||
        !QFileInfo::exists(device + QStringLiteral("/scan_elements"))) {
        *why = device + QStringLiteral(": no buffer");
        return Result::Unavailable;
    }
    const QString node = devRoot + QLatin1Char('/') + QFileInfo(device).fileName();
    fd_ = ::open(node.toLocal8Bit().constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd_ < 0) {
        const int error = errno;
        *why = describe(node, error);
        return error == EBUSY ? Result::Busy : Result::Unavailable;
    }
    const auto fail = [&](const QString& path, int error) {
        *why = describe(path, error);
        Close();
        return error == EBUSY ? Result::Busy : Result::Unavailable;
    };
    if (IioSysfs::Text(buffer + QStringLiteral("/enable")) == "1")
        return fail(buffer + QStringLiteral("/enable"), EBUSY);
    const QString elements = device + QStringLiteral("/scan_elements/in_");
    for (const char* element : {"accel_x", "accel_y", "accel_z", "timestamp"}) {
        const QString path = elements + QLatin1String(element) + QStringLiteral("_en");
        if (!QFileInfo::exists(path) && qstrcmp(element, "timestamp") == 0) continue;
        if (const int error = IioSysfs::Write(path, "1")) return fail(path, error);
    }
    QString layoutError;
    if (!IioScanLayout::Read(device, &layout_, &layoutError)) {
        *why = layoutError;
        Close();
        return Result::Unavailable;
    }
    const IioSamplingFrequency::Outcome rate =
        IioSamplingFrequency::Apply(device, minimumHz, /*polled=*/false);
    rateHz_ = rate.hz > 0 ? rate.hz : kAssumedHz;
    rateProblem_ = rate.problem;
    const QString currentTrigger = device + QStringLiteral("/trigger/current_trigger");
    if (QFileInfo::exists(currentTrigger) && IioSysfs::Text(currentTrigger).isEmpty()) {
        const QString trigger = PickTrigger(device);
        if (trigger.isEmpty()) return fail(currentTrigger, ENODEV);
        const QByteArray name = IioSysfs::Text(trigger + QStringLiteral("/name"));
        // A timer trigger fires at its own rate, which the device's rate must match.
        const QString timerRate = trigger + QStringLiteral("/sampling_frequency");
        if (name == kTimerTrigger) {
            if (const int error = IioSysfs::Write(timerRate, QByteArray::number(rateHz_)))
                return fail(timerRate, error);
        }
        if (const int error = IioSysfs::Write(currentTrigger, name))
            return fail(currentTrigger, error);
    }
    const int second = std::max(1, int(std::lround(rateHz_)));
    const QString length = buffer + QStringLiteral("/length");
    if (const int error = IioSysfs::Write(length, QByteArray::number(2 * second)))
        return fail(length, error);
    const QString watermark = buffer + QStringLiteral("/watermark");
    if (QFileInfo::exists(watermark)) {
        if (const int error = IioSysfs::Write(watermark, QByteArray::number(second)))
            return fail(watermark, error);
    }
    if (const int error = IioSysfs::Write(buffer + QStringLiteral("/enable"), "1"))
        return fail(buffer + QStringLiteral("/enable"), error);
    enabled_ = true;
    return Result::Open;
}

void IioBuffer::Close() {
    if (enabled_) IioSysfs::Write(device_ + QStringLiteral("/buffer/enable"), "0");
    enabled_ = false;
    if (fd_ >= 0) ::close(fd_);
    fd_ = -1;
}
