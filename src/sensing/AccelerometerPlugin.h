#pragma once

#include <QtPlugin>
#include <memory>

#include "AccelerometerSource.h"

// What the sensor plug-in ("pedometer-sensors", AppPlugins) offers: the accelerometer as Qt
// Sensors sees it, whose backends bring their own plug-ins and the system's sensor service.
class AccelerometerPlugin {
public:
    virtual ~AccelerometerPlugin() = default;
    // A new source (QtSensorsAccelerometerSource); the thread that makes the application's sources.
    virtual std::unique_ptr<AccelerometerSource> MakeSource() = 0;
};

#define AccelerometerPlugin_iid "io.github.pedometer_app.AccelerometerPlugin/1"
Q_DECLARE_INTERFACE(AccelerometerPlugin, AccelerometerPlugin_iid)
