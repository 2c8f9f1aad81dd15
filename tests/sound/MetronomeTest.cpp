#include "Metronome.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <cstdlib>

#include "Body.h"
#include "FakeSoundPlayer.h"
#include "PedometerOptions.h"
#include "TestData.h"

namespace {

enum { kSpeed = 1, kPace = 2, kRate = 3 };

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

// The beat interval of each mode (tests/data/pacer-intervals.tsv), recomputed on every
// update; a zero or not-a-number target or the mode off is silent, and an unknown mode
// changes nothing.
TEST_F(MetronomeTest, EachModeBeatsAtTheIntervalOfItsTarget) {
    options.pacerType = kRate;
    metronome.Start();
    for (const QByteArrayList& c : testdata::Table("pacer-intervals.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        options.pacerType = c[0].toInt();
        options.pacerFrequency = c[1].toInt();
        options.pacerSpeed = std::strtod(c[2].constData(), nullptr);  // "nan" too
        options.pacerPace = c[3].toDouble();
        metronome.Update();
        EXPECT_EQ(metronome.GetInterval(), c[4].toInt());
        EXPECT_EQ(metronome.GetRuntime(), c[4].toInt());
        if (c[2] != "nan") {
            EXPECT_EQ(metronome.IsRunning(), c[4].toInt() > 0);
        }
    }
    options.pacerType = kSpeed;
    options.pacerSpeed = 6.0;
    EXPECT_EQ(IntervalIn(kSpeed), 450) << "a start computes it too";
    metronome.CancelTimer();
    EXPECT_FALSE(metronome.IsRunning());
    metronome.StartTimer();
    EXPECT_TRUE(metronome.IsRunning());
}

// "Only if it differs" beats outside the band around the target (rate, speed or pace of each
// five-second span, tests/data/pacer-bands.tsv) and is silent on its edges.
TEST_F(MetronomeTest, OnlyIfDiffersBeatsOutsideTheBandOfTheTarget) {
    options.pacerDiff = true;
    options.pacerType = kRate;
    metronome.Start();
    for (const QByteArrayList& c : testdata::Table("pacer-bands.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        const double target = c[1].toDouble(), band = c[2].toDouble();
        options.pacerType = c[0].toInt();
        options.pacerFrequency = int(target);
        options.pacerDiffFrequency = int(band);
        options.pacerSpeed = options.pacerPace = target;
        options.pacerDiffSpeed = options.pacerDiffPace = band;
        metronome.SetData(c[3].toInt(), c[4].toDouble());
        EXPECT_EQ(metronome.IsRunning(), c[5] == "1");
        if (c.size() > 6) {
            EXPECT_EQ(metronome.GetInterval(), c[6].toInt());
        }
    }
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

// A shut-down pacer gives no interval; a beat of the one-shot timer sounds once and re-arms
// only with an interval.
TEST_F(MetronomeTest, NoIntervalAfterShutdownAndATimerBeatSoundsOnce) {
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
