#pragma once

#include <QString>

// Where the kernel's IIO devices, udev's device properties and the character devices are
// found. Each root can be moved with an environment variable, so that tests and a
// fake-tree harness can replay a recorded or hand-made tree as an ordinary user:
// PEDOMETER_SYSFS_ROOT stands for /sys, PEDOMETER_UDEV_ROOT for /run/udev and
// PEDOMETER_DEV_ROOT for /dev. Read at every call; any thread.
class IioPaths {
public:
    // <sysfs>/bus/iio/devices
    static QString DevicesRoot();
    // <udev>/data
    static QString UdevDataRoot();
    // <dev>, holding the iio:deviceN character devices
    static QString DevRoot();
};
