#include "QtSensorsPlugin.h"

#include "QtSensorsAccelerometerSource.h"

std::unique_ptr<AccelerometerSource> QtSensorsPlugin::MakeSource() {
    return std::make_unique<QtSensorsAccelerometerSource>();
}
