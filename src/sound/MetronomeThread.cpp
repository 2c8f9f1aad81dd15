#include "MetronomeThread.h"

#include <chrono>

MetronomeThread::MetronomeThread(std::function<void()> beat) : beat(std::move(beat)) {}

MetronomeThread::~MetronomeThread() {
    Stop();
}

void MetronomeThread::Init(int firstRuntime) {
    runtime = firstRuntime;
    if (!worker.joinable()) worker = std::thread([this] { Run(); });
}

void MetronomeThread::Stop() {
    {
        std::lock_guard lock(sleepMutex);
        stopping = true;
    }
    wake.notify_all();
    if (worker.joinable()) worker.join();
}

void MetronomeThread::Run() {
    std::unique_lock lock(sleepMutex);
    while (!stopping) {
        const int sleepMs = runtime.load();
        if (sleepMs > 0) {
            lock.unlock();
            beat();
            lock.lock();
        }
        const int waitMs = sleepMs > 0 ? sleepMs : kIdleMs;
        wake.wait_for(lock, std::chrono::milliseconds(waitMs), [this] { return stopping; });
    }
}
