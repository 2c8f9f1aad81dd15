#include "ReplayCursor.h"

#include <algorithm>

ReplayCursor::ReplayCursor(const AccelerationRecording& recording) : recording_(recording) {}

void ReplayCursor::Rewind() {
    tickIndex_ = 0;
    sampleIndex_ = 0;
    delivered_ = false;
    last_ = {};
}

bool ReplayCursor::NextTick(ReplayTick& tick) {
    const std::size_t count = recording_.Size();
    if (count == 0) return false;
    const qint64 first = recording_.TimeNs(0);
    const qint64 tickNs = tickIndex_ * kTickNs;
    if (tickNs > recording_.TimeNs(count - 1) - first) return false;
    ++tickIndex_;

    while (sampleIndex_ + 1 < count && recording_.TimeNs(sampleIndex_ + 1) - first <= tickNs) {
        ++sampleIndex_;
    }
    const AccelerationSample& sample = recording_.Sample(sampleIndex_);
    tick.tickNs = tickNs;
    tick.sampleTimeNs = recording_.TimeNs(sampleIndex_);
    tick.sample = sample;
    tick.fresh = !delivered_ || !(sample == last_);
    if (tick.fresh) {
        delivered_ = true;
        last_ = sample;
    }
    return true;
}

bool ReplayCursor::NextSample(ReplayTick& tick) {
    while (NextTick(tick)) {
        if (tick.fresh) return true;
        // Until the next sample every tick repeats this one: go straight to the first tick
        // that can take it, so a long gap costs no more than a short one.
        if (sampleIndex_ + 1 < recording_.Size()) {
            const qint64 next = recording_.TimeNs(sampleIndex_ + 1) - recording_.TimeNs(0);
            tickIndex_ = std::max(tickIndex_, (next + kTickNs - 1) / kTickNs);
        }
    }
    return false;
}
