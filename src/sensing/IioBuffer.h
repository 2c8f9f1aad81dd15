#pragma once

#include <QString>

#include "IioScanLayout.h"

// An IIO device's buffer, set up for blocks of accelerometer scans.
//
// Open claims the character device (one reader at a time), enables x, y, z and the
// timestamp in scan_elements, sets the sampling rate, a trigger where the driver has
// none current (its own data-ready trigger, "<name>-dev<N>" or "<name>-trigger"), a
// buffer length of two seconds and a watermark of one second of samples (drivers with a
// hardware FIFO take the watermark for it too), then switches the buffer on. The
// character device is opened non-blocking: read it after poll() says it is readable.
// Close switches the buffer off and lets the device go. Sensor thread only.
class IioBuffer {
public:
    enum class Result { Open, Busy, Unavailable };

    IioBuffer() = default;
    ~IioBuffer() { Close(); }
    IioBuffer(const IioBuffer&) = delete;
    IioBuffer& operator=(const IioBuffer&) = delete;

    // `device` is the sysfs folder, `devRoot` where its character device lives. On Busy
    // or Unavailable, `why` says what failed and nothing stays changed or open.
    Result Open(const QString& device, const QString& devRoot, double minimumHz, QString* why);
    void Close();

    int Fd() const { return fd_; }
    const IioScanLayout& Layout() const { return layout_; }
    double RateHz() const { return rateHz_; }
    // Why the wanted rate could not be set; empty when it was.
    const QString& RateProblem() const { return rateProblem_; }

private:
    // The device's own data-ready trigger, else an hrtimer trigger named "pedometer"
    // that the administrator made (see the README), as its folder; empty when none.
    static QString PickTrigger(const QString& device);

    QString device_;
    int fd_ = -1;
    bool enabled_ = false;
    IioScanLayout layout_;
    double rateHz_ = 0.0;
    QString rateProblem_;
};
