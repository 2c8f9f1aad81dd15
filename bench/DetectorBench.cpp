// Step detector throughput: samples already in memory, one detector, one core.
// Targets: at least 50 million samples per second for the classic detector, 20 million
// for the adaptive one (alone, and in the engine, where the classic machines run too).
#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <random>
#include <vector>

#include "AccelerationSample.h"
#include "AdaptiveStepDetector.h"
#include "NullAccelerometerSource.h"
#include "QuorPedometer.h"
#include "StepReceiver.h"

namespace {

class CountingReceiver : public StepReceiver {
public:
    void addStep(int gait) override { steps += gait > 0; }
    long long steps = 0;
};

// A phone in a trouser pocket, sampled every 30 ms: gravity plus a stride rhythm that
// drifts between walking and jogging, plus sensor noise.
std::vector<AccelerationSample> walkingSamples(std::size_t count) {
    std::vector<AccelerationSample> samples(count);
    std::mt19937 random(42);
    std::normal_distribution<float> noise(0.0f, 0.03f);
    for (std::size_t i = 0; i < count; ++i) {
        const double t = i * 0.03;
        const double cadence = 1.8 + 0.8 * std::sin(t / 60.0);  // steps per second
        const double bounce = (0.25 + 0.2 * std::sin(t / 45.0)) * std::sin(2 * M_PI * cadence * t);
        samples[i] = {static_cast<float>(0.2 + 0.1 * bounce) + noise(random),
                      static_cast<float>(0.95 + bounce) + noise(random),
                      static_cast<float>(0.25 + 0.3 * bounce) + noise(random)};
    }
    return samples;
}

// The engine on a walk, reporting the steps of the detector `kind`.
void engineWalking(benchmark::State& state, DetectorKind kind) {
    const std::vector<AccelerationSample> samples = walkingSamples(1 << 20);
    QuorPedometer detector(std::make_unique<NullAccelerometerSource>(), kind);
    CountingReceiver receiver;
    detector.statistics = &receiver;
    detector.startUpdating();
    for (auto _ : state) {
        for (const AccelerationSample& s : samples) detector.OnDataReceived(s.x, s.y, s.z);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(samples.size()));
    state.counters["steps_per_pass"] =
        static_cast<double>(receiver.steps) / static_cast<double>(state.iterations());
}

void BM_DetectorWalking(benchmark::State& state) {
    engineWalking(state, DetectorKind::Classic);
}
BENCHMARK(BM_DetectorWalking)->Unit(benchmark::kMillisecond);

void BM_DetectorStill(benchmark::State& state) {
    std::vector<AccelerationSample> samples(1 << 20);
    std::mt19937 random(7);
    std::normal_distribution<float> noise(0.0f, 0.004f);
    for (AccelerationSample& s : samples) s = {noise(random), noise(random), 1.0f + noise(random)};
    QuorPedometer detector(std::make_unique<NullAccelerometerSource>(), DetectorKind::Classic);
    detector.startUpdating();
    for (auto _ : state) {
        for (const AccelerationSample& s : samples) detector.OnDataReceived(s.x, s.y, s.z);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(samples.size()));
}
BENCHMARK(BM_DetectorStill)->Unit(benchmark::kMillisecond);

void BM_AdaptiveWalking(benchmark::State& state) {
    const std::vector<AccelerationSample> samples = walkingSamples(1 << 20);
    AdaptiveStepDetector detector;
    long long steps = 0;
    for (auto _ : state) {
        for (const AccelerationSample& s : samples) steps += detector.OnSample(s.x, s.y, s.z);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(samples.size()));
    state.counters["steps_per_pass"] =
        static_cast<double>(steps) / static_cast<double>(state.iterations());
}
BENCHMARK(BM_AdaptiveWalking)->Unit(benchmark::kMillisecond);

void BM_EngineAdaptiveWalking(benchmark::State& state) {
    engineWalking(state, DetectorKind::Adaptive);
}
BENCHMARK(BM_EngineAdaptiveWalking)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
