#pragma once

#include <atomic>
#include <cstdint>

#include "AdaptiveStepDetector.h"
#include "DetectorKind.h"

// Decides whose steps QuorPedometer reports, the classic machines' or the adaptive
// detector's, and hands over between them without losing or doubling a step.
//
// The classic machines always run (they are the engine's own state and feed the
// sensitivity meter); the adaptive detector runs only while it counts or is being
// handed over to. A hand-over pairs the two detectors' steps by time: the one taking
// over counts only footfalls more than half a step after the last one reported.
//  - To adaptive: it starts fresh, and the classic steps keep counting until it has
//    found the walk (its first step) or two seconds have passed without one.
//  - To classic: the adaptive detector still decides its footfalls up to the switch
//    (it needs up to a second for that); classic steps of that second are held, then
//    those after the last adaptive footfall count.
// An adaptive step takes the gait the adaptive detector decided for it (GaitClassifier:
// cadence and intensity); classic steps keep the classic machines' gait.
//
// Threads: Request from any thread; everything else on the sensor thread, in this order
// per sample: OnSample, then OnClassicStep if the classic machines accepted a step.
class DetectorSwitch {
public:
    explicit DetectorSwitch(DetectorKind kind);

    // The detector that should count from now on; the hand-over starts at the next sample.
    void Request(DetectorKind kind) { requested.store(kind, std::memory_order_relaxed); }
    DetectorKind Requested() const { return requested.load(std::memory_order_relaxed); }
    // The detector in charge (during a hand-over, the one handing over).
    DetectorKind Active() const {
        return state == State::Classic || state == State::ToAdaptive ? DetectorKind::Classic
                                                                     : DetectorKind::Adaptive;
    }

    // One sample in g. Returns how many steps to report now; their gaits are in `gaits`
    // (room for kMaxReport).
    static constexpr int kMaxReport = 32;
    int OnSample(float x, float y, float z, int* gaits) {
        ++sample;
        last = {x, y, z};
        if (state == State::Classic && Requested() == DetectorKind::Classic) return 0;
        return onSampleSwitching(x, y, z, gaits);
    }
    // A tick without a new sample: the last one again, so that the adaptive detector's
    // time runs in ticks whatever the sensor's rate. Nothing before the first sample.
    int OnTickWithoutSample(int* gaits) {
        return sample < 0 ? 0 : OnSample(last.x, last.y, last.z, gaits);
    }
    // The classic machines accepted a step of `gait` at the current sample: true when it
    // is to be reported now.
    bool OnClassicStep(int gait);

private:
    enum class State { Classic, ToAdaptive, Adaptive, ToClassic };
    struct Held {
        int64_t sample;
        int gait;
    };

    int onSampleSwitching(float x, float y, float z, int* gaits);
    int64_t halfStep() const;

    std::atomic<DetectorKind> requested;
    State state;
    AdaptiveStepDetector adaptive;
    int64_t sample = -1;                   // index of the current sample
    int64_t switchSample = 0;              // where the running hand-over began
    int64_t adaptiveOrigin = 0;            // the sample the adaptive detector counts from
    int64_t lastReported = INT64_MIN / 2;  // footfall of the last step reported
    int64_t floor = INT64_MIN / 2;         // adaptive footfalls at or before this were counted
    struct {
        float x, y, z;
    } last = {0.0f, 0.0f, 0.0f};  // the latest sample, heard again on a tick without one
    int heldCount = 0;
    Held held[kMaxReport] = {};
};
