#pragma once

#include <QFile>
#include <QString>
#include <array>
#include <atomic>

#include "IioMountMatrix.h"
#include "PolledAccelerometerSource.h"

// The accelerometer read straight from the kernel's Industrial I/O sysfs files, the
// one that works on Linux phones.
//
// A device qualifies when it has in_accel_{x,y,z}_raw and a scale. Among several, the
// one labelled "accel-display" (the screen half of a convertible) wins, one labelled
// "accel-base" is taken only when nothing else qualifies, otherwise the first by name.
// Readings are (raw + offset) * scale in m/s^2 (per-axis files beat the shared
// in_accel_scale / in_accel_offset), turned to the screen's axes with the mount matrix
// (udev's ACCEL_MOUNT_MATRIX, else in_accel_mount_matrix or mount_matrix, else none)
// and delivered in g. Opening asks for a sampling frequency of at least 33 Hz when the
// device lists the ones it offers and runs slower.
//
// A device that stops answering (unplugged, or renumbered after a resume) is closed;
// the sensor thread looks for an accelerometer again about once a second and carries
// on with it when one is back, so counting survives a suspend without a restart.
// After a resume the device is opened anew (and looked for) before the next reading.
class IioAccelerometerSource final : public PolledAccelerometerSource {
public:
    // Polls between two searches for a device that went away (about a second).
    static constexpr int kReopenPolls = 33;
    static constexpr double kWantedFrequencyHz = 33.0;

    // `devicesRoot` is where the IIO devices are listed and `udevDataRoot` where udev
    // keeps device properties; tests point both at fake trees.
    explicit IioAccelerometerSource(
        const QString& devicesRoot = QStringLiteral("/sys/bus/iio/devices"),
        const QString& udevDataRoot = QStringLiteral("/run/udev/data"));
    ~IioAccelerometerSource() override;

    bool IsAvailable() const override;
    void ReopenAfterResume() override { reopen_.store(true); }
    // The device folder found when the source was made; empty when none was found.
    QString DevicePath() const { return device_; }

    // The accelerometer folder under `root` by the rules above; empty when none.
    static QString FindDevice(const QString& root);
    // The device's mount matrix, the identity when it has none or it cannot be read.
    static IioMountMatrix ReadMountMatrix(const QString& device, const QString& udevDataRoot);

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

    bool OpenAxes(const QString& device);
    static void RaiseSamplingFrequency(const QString& device);
    static bool ReadRaw(QFile& file, double& value);

    const QString root_;
    const QString udevRoot_;
    const QString device_;
    std::atomic<bool> reopen_{false};
    // Sensor thread only from here on.
    std::array<Axis, 3> axes_;
    IioMountMatrix matrix_;
    bool open_ = false;
    int pollsSinceLost_ = 0;
};
