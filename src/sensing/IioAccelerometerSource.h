#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <mutex>
#include <thread>

#include "AccelerometerSource.h"
#include "IioMountMatrix.h"

class IioCapture;

// The accelerometer read straight from the kernel's Industrial I/O devices, the one that
// works on Linux phones.
//
// A device qualifies when it has in_accel_{x,y,z}_raw and a scale (per axis or shared).
// Among several, the one labelled or located (udev's ACCEL_LOCATION) "display" wins,
// "base" comes last, otherwise devices go by number; a device chosen in the settings
// ("sensor-iio-device") goes first while it qualifies. The device is looked up at every
// start and whenever it stops answering, and while there is none the sensor thread keeps
// looking every few seconds, so a device that appears late or comes back renumbered
// after a suspend is picked up without a restart.
//
// Readings are (raw + offset) * scale in m/s^2, turned to the screen's axes with the
// mount matrix (udev's ACCEL_MOUNT_MATRIX, else in_accel_mount_matrix, in_mount_matrix or
// mount_matrix) and delivered in g on the source's 30 ms cadence. IioCapture does the
// reading: from the device's buffer in blocks when it can be had, else by polling.
//
// Threads: Start/Stop from the GUI thread, ReopenAfterResume from any. Stop returns within about 100 ms however
// slow the device is: a sensor thread stuck in a read is left to end by itself, and it
// delivers nothing more.
class IioAccelerometerSource final : public AccelerometerSource {
public:
    struct Options {
        QString devicesRoot;      // /sys/bus/iio/devices
        QString udevDataRoot;     // /run/udev/data
        QString devRoot;          // /dev
        QString preferredDevice;  // a folder name such as "iio:device2"; empty: automatic
        double minimumHz = 33.0;  // the slowest rate that serves the detector
        bool buffered = true;     // try the device's buffer before polling
    };
    // The roots of IioPaths and the defaults above.
    static Options DefaultOptions();

    explicit IioAccelerometerSource(Options options = DefaultOptions());
    ~IioAccelerometerSource() override;
    IioAccelerometerSource(const IioAccelerometerSource&) = delete;
    IioAccelerometerSource& operator=(const IioAccelerometerSource&) = delete;

    // True when the machine has IIO devices at all: the source then starts, and keeps
    // looking for an accelerometer while it has none.
    bool IsAvailable() const override;
    void Start(AccelerometerListener* listener) override;
    void Stop() override;
    bool IsRunning() const override;
    void ReopenAfterResume() override;
    // While the window is shown the device is polled, never buffered: a buffer makes the
    // driver refuse the orientation service's reads.
    void SetWindowShown(bool shown) override;
    // The device the source would open now; empty when none qualifies.
    QString DevicePath() const;
    // Whether the running source reads the buffer (else it polls, or has no device).
    bool IsBuffered() const;

    // The qualifying accelerometer folders under `root`, best first.
    static QStringList Accelerometers(const QString& root, const QString& udevDataRoot);
    // The preferred folder name if it qualifies, else the best one; empty when none.
    static QString FindDevice(const QString& root, const QString& udevDataRoot = QString(),
                              const QString& preferred = QString());
    // udev's properties of `device` ("E:KEY=value" lines of c<major>:<minor> or
    // +iio:<folder>); empty when udev has none.
    static QString UdevProperty(const QString& device, const QString& udevDataRoot,
                                const QByteArray& key);
    // The device's mount matrix, the identity when it has none or it cannot be read.
    static IioMountMatrix ReadMountMatrix(const QString& device, const QString& udevDataRoot);

private:
    const Options options_;
    mutable std::mutex captureMutex_;      // ReopenAfterResume may come from any thread
    std::shared_ptr<IioCapture> capture_;  // under captureMutex_; the thread holds its own
    bool windowShown_ = false;             // under captureMutex_
    std::thread thread_;                   // GUI thread
};
