#pragma once

#include <QDate>
#include <vector>

#include "DAODayTotals.h"
#include "DailyGoal.h"

// The runs of days on which the daily goal was reached, within a span of days: the
// current run (the one still open at the span's end) and the longest.
//
// Each day is judged by the goal in force on it. A day without a goal neither breaks
// nor extends a run, and neither does `today` while its goal is not yet reached; any
// other day with a goal that was not reached (a day without laps included) ends the
// run. Plain values, computed once in the constructor in one pass over the days.
class GoalStreaks {
public:
    struct Streak {
        int days = 0;  // days with the goal reached; 0 for none
        QDate first;   // the first and the last of them; invalid for none
        QDate last;
    };

    // `totals` are the days that have laps, oldest first (PedometerDBManager::
    // GetDayTotals); `goals` the goal history, oldest first. Days outside `from`..`to`
    // are ignored; a reversed span has no streak.
    GoalStreaks(const QDate& from, const QDate& to, const std::vector<DAODayTotals>& totals,
                const std::vector<DatedGoal>& goals, const QDate& today);
    GoalStreaks() = default;

    const Streak& Current() const { return current_; }
    const Streak& Longest() const { return longest_; }

private:
    Streak current_;
    Streak longest_;
};
