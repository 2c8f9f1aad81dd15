#include "StatisticsManager.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTemporaryDir>
#include <atomic>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "../storage/StorageTestSupport.h"
#include "AccelerometerSource.h"
#include "AppPaths.h"
#include "Body.h"
#include "Clock.h"
#include "DAOLap.h"
#include "FakeSoundPlayer.h"
#include "FreshProfile.h"
#include "MainFormListener.h"
#include "Metronome.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "QuorPedometer.h"
#include "SoundsManager.h"
#include "Sygnal.h"
#include "TestData.h"
#include "UpdaterThread.h"
#include "VirtualTime.h"

namespace {

// Records what the counting side tells the main screen.
class RecordingForm : public MainFormListener {
public:
    void RequestStepsUpdate(int lapSteps) override { lastRequested = lapSteps; }
    void UpdateStepsCount(int lapSteps) override {
        std::lock_guard lock(mutex);
        stepCounts.push_back(lapSteps);
    }
    void UpdateData(const DAOLap* lap) override {
        std::lock_guard lock(mutex);
        ++dataUpdates;
        if (lap != nullptr) lastSeconds = lap->CopySeconds().size();
    }
    void SygnalFired() override { ++fired; }

    std::mutex mutex;
    std::vector<int> stepCounts;
    int dataUpdates = 0;
    std::size_t lastSeconds = 0;
    std::atomic<int> lastRequested{0};
    std::atomic<int> fired{0};
};

class StatisticsManagerTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(profile.IsValid()); }
    void TearDown() override { manager.reset(); }

    StatisticsManager& makeManager(std::function<void(int, const DAOLapSeconds&)> observer = {}) {
        manager = std::make_unique<StatisticsManager>();
        manager->UseSensorSource(nullptr);
        manager->mainForm = &form;
        if (observer) manager->SetIntervalObserver(std::move(observer));
        manager->Initialize();
        return *manager;
    }
    // Moves virtual time on and waits until the updater has stored every hand-over.
    void advanceSeconds(int seconds) {
        VirtualTime::AdvanceBy(seconds * 1000LL);
        manager->GetUpdaterThread()->WaitUntilIdle();
    }
    // The rows stored for today's last lap.
    template <class Row>
    static std::vector<Row> stored(std::vector<std::unique_ptr<Row>> DAOLap::*rows) {
        auto lap = PedometerDBManager::GetInstance().GetTodayLastLap();
        std::vector<Row> out;
        for (std::size_t i = 0; lap && i < ((*lap).*rows).size(); ++i) out.push_back(*((*lap).*rows)[i]);
        return out;
    }
    static std::vector<DAOLapMinutes> storedMinutes() { return stored(&DAOLap::minutes); }
    static std::vector<DAOLapSeconds> storedSeconds() { return stored(&DAOLap::seconds); }

    FreshProfile profile;
    RecordingForm form;
    std::unique_ptr<StatisticsManager> manager;
};

// The goal alarm hears of each stored interval too, with the calories stored for it.
TEST_F(StatisticsManagerTest, AnIntervalNeedsFiveTicksOfCountingTime) {
    std::vector<int> observed;  // the steps of each stored interval, as the observer hears
    PedometerOptions::GetInstance().sygnalCalories = 1000;
    PedometerOptions::GetInstance().sygnalType = 4;  // calories, running
    StatisticsManager& m =
        makeManager([&](int, const DAOLapSeconds& s) { observed.push_back(s.steps); });
    m.start();
    m.addStep(1);
    advanceSeconds(4);
    m.stop();
    advanceSeconds(10);  // stopped: no ticks, nothing handed over
    EXPECT_TRUE(storedSeconds().empty());

    m.start();
    advanceSeconds(1);  // the fifth tick of counting time hands the whole interval over
    const auto seconds = storedSeconds();
    ASSERT_EQ(seconds.size(), 1u);
    EXPECT_EQ(seconds[0].currentSecond, 5);
    EXPECT_EQ(seconds[0].steps, 1);
    EXPECT_NEAR(seconds[0].distance, Body::GetInstance().getWalkStepSize(), 1e-9);
    advanceSeconds(5);  // a still interval starts from nothing
    EXPECT_EQ(storedSeconds().back().distance, 0.0);
    EXPECT_EQ(observed, (std::vector<int>{1, 0}));
    double calories = 0.0;
    for (const DAOLapSeconds& interval : storedSeconds()) calories += interval.calories;
    EXPECT_GT(calories, 0.0);
    EXPECT_NEAR(PedometerDBManager::GetInstance().GetTodaySygnal().calories, calories, 1e-9);
    PedometerOptions::GetInstance().RestoreDefaults();
}

// Each stored interval reaches the pacer: its steps switch the beat on while walking, and
// its metres give the speed the beat is measured against.
TEST_F(StatisticsManagerTest, EachIntervalReachesThePacer) {
    PedometerOptions& options = PedometerOptions::GetInstance();
    FakeSounds sounds;
    options.pacerType = 1;     // speed
    options.pacerSpeed = 0.5;  // km/h: one walking step in five seconds
    options.pacerDiff = true;  // beat only off the target
    options.pacerDiffSpeed = 0.2;
    options.pacerOffOnStanding = true;
    Metronome& pacer = Metronome::GetInstance();
    pacer.Start();
    StatisticsManager& m = makeManager();
    m.start();
    m.addStep(1);
    advanceSeconds(5);
    EXPECT_FALSE(pacer.IsRunning()) << "on target";
    options.pacerDiff = false;  // beat whenever walking
    m.addStep(1);
    advanceSeconds(5);
    EXPECT_TRUE(pacer.IsRunning());
    advanceSeconds(5);
    EXPECT_FALSE(pacer.IsRunning()) << "standing";
    pacer.Stop();
    options.RestoreDefaults();
}

// Before a sleep the interval in progress is stored at once, and the next one starts
// afresh: nothing is stored twice.
TEST_F(StatisticsManagerTest, WritesTheIntervalInProgressBeforeSleep) {
    StatisticsManager& m = makeManager();
    const int shown = form.dataUpdates;
    m.start();
    EXPECT_GT(form.dataUpdates, shown);  // the main screen shows the lap at once
    EXPECT_TRUE(manager->Detector()->IsUpdating());
    m.WriteBeforeSleep();  // nothing counted yet
    EXPECT_TRUE(storedSeconds().empty());
    m.addStep(1);
    m.WriteBeforeSleep();  // a step before the first tick is stored too
    ASSERT_EQ(storedSeconds().size(), 1u);
    m.addStep(1);
    m.addStep(1);
    VirtualTime::AdvanceBy(2500);  // half-way through a tick
    m.WriteBeforeSleep();
    ASSERT_EQ(storedSeconds().size(), 2u);
    EXPECT_EQ(storedSeconds()[1].steps, 2);
    VirtualTime::AdvanceBy(4500);
    manager->GetUpdaterThread()->WaitUntilIdle();
    EXPECT_EQ(storedSeconds().size(), 2u);  // the next interval needs five whole ticks
    VirtualTime::AdvanceBy(500);
    manager->GetUpdaterThread()->WaitUntilIdle();
    ASSERT_EQ(storedSeconds().size(), 3u);
    EXPECT_EQ(storedSeconds()[2].steps, 0);
    VirtualTime::AdvanceBy(1000);  // one tick without a step: its time is stored too
    m.WriteBeforeSleep();
    EXPECT_EQ(storedSeconds().size(), 4u);
    m.stop();  // the detector stops counting too
    EXPECT_FALSE(manager->Detector()->IsUpdating());
}

// A step of an unknown gait counts without distance; the first interval starts the first
// minute, the twelfth completes it.
TEST_F(StatisticsManagerTest, FirstMinuteAndTwelfthHandOver) {
    StatisticsManager& m = makeManager();
    m.start();
    m.addStep(7);
    m.addStep(3);
    EXPECT_EQ(m.GetLapSteps(), 2);
    EXPECT_EQ(form.lastRequested.load(), 2);
    advanceSeconds(5);
    auto minutes = storedMinutes();
    ASSERT_EQ(minutes.size(), 1u);
    EXPECT_EQ(minutes[0].lapMinute, 1);
    EXPECT_EQ(minutes[0].secondsCompleted, 5);
    EXPECT_EQ(storedSeconds().at(0).steps, 2);
    EXPECT_NEAR(storedSeconds().at(0).distance, Body::GetInstance().getRunStepSize(), 1e-9);

    advanceSeconds(55);  // twelve hand-overs in all: minute 1 is complete
    minutes = storedMinutes();
    ASSERT_EQ(minutes.size(), 2u);
    EXPECT_EQ(minutes[0].secondsCompleted, 60);
    EXPECT_EQ(minutes[0].steps, 2);
    EXPECT_NEAR(minutes[0].distance, Body::GetInstance().getRunStepSize(), 1e-9);
    EXPECT_EQ(minutes[1].lapMinute, 2);
    EXPECT_EQ(minutes[1].secondsCompleted, 0);
    const auto seconds = storedSeconds();
    ASSERT_EQ(seconds.size(), 12u);
    EXPECT_EQ(seconds.back().currentSecond, 60);
    EXPECT_EQ(form.lastSeconds, 12u);

    // Standing still burns resting calories, recomputed from the minute's average speed.
    const double expected =
        Body::GetInstance().calculateCalories(static_cast<float>(minutes[0].distance / 60.0 * 3.6));
    EXPECT_NEAR(minutes[0].calories, expected, 1e-9);
}

// STOP hands over the interval in progress, be it one tick without a step or one step
// before the first tick.
TEST_F(StatisticsManagerTest, StopStoresTheIntervalInProgress) {
    for (const bool tick : {true, false}) {
        StatisticsManager& m = makeManager();
        const size_t before = storedSeconds().size();
        m.start();
        if (tick) {
            advanceSeconds(1);
        } else {
            m.addStep(1);
        }
        m.HandOverAndStop();
        manager->GetUpdaterThread()->WaitUntilIdle();
        EXPECT_EQ(storedSeconds().size(), before + 1) << tick;
        manager.reset();
    }
}

// Each interval's calories are a twelfth of the rate of its speed, and its noise within 0.1 %
// to 10 % above the rate. STOP a second later: the short last interval lowers the minute's
// average speed, but the calories shown before STOP are never taken back.
TEST_F(StatisticsManagerTest, CaloriesPerIntervalAndStoppingNeverTakesThemBack) {
    StatisticsManager& m = makeManager();
    m.start();
    for (int i = 0; i < 48; ++i) {  // four minutes
        for (int s = 0; s < 3; ++s) m.addStep(1);
        advanceSeconds(5);
    }
    const double rate = Body::GetInstance().calculateCalories(
        static_cast<float>(3 * Body::GetInstance().getWalkStepSize() / 5.0 * 3.6));
    const auto seconds = storedSeconds();
    ASSERT_EQ(seconds.size(), 48u);
    for (const DAOLapSeconds& s : seconds) {
        EXPECT_GE(s.caloriesNoise, rate * 1.001 - 1e-12);
        EXPECT_LE(s.caloriesNoise, rate * 1.1 + 1e-12);
        EXPECT_NEAR(s.calories, rate / 12.0, 1e-12);
    }
    for (int i = 0; i < 14; ++i) m.addStep(3);  // running through the fifth minute's first interval
    advanceSeconds(5);
    const double before = storedMinutes().back().calories;
    advanceSeconds(1);
    m.HandOverAndStop();
    m.GetUpdaterThread()->WaitUntilIdle();
    EXPECT_GE(storedMinutes().back().calories, before);
}

TEST_F(StatisticsManagerTest, RestartResumesTodaysLapAndANewDayStartsAfresh) {
    int lapId = -1;
    {
        StatisticsManager& m = makeManager();
        lapId = m.GetCurrentLap()->id;
        m.start();
        for (int i = 0; i < 7; ++i) m.addStep(2);
        advanceSeconds(10);
        for (int i = 0; i < 3; ++i) m.addStep(1);  // unfinished interval: not stored
        advanceSeconds(2);
        manager.reset();
    }
    StatisticsManager& again = makeManager();
    EXPECT_EQ(again.GetCurrentLap()->id, lapId);
    EXPECT_EQ(again.GetLapSteps(), 7);
    ASSERT_FALSE(form.stepCounts.empty());
    EXPECT_EQ(form.stepCounts.back(), 7);

    manager.reset();
    VirtualTime::AdvanceBy(24 * 3600 * 1000LL);
    StatisticsManager& nextDay = makeManager();  // a new lap, and yesterday's records go
    EXPECT_NE(nextDay.GetCurrentLap()->id, lapId);
    EXPECT_EQ(nextDay.GetLapSteps(), 0);
    DAOLap yesterday;
    yesterday.id = lapId;
    PedometerDBManager::GetInstance().GetSecondsForLap(yesterday);
    EXPECT_TRUE(yesterday.seconds.empty());
}

// A lap of today that has an end (an imported walk, say) is left closed: counting starts
// a new lap instead of adding minutes to it.
TEST_F(StatisticsManagerTest, AClosedLapOfTodayIsNeverResumed) {
    std::vector<std::unique_ptr<DAOLap>> laps;
    laps.push_back(storagetest::MakeLap(Clock::Now().addSecs(-3600), 10));
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    ASSERT_TRUE(db.ImportHistory(laps, {}));
    const int closed = db.GetTodayLastLap()->id;
    EXPECT_NE(makeManager().GetCurrentLap()->id, closed);
    EXPECT_FALSE(db.GetTodayLastLap()->endDate) << "the new lap is the open one";
}

TEST_F(StatisticsManagerTest, ClearKeepsTheLapAndNewLapFinishesIt) {
    StatisticsManager& m = makeManager();
    const int firstId = m.GetCurrentLap()->id;
    m.start();
    m.addStep(1);
    advanceSeconds(5);
    const int shown = form.dataUpdates;
    m.ClearCurrentLap();
    EXPECT_GT(form.dataUpdates, shown);  // the main screen shows the cleared lap
    EXPECT_EQ(m.GetCurrentLap()->id, firstId);
    EXPECT_EQ(m.GetLapSteps(), 0);
    EXPECT_TRUE(storedMinutes().empty());
    EXPECT_TRUE(storedSeconds().empty());
    EXPECT_TRUE(m.GetCurrentLap()->CopyMinutes().empty());
    advanceSeconds(4);  // the cleared lap goes on from nothing: five ticks, no distance
    EXPECT_TRUE(storedSeconds().empty());
    advanceSeconds(1);
    EXPECT_EQ(storedSeconds().back().distance, 0.0);

    m.addStep(1);
    const std::size_t told = form.stepCounts.size();
    const int updates = form.dataUpdates;
    m.StartNewLap();
    EXPECT_EQ(m.GetLapSteps(), 0);
    EXPECT_EQ(form.stepCounts.size(), told + 1) << "the main screen hears of the new lap";
    EXPECT_EQ(form.dataUpdates, updates + 1);
    const int secondId = m.GetCurrentLap()->id;
    EXPECT_NE(secondId, firstId);
    const auto laps = PedometerDBManager::GetInstance().GetLapsForDate(Clock::TodayStart());
    ASSERT_EQ(laps.size(), 2u);
    EXPECT_TRUE(laps[0]->endDate.has_value());
    EXPECT_FALSE(laps[1]->endDate.has_value());
    PedometerDBManager::GetInstance().GetSecondsForLap(*laps[0]);
    EXPECT_TRUE(laps[0]->seconds.empty()) << "five-second records are kept for the recording lap";
    advanceSeconds(5);  // the step taken before the new lap is not counted in it
    EXPECT_EQ(storedSeconds().back().steps, 0);
}

// A running alarm completes on the slot that reaches its goal, into its own completed
// state, says so once (for the listeners), saves the state and stores nothing more; a stopped
// alarm stores nothing.
TEST_F(StatisticsManagerTest, AlarmsCompleteOnTheSlotThatReachesTheirGoal) {
    PedometerOptions& options = PedometerOptions::GetInstance();
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    options.sygnalCalories = 10;
    options.sygnalDistance = 1.0;  // km
    options.sygnalActivity = 5;    // minutes
    options.sygnalSteps = 30;
    FakeSounds sounds;
    int alarm = 0;
    for (const QByteArrayList& row : testdata::Table("alarm-goals.tsv")) {
        const int running = row[0].toInt(), completed = row[1].toInt(), slots = row[2].toInt();
        const double kcal = row[3].toDouble(), metres = row[4].toDouble();
        SCOPED_TRACE(row.join(' ').toStdString());
        db.ClearSygnals();
        options.sygnalType = running;
        int completions = 0;
        for (int i = 1; i < slots; ++i) completions += Sygnal::AddValues(kcal, 5, metres, 10);
        EXPECT_EQ(options.sygnalType.load(), running);
        completions += Sygnal::AddValues(kcal, 5, metres, 10);
        EXPECT_EQ(options.sygnalType.load(), completed);
        EXPECT_EQ(completions, 1);
        QCoreApplication::processEvents();
        EXPECT_EQ(sounds.Plays(QStringLiteral("stopwatch.wav")), ++alarm);
        EXPECT_FALSE(Sygnal::AddValues(kcal, 5, metres));  // a completed alarm stays quiet
        const DAOSygnal progress = db.GetTodaySygnal();
        EXPECT_EQ(progress.activityTime, slots * 5);
        EXPECT_DOUBLE_EQ(progress.calories, slots * kcal);
        EXPECT_NEAR(progress.distance, slots * metres / 1000, 1e-9);
        EXPECT_EQ(progress.steps, slots * 10);
        PedometerOptions reloaded;
        db.LoadOptions(reloaded);
        EXPECT_EQ(reloaded.sygnalType.load(), completed);
    }
    db.ClearSygnals();
    options.sygnalType = 3;  // activity, stopped
    EXPECT_FALSE(Sygnal::AddValues(1.0, 5, 1.0));
    EXPECT_EQ(db.GetTodaySygnal().activityTime, 0);
}

// Steps arrive on a sensor thread while the GUI thread ticks and the updater thread
// stores: every step lands in exactly one interval. Run under the thread sanitizer.
TEST_F(StatisticsManagerTest, StepsFromTheSensorThreadAreNeverLost) {
    StatisticsManager& m = makeManager();
    m.start();
    constexpr int kSteps = 20000;
    std::atomic<bool> done{false};
    std::thread sensor([&] {
        for (int i = 0; i < kSteps; ++i) m.addStep(1 + i % 3);
        done = true;
    });
    while (!done) advanceSeconds(1);
    sensor.join();
    advanceSeconds(5);
    m.stop();
    int stored = 0;
    for (const DAOLapSeconds& s : storedSeconds()) stored += s.steps;
    EXPECT_EQ(m.GetLapSteps(), kSteps);
    EXPECT_EQ(stored, kSteps);
}

// Nothing waits forever on an updater that has stopped, and one destroyed while it runs
// stops its thread first.
TEST(UpdaterThreadTest, AStoppedOrDestroyedUpdaterNeverHoldsItsCaller) {
    UpdaterThread stopped;
    stopped.Start();
    stopped.Stop();
    stopped.Post({});
    stopped.WaitUntilIdle();
    UpdaterThread running;
    running.Start();
}

}  // namespace
