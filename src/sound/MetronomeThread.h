#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

// The pacer's beat thread: plays a beat, sleeps `runtime` milliseconds, and again;
// while `runtime` is 0 or less it is silent and looks again every second.
//
// A new `runtime` takes effect after the current sleep, so a pacer switched on from
// silence starts within a second, and a new thread beats at once. Stop() wakes the
// thread from any sleep, so shutting down never waits for a beat.
class MetronomeThread {
public:
    static constexpr int kIdleMs = 1000;

    // `beat` runs on this thread; it must return quickly (it hands the sound over).
    explicit MetronomeThread(std::function<void()> beat);
    ~MetronomeThread();
    MetronomeThread(const MetronomeThread&) = delete;
    MetronomeThread& operator=(const MetronomeThread&) = delete;

    // Sets the first sleep and starts the thread.
    void Init(int runtime);
    // Any thread.
    void SetRuntime(int ms) { runtime.store(ms); }
    int GetRuntime() const { return runtime.load(); }
    // Ends the thread and waits for it; safe to call twice.
    void Stop();

private:
    void Run();

    std::function<void()> beat;
    std::atomic<int> runtime{0};
    std::mutex sleepMutex;
    std::condition_variable wake;
    bool stopping = false;  // guarded by sleepMutex
    std::thread worker;
};
