#include "Metronome.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <cmath>

#include "Body.h"
#include "FakeSoundPlayer.h"
#include "PedometerOptions.h"

namespace {

enum { kOff = 0, kSpeed = 1, kPace = 2, kRate = 3 };

class MetronomeTest : public ::testing::Test {
protected:
    void SetUp() override {
        PedometerOptions::GetInstance().RestoreDefaults();
        options.pacerOffOnStanding = false;
        options.pacerDiff = false;
        Body& body = Body::GetInstance();
        body.clear();
        body.setWalkStepSize(0.75);
        body.setJogStepSize(1.0);
        body.setRunStepSize(1.25);
    }
    void TearDown() override {
        PedometerOptions::GetInstance().RestoreDefaults();
        Body::GetInstance().clear();
    }

    // Starts a recording in `mode` and returns the interval the pacer chose.
    int IntervalIn(int mode) {
        options.pacerType = mode;
        metronome.Start();
        return metronome.GetInterval();
    }

    PedometerOptions& options = PedometerOptions::GetInstance();
    Metronome metronome;
};

TEST_F(MetronomeTest, StepRateModeBeatsSixtyThousandOverTheRate) {
    options.pacerFrequency = 120;
    EXPECT_EQ(IntervalIn(kRate), 500);
    EXPECT_TRUE(metronome.IsRunning());
    EXPECT_EQ(metronome.GetRuntime(), 500);

    options.pacerFrequency = 7;
    metronome.Update();
    EXPECT_EQ(metronome.GetInterval(), 8571);
    EXPECT_EQ(metronome.GetRuntime(), 8571);
}

TEST_F(MetronomeTest, SpeedModeUsesTheStepOfTheTargetSpeed) {
    options.pacerSpeed = 6.0;  // walking: 60000 / ((6000 / 0.75) / 60)
    EXPECT_EQ(IntervalIn(kSpeed), 450);
    options.pacerSpeed = 7.39;
    metronome.Update();
    EXPECT_EQ(metronome.GetInterval(), 365);  // 3600 * 0.75 / 7.39 = 365.36
    options.pacerSpeed = 7.4;                 // jogging from 7.4 on
    metronome.Update();
    EXPECT_EQ(metronome.GetInterval(), 486);  // 3600 * 1.0 / 7.4 = 486.49
    options.pacerSpeed = 9.65;
    metronome.Update();
    EXPECT_EQ(metronome.GetInterval(), 373);  // 3600 * 1.0 / 9.65 = 373.06
    options.pacerSpeed = 9.66;                // running from 9.66 on
    metronome.Update();
    EXPECT_EQ(metronome.GetInterval(), 465);  // 3600 * 1.25 / 9.66 = 465.84
}

TEST_F(MetronomeTest, PaceModeTakesItsStepFromTheTargetSpeedNotThePace) {
    options.pacerPace = 12.0;
    options.pacerSpeed = 6.0;
    EXPECT_EQ(IntervalIn(kPace), 540);  // 60 * 12 * 0.75
    options.pacerSpeed = 10.0;          // a pace of 12 min/km, yet the running step
    metronome.Update();
    EXPECT_EQ(metronome.GetInterval(), 900);  // 60 * 12 * 1.25
}

TEST_F(MetronomeTest, ModeOffOrAZeroTargetIsSilentAndAnUnknownModeChangesNothing) {
    options.pacerFrequency = 120;
    EXPECT_EQ(IntervalIn(kRate), 500);
    options.pacerType = kOff;
    metronome.Update();
    EXPECT_FALSE(metronome.IsRunning());
    EXPECT_EQ(metronome.GetInterval(), 0);
    EXPECT_EQ(metronome.GetRuntime(), 0);

    options.pacerSpeed = 0.0;
    EXPECT_EQ(IntervalIn(kSpeed), 0);
    options.pacerPace = 0.0;
    EXPECT_EQ(IntervalIn(kPace), 0);
    options.pacerFrequency = 0;
    EXPECT_EQ(IntervalIn(kRate), 0);
    EXPECT_FALSE(metronome.IsRunning());

    options.pacerFrequency = 60;
    EXPECT_EQ(IntervalIn(kRate), 1000);
    options.pacerType = 7;
    metronome.Update();
    EXPECT_TRUE(metronome.IsRunning());
    EXPECT_EQ(metronome.GetInterval(), 1000);
}

TEST_F(MetronomeTest, OnlyIfDiffersBeatsOutsideTheBandAndIsSilentOnItsEdges) {
    options.pacerDiff = true;
    options.pacerFrequency = 120;
    options.pacerDiffFrequency = 10;
    options.pacerType = kRate;
    metronome.Start();

    metronome.SetData(24, 18.0);  // 288 steps/min
    EXPECT_TRUE(metronome.IsRunning());
    metronome.SetData(11, 8.0);  // 132, above 130
    EXPECT_TRUE(metronome.IsRunning());
    metronome.SetData(10, 7.0);  // 120, on target
    EXPECT_FALSE(metronome.IsRunning());
    EXPECT_EQ(metronome.GetInterval(), 0);
    metronome.SetData(9, 7.0);  // 108, below 110
    EXPECT_TRUE(metronome.IsRunning());
    EXPECT_EQ(metronome.GetInterval(), 500);

    options.pacerDiffFrequency = 12;  // band 108..132, both ends silent
    metronome.SetData(11, 8.0);
    EXPECT_FALSE(metronome.IsRunning());
    metronome.SetData(9, 7.0);
    EXPECT_FALSE(metronome.IsRunning());
}

TEST_F(MetronomeTest, OnlyIfDiffersComparesSpeedAndPaceOfTheSpan) {
    options.pacerDiff = true;
    options.pacerSpeed = 6.0;
    options.pacerDiffSpeed = 0.5;
    options.pacerType = kSpeed;
    metronome.Start();
    metronome.SetData(10, 8.0);  // 8 m in 5 s: 5.76 km/h
    EXPECT_FALSE(metronome.IsRunning());
    metronome.SetData(10, 7.5);  // 5.4 km/h, slower than 5.5
    EXPECT_TRUE(metronome.IsRunning());

    options.pacerPace = 10.0;
    options.pacerDiffPace = 1.0;
    options.pacerType = kPace;
    metronome.SetData(10, 8.0);  // 5.76 km/h is 10.4 min/km
    EXPECT_FALSE(metronome.IsRunning());
    metronome.SetData(10, 0.0);  // steps but no distance: an endless pace
    EXPECT_TRUE(metronome.IsRunning());
}

TEST_F(MetronomeTest, StandingStillSilencesThePacerWhenSoSet) {
    options.pacerOffOnStanding = true;
    options.pacerFrequency = 100;
    options.pacerType = kRate;
    metronome.Start();
    EXPECT_TRUE(metronome.IsEnabled());
    EXPECT_FALSE(metronome.IsRunning()) << "a start is a span without steps";

    metronome.SetData(8, 6.0);
    EXPECT_TRUE(metronome.IsRunning());
    EXPECT_EQ(metronome.GetInterval(), 600);
    metronome.SetData(0, 0.0);
    EXPECT_FALSE(metronome.IsRunning());

    options.pacerOffOnStanding = false;
    metronome.Update();
    EXPECT_TRUE(metronome.IsRunning());
}

TEST_F(MetronomeTest, StopSilencesUntilTheNextStartAndKeepsTheThreadIdle) {
    options.pacerFrequency = 120;
    options.pacerType = kRate;
    metronome.Start();
    ASSERT_TRUE(metronome.HasThread());

    metronome.Stop();
    EXPECT_FALSE(metronome.IsEnabled());
    EXPECT_FALSE(metronome.IsRunning());
    EXPECT_TRUE(metronome.HasThread());
    EXPECT_EQ(metronome.GetRuntime(), 0);

    metronome.SetData(10, 7.0);
    EXPECT_FALSE(metronome.IsRunning());
    metronome.Start();
    EXPECT_EQ(metronome.GetRuntime(), 500);
}

TEST_F(MetronomeTest, NoThreadUntilTheFirstBeatAndNoneAfterShutdown) {
    Metronome idle;
    EXPECT_FALSE(idle.IsEnabled());
    idle.Update();
    EXPECT_FALSE(idle.HasThread());
    idle.Shutdown();
    options.pacerType = kRate;
    idle.Start();
    EXPECT_FALSE(idle.HasThread());
    EXPECT_FALSE(idle.IsRunning());
}

// A target that is not a number gives no interval, nor does a shut-down pacer; a beat of the
// one-shot timer sounds once and re-arms only with an interval.
TEST_F(MetronomeTest, NoIntervalFromNotANumberOrAfterShutdownAndATimerBeatSoundsOnce) {
    options.pacerSpeed = std::nan("");
    EXPECT_EQ(IntervalIn(kSpeed), 0);
    options.pacerFrequency = 120;
    EXPECT_EQ(IntervalIn(kRate), 500);
    metronome.Shutdown();
    EXPECT_EQ(metronome.GetInterval(), 0);
    // A beat the thread handed over before it stopped (through the sound manager's
    // eventfd) is delivered now, not to the fake.
    QCoreApplication::processEvents();

    FakeSounds log;
    log.endsAtOnce = true;  // so that a second beat would sound too
    metronome.OnTimerExpired();
    for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
    EXPECT_EQ(log.Plays(QStringLiteral("Pop1.wav")), 1);
}

}  // namespace
