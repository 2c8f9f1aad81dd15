#include "QuorPedometer.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <thread>

#include "AccelerometerMonitor.h"
#include "AccelerometerSource.h"
#include "AccelerometerSourceFactory.h"
#include "Body.h"
#include "StepDetectorFactory.h"
#include "StepReceiver.h"

namespace {
constexpr int kWalk = 1;
constexpr int kJog = 2;
constexpr int kRun = 3;

// The raw channel's dead-band is 0.1 compared in double. 0.1f is the float just above
// 0.1 and the float below it is under 0.1, so for a float difference "d < 0.1f" in
// float is exactly "(double)d < 0.1"; the float form compiles to a branch-free select.
constexpr float kRawDeadBand = 0.1f;
static_assert(static_cast<double>(kRawDeadBand) > 0.1);
static_assert(static_cast<double>(std::bit_cast<float>(std::bit_cast<uint32_t>(kRawDeadBand) - 1)) <
              0.1);
// Channels are compacted before an index would pass the end of the buffer.
constexpr int32_t kLastWriteIndex = 88;

// Counters that only matter near zero must not overflow on a phone left running for
// years (or in a benchmark feeding billions of samples).
inline void countUp(int32_t& counter) {
    if (counter != std::numeric_limits<int32_t>::max()) ++counter;
}
// One gait's state machine: 0 falling, 1 rising, 2 not yet known. Inlined into the
// per-sample path, where it runs three times per sample.
[[gnu::always_inline]] inline bool advanceMachine(float c, float p, float delta, uint8_t& state,
                                                  DetectorChannel& channel) {
    float& peak = channel.peak;
    float& trough = channel.trough;
    switch (state) {
        case 2:
            if (c > p + delta) state = 1;
            if (c < p - delta) state = 0;
            return false;
        case 1:
            // Lopsided on purpose: the current sum must clear the midpoint, the previous
            // one only the peak plus half the trough.
            if (peak > trough && c > (peak + trough) * 0.5f && p < peak + trough * 0.5f) {
                return true;
            }
            if (c < p - delta) {
                state = 0;
                if (p > peak) peak = p;  // the crest just passed
            }
            return false;
        default:
            if (c > p + delta) {
                state = 1;
                if (p < trough) trough = p;  // the valley just passed
            }
            return false;
    }
}
}  // namespace

QuorPedometer::QuorPedometer() : QuorPedometer(AccelerometerSourceFactory::Create()) {}

QuorPedometer::QuorPedometer(std::unique_ptr<AccelerometerSource> source)
    : QuorPedometer(std::move(source), StepDetectorFactory::Configured()) {}

QuorPedometer::QuorPedometer(std::unique_ptr<AccelerometerSource> source, DetectorKind kind)
    : walkCoef(static_cast<float>(Body::GetInstance().getWalkCoef())),
      jogCoef(static_cast<float>(Body::GetInstance().getJogCoef())),
      runCoef(static_cast<float>(Body::GetInstance().getRunCoef())),
      sensorManager(std::move(source)),
      detectorSwitch(kind) {}

QuorPedometer::~QuorPedometer() {
    if (sensorManager) sensorManager->Stop();
}

void QuorPedometer::SetScreenKeeper(std::function<void(bool on)> keeper) {
    keepScreenOn = std::move(keeper);
}

// ---------------------------------------------------------------------------------
// Lifecycle: the source is registered once however many modes are on, and removed
// only when both are off.

void QuorPedometer::startUpdating() {
    const bool wasMonitoring = monitoring.load();
    updating.store(true);
    if (!wasMonitoring) registerListener();
}

void QuorPedometer::stopUpdating() {
    updating.store(false);
    waitForCallOut();
    if (!monitoring.load()) unregisterListener();
}

void QuorPedometer::startMonitoring() {
    monitoring.store(true);
    if (!updating.load()) {
        if (keepScreenOn) keepScreenOn(true);
        registerListener();
    }
}

void QuorPedometer::stopMonitoring() {
    monitoring.store(false);
    waitForCallOut();
    if (!updating.load()) {
        unregisterListener();
        if (keepScreenOn) keepScreenOn(false);
    }
}

void QuorPedometer::registerListener() {
    // An absent accelerometer is not an error: nothing is registered and no steps come.
    if (sensorManager && sensorManager->IsAvailable()) sensorManager->Start(this);
}

void QuorPedometer::unregisterListener() {
    if (sensorManager) sensorManager->Stop();
}

void QuorPedometer::waitForCallOut() const {
    // The mode flag is already cleared, so at most the call that was in progress when
    // it was cleared remains; it is short (an event post or a counter update).
    while (callOutBusy.load()) std::this_thread::yield();
}

// A call-out re-checks its mode after announcing itself, so a stop call either sees
// the announcement and waits, or the call-out sees the cleared mode and skips.
void QuorPedometer::reportStep(int gait) {
    callOutBusy.store(true);
    if (updating.load() && statistics != nullptr) statistics->addStep(gait);
    callOutBusy.store(false);
}

void QuorPedometer::OnStepsCounted(int steps) {
    for (int i = 0; i < steps; ++i) reportStep(1);
}

void QuorPedometer::reportRawDelta() {
    callOutBusy.store(true);
    if (monitoring.load() && accelerometerSettings != nullptr) {
        accelerometerSettings->DataRecieved(2.0 * static_cast<double>(rawDelta));
    }
    callOutBusy.store(false);
}

// ---------------------------------------------------------------------------------
// One sample.

void QuorPedometer::reportAdaptiveSteps(int count, const int* gaits) {
    if (count > 0 && updating.load(std::memory_order_relaxed)) {
        for (int i = 0; i < count; ++i) reportStep(gaits[i]);
    }
}

void QuorPedometer::OnTickWithoutSample() {
    int gaits[DetectorSwitch::kMaxReport];
    reportAdaptiveSteps(detectorSwitch.OnTickWithoutSample(gaits), gaits);
}

void QuorPedometer::OnDataReceived(float x, float y, float z) {
    // The adaptive detector's steps (nothing while the classic machines count alone).
    int gaits[DetectorSwitch::kMaxReport];
    reportAdaptiveSteps(detectorSwitch.OnSample(x, y, z, gaits), gaits);

    // The sums are worked on in locals: the buffer writes below could otherwise alias
    // them and force a reload on every step of the sample.
    float walkSum = walk.sum;
    float jogSum = jog.sum;
    float runSum = run.sum;
    float rawSum = raw.sum;
    float walkPrev = walk.prevSum;
    float jogPrev = jog.prevSum;
    float runPrev = run.prevSum;
    float rawPrev = raw.prevSum;

    // Slide the sums: drop the value that leaves the eight-sample window.
    if (sampleCount >= kWindow) {
        walkPrev = walkSum;
        walkSum = walkSum - walkBuffer[walkIndex - kWindow];
        jogPrev = jogSum;
        jogSum = jogSum - jogBuffer[jogIndex - kWindow];
        runPrev = runSum;
        runSum = runSum - runBuffer[runIndex - kWindow];
        rawPrev = rawSum;
        rawSum = rawSum - rawBuffer[rawIndex - kWindow];
    }

    const float squares = x * x + y * y + z * z;
    const float m = static_cast<float>(std::sqrt(static_cast<double>(squares)));

    walkBuffer[walkIndex] = m;
    jogBuffer[jogIndex] = m;
    runBuffer[runIndex] = m;
    rawBuffer[rawIndex] = m;

    walkSum = walkSum + m;
    jogSum = jogSum + m;
    runSum = runSum + m;
    rawSum = rawSum + m;

    // Dead-band: a sum that moved less than the sensitivity is held where it was. This
    // is the only noise filter. Written as selects, which compile without branches.
    walkSum = std::fabs(walkSum - walkPrev) < walkCoef ? walkPrev : walkSum;
    jogSum = std::fabs(jogSum - jogPrev) < jogCoef ? jogPrev : jogSum;
    runSum = std::fabs(runSum - runPrev) < runCoef ? runPrev : runSum;
    rawSum = std::fabs(rawSum - rawPrev) < kRawDeadBand ? rawPrev : rawSum;

    walk.sum = walkSum;
    jog.sum = jogSum;
    run.sum = runSum;
    raw.sum = rawSum;
    walk.prevSum = walkPrev;
    jog.prevSum = jogPrev;
    run.prevSum = runPrev;
    raw.prevSum = rawPrev;

    // The extremes since the last recycle are not tracked here: they are exactly those of
    // the buffer from the recycle point on, and GetChannel derives them from there.

    ++walkIndex;
    ++jogIndex;
    ++runIndex;
    ++rawIndex;
    countUp(sampleCount);

    // Detection starts with the ninth sample, when the sums begin to slide.
    if (sampleCount > kWindow) {
        if (advanceMachine(walkSum, walkPrev, walkDelta, walkState, walk)) walkPending = true;
        if (advanceMachine(jogSum, jogPrev, jogDelta, jogState, jog)) jogPending = true;
        if (advanceMachine(runSum, runPrev, runDelta, runState, run)) runPending = true;

        rawDelta = std::fabs(rawSum - rawPrev);
        if (monitoring.load(std::memory_order_relaxed)) reportRawDelta();

        // The sample right after a step never yields one; pending flags carry over.
        if (samplesSinceStep <= 0) {
            countUp(samplesSinceStep);
        } else if (runPending || jogPending || walkPending) {
            classifyStep();
        } else {
            countUp(samplesSinceStep);
        }
    }

    // Wrap: a channel that went 81 samples without a step is compacted.
    if (walkIndex > kLastWriteIndex) recycleWalk();
    if (jogIndex > kLastWriteIndex) recycleJog();
    if (runIndex > kLastWriteIndex) recycleRun();
    if (rawIndex > kLastWriteIndex) recycleRaw();
}

void QuorPedometer::classifyStep() {
    int gait = runPending ? kRun : (jogPending ? kJog : kWalk);
    // Jog, then run, then walk: an established walk mode has the last word.
    gait = applyGaitMode(gait, kJog, jogEntered, jogStrays);
    gait = applyGaitMode(gait, kRun, runEntered, runStrays);
    gait = applyGaitMode(gait, kWalk, walkEntered, walkStrays);

    if (updating.load(std::memory_order_relaxed) && detectorSwitch.OnClassicStep(gait)) {
        reportStep(gait);
    }

    // Every accepted step recycles the three gait channels, counting or not; the raw
    // channel only wraps.
    recycleWalk();
    recycleJog();
    recycleRun();
    samplesSinceStep = 0;
    walkPending = false;
    jogPending = false;
    runPending = false;
}

// Two steps of a gait in a row enter its mode. In the mode, the next two steps of any
// other gait count as the mode's gait (strays are counted over the whole stay, not in a
// row); the third stray leaves the mode and keeps its own gait.
int QuorPedometer::applyGaitMode(int gait, int modeGait, int32_t& entered, int32_t& strays) {
    if (entered <= 1 && gait == modeGait) ++entered;
    if (entered <= 1 && gait != modeGait) {
        entered = 0;
        strays = 0;
    }
    if (entered >= 2 && gait != modeGait) {
        if (strays <= 1) {
            ++strays;
            gait = modeGait;
        } else {
            strays = 0;
            entered = 0;
        }
    }
    return gait;
}

// ---------------------------------------------------------------------------------
// State machines: 0 falling, 1 rising, 2 not yet known.

bool QuorPedometer::isStep(float current, float previous) {
    return advanceMachine(current, previous, walkDelta, walkState, walk);
}

bool QuorPedometer::isJogStep(float current, float previous) {
    return advanceMachine(current, previous, jogDelta, jogState, jog);
}

bool QuorPedometer::isRunStep(float current, float previous) {
    return advanceMachine(current, previous, runDelta, runState, run);
}

// ---------------------------------------------------------------------------------
// Recycling.

void QuorPedometer::recycleChannel(float* buffer, int32_t& index, DetectorChannel& channel,
                                   const float* sumSource, bool& recycled) {
    recycled = true;
    const int32_t from = index - kWindow;
    // Summed before the move, which may overwrite part of the source range.
    float total = 0.0f;
    for (int i = 0; i < kWindow; ++i) total += sumSource[from + i];
    std::memmove(buffer, buffer + from, kWindow * sizeof(float));
    channel.sum = total;
    channel.prevSum = total;
    index = kWindow;
    channel.peak = -DetectorChannel::kUnsetHigh;
    channel.maxValue = -DetectorChannel::kUnsetHigh;
    channel.trough = DetectorChannel::kUnsetHigh;
    channel.minValue = DetectorChannel::kUnsetHigh;
}

void QuorPedometer::recycleWalk() {
    recycleChannel(walkBuffer, walkIndex, walk, walkBuffer, walkRecycled);
}

void QuorPedometer::recycleJog() {
    recycleChannel(jogBuffer, jogIndex, jog, jogBuffer, jogRecycled);
}

void QuorPedometer::recycleRun() {
    recycleChannel(runBuffer, runIndex, run, runBuffer, runRecycled);
}

// The raw sum is taken from the run buffer at the raw channel's positions. This only
// shifts the sensitivity meter after a wrap, and the meter has always behaved so.
void QuorPedometer::recycleRaw() {
    recycleChannel(rawBuffer, rawIndex, raw, runBuffer, rawRecycled);
}

// ---------------------------------------------------------------------------------

DetectorChannel QuorPedometer::GetChannel(Channel channel) const {
    const DetectorChannel* state = &raw;
    const float* buffer = rawBuffer;
    bool recycled = rawRecycled;
    switch (channel) {
        case Channel::Walk:
            state = &walk, buffer = walkBuffer, recycled = walkRecycled;
            break;
        case Channel::Jog:
            state = &jog, buffer = jogBuffer, recycled = jogRecycled;
            break;
        case Channel::Run:
            state = &run, buffer = runBuffer, recycled = runRecycled;
            break;
        case Channel::Raw:
            break;
    }
    // Since the last recycle the channel has written its magnitudes from position 8 on
    // (from 0 before its first one), so those positions hold the extremes.
    DetectorChannel copy = *state;
    copy.maxValue = -DetectorChannel::kUnsetHigh;
    copy.minValue = DetectorChannel::kUnsetHigh;
    for (int i = recycled ? kWindow : 0; i < GetChannelIndex(channel); ++i) {
        const float m = buffer[i];
        if (m > copy.maxValue) copy.maxValue = m;
        if (m < copy.minValue) copy.minValue = m;
    }
    return copy;
}

int QuorPedometer::GetChannelIndex(Channel channel) const {
    switch (channel) {
        case Channel::Walk:
            return walkIndex;
        case Channel::Jog:
            return jogIndex;
        case Channel::Run:
            return runIndex;
        default:
            return rawIndex;
    }
}

int QuorPedometer::GetState(Channel channel) const {
    switch (channel) {
        case Channel::Walk:
            return walkState;
        case Channel::Jog:
            return jogState;
        case Channel::Run:
            return runState;
        default:
            return -1;
    }
}
