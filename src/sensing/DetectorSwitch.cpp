#include "DetectorSwitch.h"

namespace {
// How long the classic steps keep counting while the adaptive detector looks for a walk.
constexpr int64_t kWarmUpSamples = 66;
}  // namespace

DetectorSwitch::DetectorSwitch(DetectorKind kind)
    : requested(kind), state(kind == DetectorKind::Adaptive ? State::Adaptive : State::Classic) {}

// Steps of the two detectors closer than this are the same footfall.
int64_t DetectorSwitch::halfStep() const {
    const int period = adaptive.StepPeriod();
    return period > 0 ? period / 2 : AdaptiveStepDetector::Parameters{}.minStepSamples;
}

int DetectorSwitch::onSampleSwitching(float x, float y, float z, int* gaits) {
    const DetectorKind wanted = Requested();
    if (state == State::Classic) {  // a hand-over to the adaptive detector begins
        adaptive.Reset();
        adaptiveOrigin = sample;
        state = State::ToAdaptive;
        switchSample = sample;
    } else if (state == State::ToAdaptive && wanted == DetectorKind::Classic) {
        state = State::Classic;  // the classic steps never stopped counting
        return 0;
    } else if (state == State::Adaptive && wanted == DetectorKind::Classic) {
        state = State::ToClassic;
        switchSample = sample;
        heldCount = 0;
    }

    int reported = 0;
    const int decided = adaptive.OnSample(x, y, z);
    for (int i = 0; i < decided; ++i) {
        const int64_t footfall = adaptiveOrigin + adaptive.DecidedStep(i);
        if (state == State::ToAdaptive) {  // it found the walk: it takes over here
            floor = lastReported + halfStep();
            state = State::Adaptive;
        }
        if (footfall <= floor) continue;
        if (state == State::ToClassic && footfall > switchSample) continue;
        lastReported = footfall;
        if (reported < kMaxReport) gaits[reported++] = adaptive.DecidedGait(i);
    }
    if (state == State::ToAdaptive && sample - switchSample >= kWarmUpSamples) {
        floor = lastReported + halfStep();
        state = State::Adaptive;
    }
    if (state == State::ToClassic &&
        sample - switchSample >= AdaptiveStepDetector::kMaxDecisionDelay) {
        // Every footfall up to the switch is decided: the held classic steps after the
        // last one counted are new footfalls.
        const int64_t after = lastReported + halfStep();
        for (int i = 0; i < heldCount; ++i) {
            if (held[i].sample <= after) continue;
            lastReported = held[i].sample;
            if (reported < kMaxReport) gaits[reported++] = held[i].gait;
        }
        heldCount = 0;
        state = State::Classic;
    }
    return reported;
}

bool DetectorSwitch::OnClassicStep(int gait) {
    switch (state) {
        case State::Classic:
        case State::ToAdaptive:
            lastReported = sample;
            return true;
        case State::ToClassic:
            if (heldCount < kMaxReport) held[heldCount++] = {sample, gait};
            return false;
        case State::Adaptive:
            break;
    }
    return false;
}
