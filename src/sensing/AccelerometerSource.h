#pragma once

class AccelerometerListener;

// Where accelerometer samples come from: the Qt Sensors backend, the kernel's IIO
// sysfs files, a recorded CSV file, or nothing at all.
//
// Start and Stop are called from the GUI thread. Between them the source delivers
// samples in g to the listener on its own thread, on a 30 ms cadence, skipping samples
// that equal the one delivered before. When Stop returns, no delivery is in progress
// and none follows; Stop must therefore not be called from inside the listener.
class AccelerometerSource {
public:
    virtual ~AccelerometerSource() = default;

    // True when this source can deliver samples on this machine.
    virtual bool IsAvailable() const = 0;
    // Starts delivering to `listener`; does nothing if already started.
    virtual void Start(AccelerometerListener* listener) = 0;
    // Stops delivering; does nothing if not started.
    virtual void Stop() = 0;
    virtual bool IsRunning() const = 0;
    // The system is back from sleep: a source on a device opens it anew at its next
    // reading, for a device may come back renumbered or reset. Any thread.
    virtual void ReopenAfterResume() {}
    // The app's window was shown or hidden. While it is shown the desktop's orientation
    // service reads the same device to turn the screen, so a source that would lock it
    // out (an IIO buffer) reads in a way that shares the device. Any thread.
    virtual void SetWindowShown(bool) {}
};
