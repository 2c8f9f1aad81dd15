#pragma once

#include <QByteArray>
#include <memory>

#include "PolledAccelerometerSource.h"

class QAccelerometer;

// The accelerometer as Qt Sensors sees it (on Linux phones usually through
// iio-sensor-proxy). Qt reports m/s^2 with gravity included; samples are divided by
// standard gravity. Qt's test backend ("dummy") does not count as a real sensor.
class QtSensorsAccelerometerSource final : public PolledAccelerometerSource {
public:
    QtSensorsAccelerometerSource();
    ~QtSensorsAccelerometerSource() override;

    bool IsAvailable() const override;

protected:
    bool OpenDevice() override;
    PollResult Poll(AccelerationSample& sample) override;
    void CloseDevice() override;

private:
    // The first backend that is not Qt's test stand-in; empty if none.
    static QByteArray RealBackend();

    const QByteArray backend_;
    std::unique_ptr<QAccelerometer> sensor_;  // lives on the sensor thread
};
