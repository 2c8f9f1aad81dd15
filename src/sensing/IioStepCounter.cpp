#include "IioStepCounter.h"

#include <QDir>
#include <QFileInfo>
#include <cstring>

#include "IioSysfs.h"

QString IioStepCounter::FindDevice(const QString& devicesRoot) {
    const QDir dir(devicesRoot);
    for (const QString& entry : dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        const QString device = dir.filePath(entry);
        if (QFileInfo::exists(device + QStringLiteral("/in_steps_input")) &&
            QFileInfo::exists(device + QStringLiteral("/in_steps_en")))
            return device;
    }
    return {};
}

bool IioStepCounter::Enable(QString* why) {
    const QString enable = device_ + QStringLiteral("/in_steps_en");
    if (IioSysfs::Text(enable) != "1") {
        if (const int error = IioSysfs::Write(enable, "1")) {
            *why = QStringLiteral("%1: %2").arg(enable, QString::fromLocal8Bit(std::strerror(error)));
            return false;
        }
    }
    QByteArray text;
    const int error = IioSysfs::Read(device_ + QStringLiteral("/in_steps_input"), &text);
    bool ok = error == 0;
    if (ok) last_ = text.toLongLong(&ok);
    if (!ok) *why = device_ + QStringLiteral(": the step count cannot be read");
    return ok;
}

int IioStepCounter::Read() {
    bool ok = false;
    const qint64 count = IioSysfs::Text(device_ + QStringLiteral("/in_steps_input")).toLongLong(&ok);
    if (!ok || count < 0) return -1;
    const qint64 steps = count >= last_ ? count - last_ : count;
    last_ = count;
    return int(steps);
}
