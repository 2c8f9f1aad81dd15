#pragma once

#include <cstddef>

#include "AccelerationRecording.h"
#include "ReplayTick.h"

// Walks a recording the way a live accelerometer would have been read.
//
// Ticks fall every 30 ms from the first sample's time, up to and including the last
// sample's time. Each tick takes the latest sample recorded at or before it; a tick
// whose sample equals the one delivered before delivers nothing. The recording must
// outlive the cursor.
class ReplayCursor {
public:
    static constexpr qint64 kTickNs = 30'000'000;

    explicit ReplayCursor(const AccelerationRecording& recording);

    // The next tick, delivering or not; false after the last one.
    bool NextTick(ReplayTick& tick);
    // The next tick that delivers a sample; false when none is left.
    bool NextSample(ReplayTick& tick);
    // Back to the first tick, as if nothing had been delivered.
    void Rewind();

private:
    const AccelerationRecording& recording_;
    qint64 tickIndex_ = 0;
    std::size_t sampleIndex_ = 0;
    bool delivered_ = false;
    AccelerationSample last_;
};
