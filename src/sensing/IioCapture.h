#pragma once

#include <QString>
#include <array>
#include <atomic>
#include <condition_variable>
#include <mutex>

#include "AccelerationSample.h"
#include "IioAccelerometerSource.h"
#include "IioMountMatrix.h"

class AccelerometerListener;
class IioBuffer;

// The sensor thread's work for IioAccelerometerSource: find the accelerometer, read it,
// and hand samples to the listener until asked to stop.
//
// It reads the device's buffer when it can be had (one wake-up a second, samples turned
// into 30 ms ticks by their timestamps), else polls the raw attributes every 30 ms. A
// device that is missing, fails to open or stops answering is looked for and opened
// again (a single failed read is retried at the next tick); a device busy in another
// program is reported through SensorStatus and tried again every second. Every wait is
// a poll() that RequestStop interrupts.
//
// Ownership: the sensor thread and the source share the object, so a thread still in a
// slow read when the source stops can finish with it on its own. RequestStop, from any
// thread, returns once no delivery is in progress; none follows it.
class IioCapture {
public:
    IioCapture(IioAccelerometerSource::Options options, AccelerometerListener* listener);
    ~IioCapture();
    IioCapture(const IioCapture&) = delete;
    IioCapture& operator=(const IioCapture&) = delete;

    // The sensor thread's body; returns after RequestStop.
    void Run();
    void RequestStop();
    // Open the device anew (back from a suspend). Any thread.
    void Reopen();
    // Poll even where the buffer could be had, so that other programs can read the
    // device too; switching reopens the device. Any thread.
    void ShareDevice(bool share);
    // Waits up to `ms` for Run to return; true if it did.
    bool WaitUntilFinished(int ms);
    bool IsBuffered() const { return buffered_.load(); }

private:
    enum class Outcome { Stopped, Reopen, Lost, Busy, NoBuffer };
    struct Calibration {
        std::array<double, 3> scale{1, 1, 1};
        std::array<double, 3> offset{0, 0, 0};
        IioMountMatrix matrix;
    };

    bool ReadCalibration(const QString& device);
    Outcome Poll(const QString& device);
    Outcome ReadBuffer(const QString& device);
    bool Busy(const QString& device, int error);
    AccelerationSample ToSample(const std::array<long long, 3>& raw) const;
    void Deliver(const AccelerationSample& sample);
    void ReportRate(const QString& device, const QString& problem);
    // Sleeps up to `ms` or until woken; also returns when `fd` (if any) is readable.
    // False when stopping or reopening.
    bool Wait(int ms, int fd = -1);

    const IioAccelerometerSource::Options options_;
    AccelerometerListener* const listener_;
    const int wake_;  // eventfd written by RequestStop and Reopen
    std::atomic<bool> stopping_{false};
    std::atomic<bool> reopen_{false};
    std::atomic<bool> buffered_{false};
    std::atomic<bool> shareDevice_{false};
    mutable std::mutex deliveryMutex_;  // held by a delivery and by RequestStop
    bool stopped_ = false;      // under deliveryMutex_
    std::mutex finishedMutex_;
    std::condition_variable finishedChanged_;
    bool finished_ = false;  // under finishedMutex_
    // Sensor thread only from here on.
    Calibration calibration_;
    bool haveLast_ = false;
    AccelerationSample last_;
    bool saidUnbuffered_ = false;
    bool saidBusy_ = false;
    QString saidRate_;
};
