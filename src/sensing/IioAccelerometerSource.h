#pragma once

#include <QFile>
#include <QString>
#include <array>

#include "PolledAccelerometerSource.h"

// The accelerometer read straight from the kernel's Industrial I/O sysfs files:
// <device>/in_accel_{x,y,z}_raw, scaled by in_accel_{x,y,z}_scale (or the shared
// in_accel_scale) and shifted by the optional _offset files, which gives m/s^2.
// Available only when such a device exists and its files can be read.
class IioAccelerometerSource final : public PolledAccelerometerSource {
public:
    // `devicesRoot` is where the IIO devices are listed; tests point it at a fake tree.
    explicit IioAccelerometerSource(
        const QString& devicesRoot = QStringLiteral("/sys/bus/iio/devices"));
    ~IioAccelerometerSource() override;

    bool IsAvailable() const override;
    // The device folder in use; empty when none was found.
    QString DevicePath() const { return device_; }

protected:
    bool OpenDevice() override;
    PollResult Poll(AccelerationSample& sample) override;
    void CloseDevice() override;

private:
    struct Axis {
        QFile raw;
        double scale = 1.0;
        double offset = 0.0;
    };

    static QString FindDevice(const QString& root);
    bool ReadRaw(QFile& file, double& value);

    QString device_;
    std::array<Axis, 3> axes_;  // used on the sensor thread only
};
