#pragma once

#include <atomic>

// The user's settings: sounds, display, pacer and alarm (the rows of SOUNDS and
// SCREEN in the settings database).
//
// GetInstance() is the application's one settings record. Screens change a field and
// then save the whole record with PedometerDBManager::SaveOptions(). The sensor,
// updater, metronome and GUI threads all read it, so every field is atomic: reads
// and writes of one field are safe from any thread (use load()/store() or plain
// assignment). Nothing makes several fields change together; no reader needs that.
//
// Until LoadOptions() runs, the fields hold the same defaults as the shipped seed
// database, so the application behaves sensibly even when the settings database
// cannot be opened. Other instances are plain records (tests, tools).
class PedometerOptions {
public:
    static PedometerOptions& GetInstance();

    PedometerOptions() { RestoreDefaults(); }
    virtual ~PedometerOptions() = default;
    PedometerOptions(const PedometerOptions&) = delete;
    PedometerOptions& operator=(const PedometerOptions&) = delete;

    // Sets every field to the defaults of a fresh installation.
    void RestoreDefaults();

    std::atomic<bool> soundSteps;
    std::atomic<bool> soundButtons;
    std::atomic<bool> soundStart;
    std::atomic<bool> soundCountdown;
    std::atomic<bool> soundMetronome;
    std::atomic<bool> firstStart;
    std::atomic<bool> measurementSystem;  // true: miles for display and entry
    std::atomic<bool> showBmi;
    std::atomic<bool> paceInsteadOfSpeed;
    std::atomic<int> countDownTime;  // seconds: 5, or 0 for no countdown
    std::atomic<int> mainValues;
    std::atomic<int> mainGraphic;
    std::atomic<int> pacerType;  // 0 off, 1 speed, 2 pace, 3 step rate
    std::atomic<bool> pacerDiff;
    std::atomic<bool> pacerOffOnStanding;
    std::atomic<double> pacerSpeed;   // km/h
    std::atomic<double> pacerPace;    // min/km
    std::atomic<int> pacerFrequency;  // steps/min
    std::atomic<double> pacerDiffSpeed;
    std::atomic<double> pacerDiffPace;
    std::atomic<int> pacerDiffFrequency;
    std::atomic<int> sygnalType;
    std::atomic<int> sygnalCalories;     // kcal
    std::atomic<double> sygnalDistance;  // km
    std::atomic<int> sygnalActivity;     // minutes
    std::atomic<int> sygnalSteps;
    std::atomic<bool> startOnBlock;
};
