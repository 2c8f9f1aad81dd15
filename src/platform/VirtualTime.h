#pragma once

#include <QDateTime>

class Timer;

// Virtual time for tests and the headless replay.
//
// Enable() freezes the Clock at a chosen instant and routes every Timer started
// afterwards onto a virtual schedule. AdvanceTo() then moves the clock forward,
// firing each due timer in deadline order with the clock set to that timer's
// deadline, so the code under test sees exactly the times it would see live.
// One thread drives the schedule (the one calling AdvanceTo); timers fire there.
class VirtualTime {
public:
    static void Enable(const QDateTime& start);
    static void Disable();
    static bool IsEnabled();

    static void AdvanceBy(qint64 ms);
    static void AdvanceTo(qint64 msSinceEpoch);
    // Deadline of the earliest pending timer, or -1 when none is pending.
    static qint64 NextDeadline();

private:
    friend class Timer;
    static void Schedule(Timer* timer, int ms);
    static void Unschedule(Timer* timer);
};
