#include "QtSensorsAccelerometerSource.h"

#include <QAccelerometer>

namespace {
constexpr double kStandardGravity = 9.80665;
}

// Qt loads its sensor plugins on the first query; doing it here, on the thread that makes
// the source, keeps that off the sensor thread.
QtSensorsAccelerometerSource::QtSensorsAccelerometerSource() : backend_(RealBackend()) {}

QtSensorsAccelerometerSource::~QtSensorsAccelerometerSource() {
    Stop();
}

QByteArray QtSensorsAccelerometerSource::RealBackend() {
    for (const QByteArray& id : QSensor::sensorsForType(QAccelerometer::sensorType)) {
        if (!id.startsWith("dummy.")) return id;
    }
    return {};
}

bool QtSensorsAccelerometerSource::IsAvailable() const {
    return !RealBackend().isEmpty();
}

bool QtSensorsAccelerometerSource::OpenDevice() {
    if (backend_.isEmpty()) return false;
    sensor_ = std::make_unique<QAccelerometer>();
    sensor_->setIdentifier(backend_);
    sensor_->setAccelerationMode(QAccelerometer::Combined);
    if (!sensor_->start()) {
        sensor_.reset();
        return false;
    }
    return true;
}

QtSensorsAccelerometerSource::PollResult QtSensorsAccelerometerSource::Poll(
    AccelerationSample& sample) {
    const QAccelerometerReading* reading = sensor_ ? sensor_->reading() : nullptr;
    if (reading == nullptr || reading->timestamp() == 0) return PollResult::NoSample;
    sample = {static_cast<float>(reading->x() / kStandardGravity),
              static_cast<float>(reading->y() / kStandardGravity),
              static_cast<float>(reading->z() / kStandardGravity)};
    return PollResult::Sample;
}

void QtSensorsAccelerometerSource::CloseDevice() {
    if (sensor_) sensor_->stop();
    sensor_.reset();
}
