#pragma once

#include <QtGlobal>

#include "AccelerationSample.h"

// One 30 ms tick of a replayed recording.
struct ReplayTick {
    qint64 tickNs = 0;        // time of the tick, counted from the recording's first sample
    qint64 sampleTimeNs = 0;  // recorded time of the sample the tick took
    AccelerationSample sample;
    // The sample differs from the one delivered before, so this tick delivers it.
    bool fresh = false;
};
