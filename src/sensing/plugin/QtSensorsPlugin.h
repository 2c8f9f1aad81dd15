#pragma once

#include <QObject>

#include "AccelerometerPlugin.h"

// The sensor plug-in: QtSensorsAccelerometerSource, on Qt Sensors.
class QtSensorsPlugin : public QObject, public AccelerometerPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID AccelerometerPlugin_iid)
    Q_INTERFACES(AccelerometerPlugin)

public:
    std::unique_ptr<AccelerometerSource> MakeSource() override;
};
