#include "QuorPedometer.h"

#include <gtest/gtest.h>

#include <deque>
#include <vector>

#include "AccelerometerMonitor.h"
#include "AccelerometerSource.h"
#include "Body.h"
#include "StepReceiver.h"

namespace {

using Channel = QuorPedometer::Channel;

class GaitLog : public StepReceiver {
public:
    void addStep(int gait) override { gaits.push_back(gait); }
    std::vector<int> gaits;
};

class MeterLog : public AccelerometerMonitor {
public:
    void DataRecieved(double value) override { values.push_back(value); }
    std::vector<double> values;
};

// Feeds magnitudes (as (0, 0, m)) chosen so that the eight-sample sum follows the path
// a test asks for: each new magnitude is the one leaving the window plus the wanted
// change. All values are multiples of 0.5, so the float sums are exact.
class SumDriver {
public:
    SumDriver(QuorPedometer& detector, float base) : detector_(detector), window_(8, base) {
        for (int i = 0; i < 8; ++i) Feed(base);
        sum_ = 8 * base;
        level_ = sum_;
    }

    void To(float sum) {
        const float m = window_.front() + (sum - sum_);
        ASSERT_GE(m, 0.0f) << "path drops faster than the window allows";
        sum_ = sum;
        Feed(m);
    }
    void Hold(int samples) {
        for (int i = 0; i < samples; ++i) To(sum_);
    }
    // Down, down, up, up by `change` around the resting level: a machine that sees
    // changes this large and stands rising fires on the last sample.
    void Stride(float change) {
        To(level_ - change);
        To(level_ - 2 * change);
        To(level_ - change);
        To(level_);
    }

private:
    void Feed(float m) {
        window_.pop_front();
        window_.push_back(m);
        detector_.OnDataReceived(0.0f, 0.0f, m);
    }

    QuorPedometer& detector_;
    std::deque<float> window_;
    float sum_ = 0.0f;
    float level_ = 0.0f;
};

// Per-sample sum changes: 0.5 moves only the walk channel (dead-band 0.3), 1.0 walk and
// jog (0.9), 1.5 all three (run 1.4).
constexpr float kWalkChange = 0.5f;
constexpr float kJogChange = 1.0f;
constexpr float kRunChange = 1.5f;
// Magnitude of the resting phone in the stride tests: high enough that a run of
// strides never asks for a negative magnitude.
constexpr float kStrideBase = 8.0f;

// RecordedWalksTest pins the classic detector's counts and gait split on real walks (the
// state machine, the modes, the warm-up, the wrap of a channel); these cases pin the
// sample after a step, the meter and the source, which walks reach rarely or not at all.
class QuorPedometerTest : public ::testing::Test {
protected:
    void SetUp() override {
        Body::GetInstance().clear();  // default sensitivities 0.3, 0.9, 1.4
        detector_ = std::make_unique<QuorPedometer>(nullptr, DetectorKind::Classic);
        detector_->statistics = &steps_;
        detector_->startUpdating();
    }
    void TearDown() override { Body::GetInstance().clear(); }

    // A stride seen by every channel, so that all three machines stand rising; it
    // cannot fire yet because no crest has been recorded.
    void Prime(SumDriver& driver) {
        driver.Stride(kRunChange);
        ASSERT_TRUE(steps_.gaits.empty());
    }

    std::unique_ptr<QuorPedometer> detector_;
    GaitLog steps_;
};

// The machine starts not knowing the direction: a change within the 0.3 hysteresis keeps
// it there, a fall beyond it enters falling without recording a crest. The walks leave
// this state on their first samples, where no count depends on how.
TEST_F(QuorPedometerTest, TheFirstChangeBeyondTheDeltaLeavesTheUnknownState) {
    QuorPedometer& d = *detector_;
    EXPECT_FALSE(d.isStep(10.2f, 10.0f));
    EXPECT_EQ(d.GetState(Channel::Walk), 2);
    EXPECT_FALSE(d.isStep(10.0f, 11.0f));
    EXPECT_EQ(d.GetState(Channel::Walk), 0);
    EXPECT_EQ(d.GetChannel(Channel::Walk).peak, -30000.0f);
}

TEST_F(QuorPedometerTest, SampleAfterAStepNeverStepsAndItsFlagCarriesOver) {
    QuorPedometer& d = *detector_;
    // Crest 30, valley 2, rising: fires while the previous sum is below 31.
    d.isStep(1.0f, 0.0f);
    d.isStep(0.0f, 30.0f);
    d.isStep(10.0f, 2.0f);
    SumDriver driver(d, 3.5f);  // resting sum 28
    driver.To(32.0f);           // 9th sample: fires, but it is the refractory sample
    EXPECT_TRUE(steps_.gaits.empty());
    driver.Hold(1);  // previous sum 32 is too high to fire; the carried flag steps
    EXPECT_EQ(steps_.gaits, std::vector<int>{1});

    // Set the machine up again right after the step: crest 31.5, valley 2.
    d.isStep(0.0f, 31.5f);
    d.isStep(10.0f, 2.0f);
    driver.To(36.0f);  // fires on the sample right after the step: no step
    EXPECT_EQ(steps_.gaits.size(), 1u);
    driver.Hold(1);  // does not fire itself, reports the carried flag
    EXPECT_EQ(steps_.gaits, (std::vector<int>{1, 1}));
}

TEST_F(QuorPedometerTest, RawWrapTakesItsSumFromTheRunBuffer) {
    QuorPedometer& d = *detector_;
    for (int i = 0; i < 100; ++i) d.OnDataReceived(0.0f, 0.0f, 1.0f);  // wrapped once at 89
    d.recycleRun();  // the run channel now lags the raw channel by 11 positions
    for (int i = 0; i < 70; ++i) d.OnDataReceived(0.0f, 0.0f, 2.0f);
    // The raw channel wrapped on the last sample; its sum came from the run buffer's
    // old ones at the raw positions instead of its own twos. The walk channel, which
    // wrapped on the same sample, kept its real sum.
    EXPECT_EQ(d.GetChannelIndex(Channel::Raw), 8);
    EXPECT_FLOAT_EQ(d.GetChannel(Channel::Raw).sum, 8.0f);
    EXPECT_EQ(d.GetChannelIndex(Channel::Walk), 8);
    EXPECT_FLOAT_EQ(d.GetChannel(Channel::Walk).sum, 16.0f);
    // The run channel's extremes are its twos written since the recycle, not the ones it kept.
    EXPECT_EQ(d.GetChannel(Channel::Run).minValue, 2.0f);
}

TEST_F(QuorPedometerTest, MonitoringAloneClassifiesStepsWithoutReportingThem) {
    MeterLog meter;
    QuorPedometer& d = *detector_;
    d.stopUpdating();
    d.accelerometerSettings = &meter;
    d.startMonitoring();

    SumDriver driver(d, kStrideBase);
    EXPECT_TRUE(meter.values.empty());  // nothing during the warm-up
    Prime(driver);
    driver.Stride(kJogChange);
    driver.Stride(kJogChange);
    EXPECT_TRUE(steps_.gaits.empty());
    // The meter gets twice the raw sum's change for every sample: 3 for a 1.5 change.
    ASSERT_EQ(meter.values.size(), 12u);
    EXPECT_DOUBLE_EQ(meter.values[0], 3.0);
    EXPECT_DOUBLE_EQ(meter.values[5], 2.0);

    // Jog mode was entered while only monitoring: counting now reports a walk as jog.
    d.startUpdating();
    driver.Stride(kWalkChange);
    EXPECT_EQ(steps_.gaits, std::vector<int>{2});
    d.stopMonitoring();
    driver.Hold(3);
    EXPECT_EQ(meter.values.size(), 16u);
}

TEST_F(QuorPedometerTest, RawMeterIgnoresChangesBelowATenth) {
    MeterLog meter;
    QuorPedometer& d = *detector_;
    d.accelerometerSettings = &meter;
    d.startMonitoring();
    for (int i = 0; i < 8; ++i) d.OnDataReceived(0.0f, 0.0f, 1.0f);
    d.OnDataReceived(0.0f, 0.0f, 1.0625f);  // sum moves by 0.0625: held
    d.OnDataReceived(0.0f, 0.0f, 1.25f);    // by 0.25 from the held sum
    EXPECT_EQ(meter.values, (std::vector<double>{0.0, 0.5}));
    EXPECT_FLOAT_EQ(d.GetRawDelta(), 0.25f);
    d.stopMonitoring();  // returns at once: the last report has finished
}

// ---------------------------------------------------------------------------------
// Registration with the source.

class FakeSource : public AccelerometerSource {
public:
    explicit FakeSource(bool available) : available_(available) {}
    bool IsAvailable() const override { return available_; }
    void Start(AccelerometerListener*) override {
        ++starts;
        running = true;
    }
    void Stop() override {
        if (running) ++stops;
        running = false;
    }
    bool IsRunning() const override { return running; }

    int starts = 0;
    int stops = 0;
    bool running = false;

private:
    bool available_;
};

struct LifecycleFixture {
    explicit LifecycleFixture(bool available) {
        auto owned = std::make_unique<FakeSource>(available);
        source = owned.get();
        detector = std::make_unique<QuorPedometer>(std::move(owned), DetectorKind::Classic);
        detector->SetScreenKeeper([this](bool on) { screen.push_back(on); });
    }
    FakeSource* source;
    std::unique_ptr<QuorPedometer> detector;
    std::vector<bool> screen;
};

TEST(QuorPedometerLifecycleTest, SourceIsRegisteredOnceAndRemovedWhenBothModesEnd) {
    LifecycleFixture f(true);
    QuorPedometer& d = *f.detector;
    d.startUpdating();
    d.startMonitoring();  // counting already: no second registration, screen untouched
    EXPECT_EQ(f.source->starts, 1);
    EXPECT_TRUE(f.screen.empty());
    d.stopUpdating();  // the meter still needs samples
    EXPECT_TRUE(f.source->running);
    d.stopMonitoring();
    EXPECT_FALSE(f.source->running);
    EXPECT_EQ(f.source->stops, 1);
    EXPECT_EQ(f.screen, std::vector<bool>{false});

    d.startMonitoring();  // the meter alone keeps the screen on
    EXPECT_EQ(f.screen, (std::vector<bool>{false, true}));
    d.startUpdating();
    EXPECT_EQ(f.source->starts, 2);
    d.stopMonitoring();
    EXPECT_TRUE(f.source->running);
    d.stopUpdating();
    EXPECT_FALSE(f.source->running);
    EXPECT_FALSE(d.IsUpdating());
    EXPECT_FALSE(d.IsMonitoring());
}

TEST(QuorPedometerLifecycleTest, MissingSensorIsNeverRegistered) {
    LifecycleFixture f(false);
    f.detector->startUpdating();
    f.detector->startMonitoring();
    EXPECT_EQ(f.source->starts, 0);
    EXPECT_TRUE(f.detector->IsUpdating());
}

TEST(QuorPedometerLifecycleTest, StopAndStartKeepTheDetectorState) {
    Body::GetInstance().clear();
    LifecycleFixture f(true);
    QuorPedometer& d = *f.detector;
    d.startUpdating();
    for (int i = 0; i < 20; ++i) d.OnDataReceived(0.0f, 0.0f, 1.0f + (i % 4) * 0.25f);
    const DetectorChannel before = d.GetChannel(Channel::Walk);
    d.stopUpdating();
    d.startUpdating();
    EXPECT_EQ(d.GetSampleCount(), 20);
    EXPECT_EQ(d.GetChannel(Channel::Walk).sum, before.sum);
}

// The sensitivities come from the body profile: a sum that moves by exactly a channel's
// sensitivity is taken, less is held.
TEST(QuorPedometerCoefficientTest, SensitivitiesComeFromTheBodyProfile) {
    for (const double walkCoef : {0.5, 5.0}) {
        Body::GetInstance().clear();
        Body::GetInstance().setWalkCoef(walkCoef);
        QuorPedometer d(nullptr, DetectorKind::Classic);
        Body::GetInstance().clear();
        SumDriver driver(d, 1.0f);  // a walk dead-band of 5 holds the warm-up sum at 0
        EXPECT_EQ(d.GetChannel(Channel::Walk).sum, walkCoef == 5.0 ? 0.0f : 8.0f);
        driver.To(8.5f);
        EXPECT_EQ(d.GetChannel(Channel::Walk).sum, walkCoef == 5.0 ? 0.0f : 8.5f);
        EXPECT_EQ(d.GetChannel(Channel::Jog).sum, 8.0f);  // 0.5 is within its 0.9
    }
}

}  // namespace
