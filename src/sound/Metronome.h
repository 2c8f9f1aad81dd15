#pragma once

#include <memory>
#include <mutex>

#include "MetronomeThread.h"
#include "Timer.h"

// The pacer: while a recording runs it beats at the cadence that would carry the user
// at the target speed, pace or step rate of the settings, optionally only while the
// latest five-second span is outside the tolerance band around the target.
//
// Modes (PedometerOptions::pacerType): 0 off, 1 speed (km/h), 2 pace (min/km),
// 3 step rate (steps/min). The step length for speed and pace comes from the stored
// target speed: below 7.4 km/h walking, below 9.66 jogging, else running.
//
// Threads: Start() and Stop() come from the GUI thread, SetData() from the updater
// thread, Update() from both (the pacer screen re-evaluates after every change), so
// every call takes one mutex. The beats come from MetronomeThread, which only reads
// its own atomic `runtime`.
class Metronome {
public:
    // The application's pacer, made on the first call and stopped when the
    // QCoreApplication goes away.
    static Metronome& GetInstance();

    // A stopped pacer; the application uses GetInstance(), tests make their own.
    Metronome();
    ~Metronome();
    Metronome(const Metronome&) = delete;
    Metronome& operator=(const Metronome&) = delete;

    // A recording starts: forget the last span and evaluate.
    void Start();
    // A recording stops: silent until the next Start().
    void Stop();
    // The latest five-second span: steps counted and metres covered.
    void SetData(int steps, double distance);
    // Re-evaluates the beat from the settings and the latest span.
    void Update();

    // Beats every `interval` ms, making the beat thread on first use.
    void StartTimer();
    // Silences the beat; the thread stays and idles.
    void CancelTimer();
    // One beat, re-armed with the interval. Nothing arms the timer today: the beats
    // come from the thread.
    void OnTimerExpired();

    // Ends the beat thread for good, promptly; for application exit.
    void Shutdown();

    bool IsEnabled() const;
    bool IsRunning() const;
    // Milliseconds between beats; 0 when silent.
    int GetInterval() const;
    // The beat thread's sleep; 0 when it idles or does not exist yet.
    int GetRuntime() const;
    bool HasThread() const;

private:
    void UpdateLocked();
    void StartTimerLocked();
    void CancelTimerLocked();

    mutable std::mutex mutex;
    std::unique_ptr<MetronomeThread> thread;
    bool running = false;
    int interval = 0;
    int steps = 0;
    double distance = 0.0;
    bool enabled = false;
    bool shutDown = false;
    Timer timer;
};
