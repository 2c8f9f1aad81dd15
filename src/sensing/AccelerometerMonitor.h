#pragma once

// Receives the raw movement strength while the sensitivity settings screen is open.
//
// Called on the sensor thread for every sample after the warm-up, with twice the last
// absolute change of the raw channel's eight-sample sum. An implementation that touches
// widgets posts the value to the GUI thread (event 101) instead of using it here.
class AccelerometerMonitor {
public:
    virtual ~AccelerometerMonitor() = default;
    virtual void DataRecieved(double value) = 0;
};
