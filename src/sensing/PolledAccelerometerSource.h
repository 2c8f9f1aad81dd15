#pragma once

#include <atomic>
#include <thread>

#include "AccelerationSample.h"
#include "AccelerometerSource.h"

// A source that reads its device on a sensor thread of its own every 30 ms.
//
// Start() launches the thread, which opens the device, polls it once at once and then
// on a precise 30 ms timer in a Qt event loop, and hands each reading that differs from
// the last one delivered to the listener; after the first delivery, a tick without a new
// reading tells the listener so (OnTickWithoutSample). Subclasses say how to open, read and close
// their device; those three run on the sensor thread only. A subclass must call Stop()
// in its own destructor, while its overrides still exist.
//
// The thread is a std::thread running a QEventLoop (Qt adopts it), so that starting and
// joining it are visible to the thread sanitizer; Stop() asks the loop to end at its
// next tick and joins.
class PolledAccelerometerSource : public AccelerometerSource {
public:
    static constexpr int kIntervalMs = 30;

    PolledAccelerometerSource();
    ~PolledAccelerometerSource() override;
    PolledAccelerometerSource(const PolledAccelerometerSource&) = delete;
    PolledAccelerometerSource& operator=(const PolledAccelerometerSource&) = delete;

    void Start(AccelerometerListener* listener) override;
    void Stop() override;
    bool IsRunning() const override { return running_.load(); }

protected:
    enum class PollResult { Sample, NoSample, Finished };

    // Prepares the device; false ends the thread without delivering anything.
    virtual bool OpenDevice() { return true; }
    // Reads the current sample in g. Finished ends the thread (a replay that is over).
    virtual PollResult Poll(AccelerationSample& sample) = 0;
    virtual void CloseDevice() {}
    // Called on the sensor thread after Poll said Finished.
    virtual void OnFinished() {}

private:
    void RunOnSensorThread(AccelerometerListener* listener);

    std::thread thread_;  // started and joined on the GUI thread
    std::atomic<bool> running_{false};
    std::atomic<bool> stopRequested_{false};
};
