#pragma once

// The running state of one detector channel (walk, jog, run or raw).
//
// The +-30000 values mean "nothing recorded yet"; a recycle puts them back. The
// detector does not update the extremes per sample: QuorPedometer::GetChannel works
// them out from the channel's buffer when they are asked for.
struct DetectorChannel {
    static constexpr float kUnsetHigh = 30000.0f;

    float maxValue = -kUnsetHigh;  // largest magnitude since the last recycle
    float minValue = kUnsetHigh;   // smallest magnitude since the last recycle
    float prevSum = 0.0f;          // eight-sample sum before the current sample
    float sum = 0.0f;              // eight-sample sum after it, dead-band applied
    float peak = -kUnsetHigh;      // highest crest seen since the last recycle
    float trough = kUnsetHigh;     // lowest valley seen since the last recycle
};
