#pragma once

#include <QCoreApplication>
#include <QThread>
#include <atomic>
#include <mutex>
#include <vector>

#include "AccelerationSample.h"
#include "AccelerometerListener.h"
#include "SpinUntil.h"

// Keeps every sample a source delivers, from whichever thread, and whether any came from
// a thread other than the application's.
class SampleLog : public AccelerometerListener {
public:
    void OnDataReceived(float x, float y, float z) override {
        std::lock_guard lock(mutex_);
        samples_.push_back({x, y, z});
        offThread_ |= QThread::currentThread() != QCoreApplication::instance()->thread();
    }
    void OnTickWithoutSample() override { ++ticksWithoutSample_; }
    int TicksWithoutSample() const { return ticksWithoutSample_.load(); }
    std::vector<AccelerationSample> Samples() const {
        std::lock_guard lock(mutex_);
        return samples_;
    }
    std::vector<float> Xs() const {
        std::vector<float> xs;
        for (const AccelerationSample& s : Samples()) xs.push_back(s.x);
        return xs;
    }
    std::size_t Count() const { return Samples().size(); }
    bool OffThread() const {
        std::lock_guard lock(mutex_);
        return offThread_;
    }
    // Waits, running the event loop, until `count` samples have come.
    bool WaitFor(std::size_t count, int ms = 5000) const {
        return SpinUntil([&] { return Count() >= count; }, ms);
    }

private:
    mutable std::mutex mutex_;
    std::vector<AccelerationSample> samples_;
    bool offThread_ = false;
    std::atomic<int> ticksWithoutSample_{0};
};
