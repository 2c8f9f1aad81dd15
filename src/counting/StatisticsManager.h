#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

#include "StepReceiver.h"

class AccelerometerSource;
class DAOLap;
class DAOLapSeconds;
class MainFormListener;
class QuorPedometer;
class SleepInhibitor;
class Timer;
class UpdaterThread;

// Owns the counting: the step detector, the updater thread and the current lap.
//
// Steps arrive from the detector on the sensor thread and add to the interval
// counters. A one-second timer on the GUI thread hands the accumulated interval to
// the updater thread on every fifth tick (user event 0); the interval is always
// treated as exactly five seconds of counting time, so a stop in the middle of one
// leaves it open until counting resumes. Today's last lap is resumed at start-up,
// its step count rebuilt from its stored five-second records.
//
// Threads: addStep runs on the sensor thread, everything else on the GUI thread. The
// counters are atomic and an interval is taken with an atomic exchange, so a step
// landing during the hand-over is never lost.
class StatisticsManager : public StepReceiver {
public:
    StatisticsManager();
    ~StatisticsManager() override;
    StatisticsManager(const StatisticsManager&) = delete;
    StatisticsManager& operator=(const StatisticsManager&) = delete;

    // Counts from `source` instead of the accelerometer picked for this machine; null
    // means no accelerometer (steps then come only through the detector's
    // OnDataReceived, as in a headless replay). Call before Initialize.
    void UseSensorSource(std::unique_ptr<AccelerometerSource> source);

    // Told about every stored five-second record, on the updater thread. Call before
    // Initialize.
    void SetIntervalObserver(std::function<void(int lapId, const DAOLapSeconds&)> observer) {
        intervalObserver_ = std::move(observer);
    }

    // Whether the managers made from now on keep the system awake while counting
    // (SleepInhibitor::ForThisSystem). Off by default, so tests and tools never touch
    // the machine's power management; the application turns it on.
    static void GuardSleepWhileCounting(bool on);

    void Initialize();
    // Counting starts: the system may not suspend without letting the interval be
    // written first, nor at all when ScreenOffCounting is on. stop() lifts both.
    void start();
    void stop();

    // The system is about to sleep: the interval in progress is handed over now (as
    // a whole interval, so no step waits in memory across the sleep) and stored
    // before this returns. The next interval starts afresh; the time asleep adds
    // nothing, as the counting time only moves with the one-second ticks.
    void WriteBeforeSleep();
    // The application is leaving: counting stops, and the steps of the interval in
    // progress (counting or stopped in the middle of one) are handed over as an interval
    // of their own, so that every counted step is stored. Returns at once; the updater
    // writes it (UpdaterThread::WaitUntilIdle).
    void HandOverAndStop();
    // Back from sleep: the accelerometer is opened anew at its next reading.
    void OnResumed();
    bool GetStarted() const { return started.load(); }

    // Sensor thread: one accepted step of the given gait (1 walk, 2 jog, 3 run).
    void addStep(int gait) override;

    // The one-second tick; every fifth hands the interval over.
    void OnTimerExpired();
    void UpdateUI();

    void StartNewLap();
    void ClearCurrentLap();
    void WillClearData();
    void ForceMainScreenUpdate();

    int GetLapSteps() const { return lapSteps.load(); }
    // The open lap; null after WillClearData. Its lists are read under its lock.
    std::shared_ptr<DAOLap> GetCurrentLap() const { return currentLap; }
    UpdaterThread* GetUpdaterThread() const { return updaterThread.get(); }

    // The detector this manager counts with; null before Initialize.
    QuorPedometer* Detector() const { return engine_.get(); }

    // Hears of steps, intervals and the goal alarm (CountingEngine points it at all its
    // listeners). Set before Initialize.
    MainFormListener* mainForm = nullptr;

private:
    void ClearLapRecords();

    std::shared_ptr<DAOLap> currentLap;
    std::atomic<bool> started{false};
    std::atomic<int> lapSteps{0};
    std::atomic<int> intervalSteps{0};
    std::atomic<double> intervalDistance{0.0};
    int secondTicks = 0;
    std::unique_ptr<Timer> timer;
    std::unique_ptr<UpdaterThread> updaterThread;
    std::unique_ptr<QuorPedometer> engine_;
    std::optional<std::unique_ptr<AccelerometerSource>> sensorSource_;
    std::function<void(int, const DAOLapSeconds&)> intervalObserver_;
    std::unique_ptr<SleepInhibitor> sleepInhibitor_;
};
