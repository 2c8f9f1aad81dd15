#pragma once

#include <functional>
#include <memory>
#include <thread>

class QSocketNotifier;

// Runs a function on the thread that created this object whenever another thread asks.
//
// The metronome's beat thread uses it to hand each beat to the GUI thread, where the
// sound players live. Requests that arrive before the function has run fold into one
// call, so a GUI thread that falls behind drops late beats instead of queueing them.
//
// The hand-over is an eventfd watched by a QSocketNotifier in the owner's event loop.
// A queued Qt call would do the same job, but it allocates the call on one thread and
// frees it on the other inside an uninstrumented Qt, which a thread-sanitizer build
// reports as a race; a write to an eventfd is synchronisation the sanitizer knows.
// Requires a running QCoreApplication; without one, Trigger() does nothing.
class CrossThreadTrigger {
public:
    explicit CrossThreadTrigger(std::function<void()> onTriggered);
    ~CrossThreadTrigger();
    CrossThreadTrigger(const CrossThreadTrigger&) = delete;
    CrossThreadTrigger& operator=(const CrossThreadTrigger&) = delete;

    // Safe from any thread while the object lives; the function runs later, on the
    // owner thread's event loop.
    void Trigger();
    bool IsOwnerThread() const { return std::this_thread::get_id() == owner; }

private:
    void Drain();

    std::function<void()> onTriggered;
    std::thread::id owner;
    int eventFd = -1;
    std::unique_ptr<QSocketNotifier> notifier;
};
