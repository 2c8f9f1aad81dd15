#pragma once

#include <QDateTime>

// The one source of "now" for the whole system.
//
// By default it reads the system clock. Tests and the headless replay switch it to
// virtual time: a fixed instant that only moves when told to. Every caller reads the
// time through here, so a test can stand on any date and time and a replay can run
// a recording's hours in seconds. Safe to use from any thread.
class Clock {
public:
    // Current local date and time.
    static QDateTime Now();
    // Milliseconds since the Unix epoch, real or virtual.
    static qint64 NowMs();

    // Switches to virtual time, frozen at `when` until changed.
    static void SetNow(const QDateTime& when);
    static void SetNowMs(qint64 msSinceEpoch);
    // Moves virtual time forward; no effect on the system clock.
    static void Advance(qint64 ms);
    // Back to the system clock.
    static void UseSystemTime();
    static bool IsVirtual();

    // Today's local date at 00:00:00.
    static QDateTime TodayStart();
};
