#pragma once

#include <QObject>
#include <functional>

class QTimer;

// A single-shot timer that callers re-arm by hand.
//
// In normal runs it is a QTimer in the event loop of the thread that created it.
// When VirtualTime is enabled it is instead scheduled on the virtual clock and fires
// from VirtualTime::AdvanceTo, so tests and the headless replay can run hours of
// timer ticks in milliseconds with the same code.
class Timer {
public:
    explicit Timer(std::function<void()> onExpired);
    ~Timer();
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    // Fires once after `ms` milliseconds; a pending start is replaced.
    void Start(int ms);
    void Cancel();
    bool IsActive() const;

private:
    friend class VirtualTime;
    void Fire();

    std::function<void()> onExpired_;
    QTimer* qtimer_ = nullptr;  // owned; created on first real-time start
    bool virtualPending_ = false;
};
