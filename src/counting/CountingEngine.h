#pragma once

#include <functional>
#include <memory>

#include "CountingListeners.h"
#include "StatisticsManager.h"

class AccelerometerSource;
class DAOLapSeconds;
class QuorPedometer;

// The counting engine of the application: the statistics manager with the step
// detector, the accelerometer source and the updater thread it owns, and the listeners
// that hear what it counts. The application object makes one at start-up and hands it
// by reference to the screens that need it; the main screen is one listener among
// others, so counting goes on with no screen at all.
//
// Set-up (UseSensorSource, SetIntervalObserver) comes before Initialize, which reads
// the settings and body profile and resumes today's lap: load them first. GUI thread,
// but for the listeners' calls (see CountingListeners).
class CountingEngine {
public:
    CountingEngine();
    ~CountingEngine();
    CountingEngine(const CountingEngine&) = delete;
    CountingEngine& operator=(const CountingEngine&) = delete;

    // Counts from `source` instead of the accelerometer picked for this machine; null
    // means none (steps then come only through the detector's OnDataReceived).
    void UseSensorSource(std::unique_ptr<AccelerometerSource> source);
    // Told about every stored five-second record, on the updater thread.
    void SetIntervalObserver(std::function<void(int lapId, const DAOLapSeconds&)> observer);
    void Initialize();
    bool IsInitialized() const { return initialized_; }

    StatisticsManager& Statistics() { return statistics_; }
    const StatisticsManager& Statistics() const { return statistics_; }
    // The detector; valid after Initialize.
    QuorPedometer& Detector() const;

    // The application is leaving: counting stops and what was counted since the last
    // stored interval is written. Waits at most `ms` milliseconds for the write; false
    // when it had not landed by then (it still lands before the engine is destroyed).
    bool StoreAndStop(int ms = 1000);

    // `listener` hears of every step, interval and goal until removed; see
    // CountingListeners for the threads.
    void AddListener(MainFormListener& listener) { listeners_.Add(listener); }
    void RemoveListener(MainFormListener& listener) { listeners_.Remove(listener); }

private:
    CountingListeners listeners_;  // outlives the manager, which calls it
    StatisticsManager statistics_;
    bool initialized_ = false;
};
