#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>
#include <array>
#include <vector>

#include "AccelerationSample.h"
#include "IioScanLayout.h"

// An accelerometer in the shape a real kernel driver gives it, laid out under a folder
// that stands for the root of the file system, for the tests, the benchmarks and
// `pedometer-cli fake-iio` (run the app with PEDOMETER_SYSFS_ROOT=<root>/sys,
// PEDOMETER_UDEV_ROOT=<root>/run/udev and PEDOMETER_DEV_ROOT=<root>/dev).
//
// The device folder sits under sys/devices and is linked from sys/bus/iio/devices as in
// real sysfs; its attributes (names, value formats, scan element types, triggers, udev
// data) follow the driver's. The character device is a FIFO: whoever feeds it writes
// scans (Scan) the way the kernel hands out a buffer's blocks.
class FakeIioDevice {
public:
    struct Shape {
        const char* driver;        // the kernel module, for messages
        const char* name;          // the device's "name"
        bool perAxisScale;         // in_accel_{x,y,z}_scale rather than in_accel_scale
        double scale;              // m/s^2 per count
        const char* rateAttribute; // "sampling_frequency" or "in_accel_sampling_frequency"
        const char* rate;          // the rate at boot
        const char* offeredAttribute;  // where the offered rates are listed; "" for none
        const char* offered;
        const char* matrixAttribute;   // "" when the matrix comes from udev or nowhere
        const char* matrix;
        const char* udevFile;      // "c" (by device number), "+iio" (by name) or ""
        const char* udevProperties;
        const char* scanType;      // the axes' "*_type"
        const char* trigger;       // the driver's own trigger; "" when it needs none
        bool tempInScan;           // a temperature channel enabled between the axes and time
    };
    // inv_mpu6050 (PinePhone), st_lsm6dsx's LSM9DS1 (Librem 5), st_accel, bmc150,
    // hid-sensor-accel-3d.
    static const std::vector<Shape>& Shapes();

    // Lays out device `number` of `shape` under `root`; an existing tree gains a device.
    FakeIioDevice(const QString& root, const Shape& shape, int number);

    const Shape& GetShape() const { return shape_; }
    // The folder as the source lists it: <root>/sys/bus/iio/devices/iio:deviceN.
    QString Folder() const;
    QString DevicesRoot() const { return root_ + QStringLiteral("/sys/bus/iio/devices"); }
    QString UdevDataRoot() const { return root_ + QStringLiteral("/run/udev/data"); }
    QString DevRoot() const { return root_ + QStringLiteral("/dev"); }
    // Writes an attribute (relative to the device folder).
    bool Write(const QString& attribute, const QByteArray& value) const;
    QByteArray Read(const QString& attribute) const;

    // The chip's counts for a reading in g along the chip's own axes.
    std::array<long long, 3> Counts(const AccelerationSample& chip) const;
    // Sets in_accel_{x,y,z}_raw to a reading (polled drivers).
    bool SetReading(const AccelerationSample& chip) const;
    // One scan of the enabled channels, as the driver's buffer hands it out.
    QByteArray Scan(const AccelerationSample& chip, qint64 timeNs) const;
    // Opens the character device's FIFO for feeding (read-write, so neither side waits).
    int OpenFeed() const;

private:
    const QString root_;
    const Shape shape_;
    const int number_;
    IioScanLayout layout_;
};
