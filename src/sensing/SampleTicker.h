#pragma once

#include <QtGlobal>

#include "AccelerationSample.h"

// Turns timestamped samples that arrive in blocks (an IIO buffer read once a second)
// into the 30 ms ticks a polled source would have seen: a tick every 30 ms from the
// first sample's time takes the latest sample at or before it (the rule ReplayCursor
// applies to recordings); whether it is new or the one the tick before took, the caller
// tells. A tick is closed by the first sample after it, so the last sample of a block
// waits for the next block, as it would wait for the next read. A jump of more than two
// seconds, either way (a suspend, a clock reset), starts the ticks afresh at the new
// sample. One thread.
class SampleTicker {
public:
    static constexpr qint64 kTickNs = 30'000'000;
    static constexpr qint64 kGapNs = 2'000'000'000;

    // Adds a sample taken at `timeNs`; `deliver(sample)` is called for each tick it
    // closes, with the sample that tick took.
    template <typename Deliver>
    void Add(qint64 timeNs, const AccelerationSample& sample, Deliver&& deliver) {
        if (!started_ || timeNs - nextTickNs_ > kGapNs || timeNs < latestNs_ - kGapNs) {
            started_ = true;
            nextTickNs_ = timeNs;
        }
        while (nextTickNs_ < timeNs) {
            if (haveLatest_) deliver(latest_);
            nextTickNs_ += kTickNs;
        }
        latest_ = sample;
        latestNs_ = timeNs;
        haveLatest_ = true;
    }

private:
    bool started_ = false;
    bool haveLatest_ = false;
    qint64 nextTickNs_ = 0;
    qint64 latestNs_ = 0;
    AccelerationSample latest_;
};
