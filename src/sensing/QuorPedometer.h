#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>

#include "AccelerometerListener.h"
#include "DetectorChannel.h"
#include "DetectorKind.h"
#include "DetectorSwitch.h"

class AccelerometerMonitor;
class AccelerometerSource;
class StepReceiver;

// The step detector: turns the accelerometer stream into steps, each classified as a
// walk (1), jog (2) or run (3) step.
//
// Three peak/trough state machines run side by side on sliding eight-sample sums of
// the acceleration magnitude, one per gait. They differ only in their dead-band, the
// user's per-gait sensitivity from Body. A step is accepted when any machine fires and
// takes the gait of the fastest one that fired, smoothed by a two-step hysteresis per
// gait. A fourth channel, raw, has no state machine; it feeds the sensitivity meter.
//
// Threads: samples arrive on the source's sensor thread, and addStep/DataRecieved are
// called there. The start/stop calls come from the GUI thread; only `updating` and
// `monitoring` are shared, every other field belongs to the sensor thread. A stop call
// returns only after a call-out in progress has finished, so its receiver may go away
// afterwards (never call a stop function from inside addStep or DataRecieved).
//
// Which detector's steps are reported, the classic machines' or AdaptiveStepDetector's,
// is chosen when the detector is made (StepDetectorFactory::Configured: the --detector
// option or the "detector" preference) and may be changed while counting with
// SelectDetector; DetectorSwitch hands over without losing or doubling a step.
//
// All arithmetic is single precision, except the square root (double) and the raw
// dead-band test (double against 0.1): the counts must not drift from one build to the
// next, so the order of operations below is deliberate.
class QuorPedometer final : public AccelerometerListener {
public:
    enum class Channel { Walk, Jog, Run, Raw };

    // A detector on the accelerometer AccelerometerSourceFactory picks for this machine.
    QuorPedometer();
    // A detector on `source`; null means no accelerometer.
    explicit QuorPedometer(std::unique_ptr<AccelerometerSource> source);
    // The same, reporting the steps of the detector `kind` (no settings are read).
    QuorPedometer(std::unique_ptr<AccelerometerSource> source, DetectorKind kind);
    ~QuorPedometer() override;
    QuorPedometer(const QuorPedometer&) = delete;
    QuorPedometer& operator=(const QuorPedometer&) = delete;

    // The accelerometer this detector listens to; null when it has none.
    AccelerometerSource* Source() const { return sensorManager.get(); }

    // Counting: steps reach `statistics` while this mode is on.
    void startUpdating();
    void stopUpdating();
    // The sensitivity screen: `accelerometerSettings` gets the raw meter value.
    void startMonitoring();
    void stopMonitoring();

    // One sample in g.
    void OnDataReceived(float x, float y, float z) override;
    // A tick without a new sample: the adaptive detector hears the last one again (its
    // time runs in ticks); the classic machines wait for the next sample.
    void OnTickWithoutSample() override;
    // Steps a hardware step counter counted: walking steps while counting.
    void OnStepsCounted(int steps) override;

    // Advance one gait's state machine; true when it fires.
    bool isStep(float current, float previous);
    bool isJogStep(float current, float previous);
    bool isRunStep(float current, float previous);

    // Compact one channel's buffer to its last eight values and forget its extremes.
    void recycleWalk();
    void recycleJog();
    void recycleRun();
    void recycleRaw();

    // Called with true when monitoring starts while not counting, false when it ends:
    // the sensitivity screen stays lit while the user watches the meter.
    void SetScreenKeeper(std::function<void(bool on)> keepScreenOn);

    // Any thread: the detector whose steps count from the next sample on.
    void SelectDetector(DetectorKind kind) { detectorSwitch.Request(kind); }
    DetectorKind SelectedDetector() const { return detectorSwitch.Requested(); }

    bool IsUpdating() const { return updating.load(); }
    bool IsMonitoring() const { return monitoring.load(); }

    // Read-only views of the sensor thread's state, for diagnostics and tests. Only
    // consistent when read on the sensor thread or while no source is delivering.
    // A copy of the channel's state; its extremes are worked out when asked for.
    DetectorChannel GetChannel(Channel channel) const;
    int GetChannelIndex(Channel channel) const;
    // 0 falling, 1 rising, 2 not yet known; the raw channel has no state (-1).
    int GetState(Channel channel) const;
    int GetSampleCount() const { return sampleCount; }
    // The detector whose steps are reported now (during a hand-over, the one handing over).
    DetectorKind GetActiveDetector() const { return detectorSwitch.Active(); }
    float GetRawDelta() const { return rawDelta; }

    // Receiver of addStep. Set before startUpdating, kept alive until stopUpdating.
    StepReceiver* statistics = nullptr;
    // Receiver of DataRecieved. Set before startMonitoring, kept alive until stopMonitoring.
    AccelerometerMonitor* accelerometerSettings = nullptr;

private:
    static constexpr int kBufferSize = 90;
    static constexpr int kWindow = 8;

    static int applyGaitMode(int gait, int modeGait, int32_t& entered, int32_t& strays);
    static void recycleChannel(float* buffer, int32_t& index, DetectorChannel& channel,
                               const float* sumSource, bool& recycled);
    void classifyStep();
    void registerListener();
    void unregisterListener();
    void reportStep(int gait);
    void reportAdaptiveSteps(int count, const int* gaits);
    void reportRawDelta();
    void waitForCallOut() const;

    float walkCoef;
    float jogCoef;
    float runCoef;
    float rawDelta = 0.0f;
    float walkDelta = 0.3f;
    float jogDelta = 0.3f;
    float runDelta = 0.3f;

    DetectorChannel walk;
    DetectorChannel jog;
    DetectorChannel run;
    DetectorChannel raw;

    uint8_t walkState = 2;
    uint8_t jogState = 2;
    uint8_t runState = 2;

    int32_t sampleCount = 0;
    int32_t walkIndex = 0;
    int32_t jogIndex = 0;
    int32_t runIndex = 0;
    int32_t rawIndex = 0;
    int32_t samplesSinceStep = 0;

    bool walkPending = false;
    bool jogPending = false;
    bool runPending = false;

    int32_t walkEntered = 0;
    int32_t walkStrays = 0;
    int32_t jogEntered = 0;
    int32_t jogStrays = 0;
    int32_t runEntered = 0;
    int32_t runStrays = 0;

    std::unique_ptr<AccelerometerSource> sensorManager;

    float walkBuffer[kBufferSize] = {};
    float jogBuffer[kBufferSize] = {};
    float runBuffer[kBufferSize] = {};
    float rawBuffer[kBufferSize] = {};
    // Whether each channel has been recycled yet, which says where its extremes start.
    bool walkRecycled = false;
    bool jogRecycled = false;
    bool runRecycled = false;
    bool rawRecycled = false;

    std::atomic<bool> updating{false};
    std::atomic<bool> monitoring{false};
    // Set on the sensor thread while addStep or DataRecieved runs, so that a stop call
    // can wait for it to finish.
    std::atomic<bool> callOutBusy{false};
    std::function<void(bool)> keepScreenOn;
    DetectorSwitch detectorSwitch;
};
