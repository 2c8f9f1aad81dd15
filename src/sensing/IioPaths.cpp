#include "IioPaths.h"

#include <QtGlobal>

namespace {
QString root(const char* variable, const char* standard) {
    const QString moved = qEnvironmentVariable(variable);
    return moved.isEmpty() ? QString::fromLatin1(standard) : moved;
}
}  // namespace

QString IioPaths::DevicesRoot() {
    return root("PEDOMETER_SYSFS_ROOT", "/sys") + QStringLiteral("/bus/iio/devices");
}

QString IioPaths::UdevDataRoot() {
    return root("PEDOMETER_UDEV_ROOT", "/run/udev") + QStringLiteral("/data");
}

QString IioPaths::DevRoot() {
    return root("PEDOMETER_DEV_ROOT", "/dev");
}
