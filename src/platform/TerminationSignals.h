#pragma once

#include <functional>
#include <memory>

class QSocketNotifier;

// Turns SIGTERM and SIGINT (a logout, `kill`, Ctrl+C in a terminal) into a call on the
// GUI thread's event loop, so that the application can store what it counted and leave
// in order. The signal handler itself only writes to an eventfd (async-signal-safe);
// a QSocketNotifier reads it and runs the callback, once per burst of signals.
//
// One instance at a time; while it lives it owns the two signals' handlers, and the
// destructor puts the default handlers back. GUI thread, with a QCoreApplication.
class TerminationSignals {
public:
    explicit TerminationSignals(std::function<void()> onSignal);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    // Whether the handlers are in place (an eventfd could be made).
    bool IsWatching() const { return eventFd_ >= 0; }

private:
    void Drain();

    std::function<void()> onSignal_;
    int eventFd_ = -1;
    std::unique_ptr<QSocketNotifier> notifier_;
};
