#pragma once

#include <QDate>
#include <vector>

#include "DAODayTotals.h"

class DAOTarget;

// The figures of a period history without any widget: one entry per calendar day from
// `from` to `to` (days without laps as empty ones), and per measure the day's value in
// the user's units, the period's total, the daily average over all its days and the
// best day. Plain values, no threads.
class PeriodSummary {
public:
    // What a bar shows; a tap on the chart moves to the next.
    enum Measure { STEPS = 0, DISTANCE = 1, CALORIES = 2, TIME = 3 };
    static constexpr int kMeasures = 4;

    // `rows` are the days that have laps, in any order; rows outside the period are
    // ignored. A reversed period holds no day.
    PeriodSummary(const QDate& from, const QDate& to, const std::vector<DAODayTotals>& rows,
                  bool miles);

    int DayCount() const { return int(days_.size()); }
    const DAODayTotals& Day(int index) const { return days_[index]; }
    QDate From() const { return from_; }
    QDate To() const { return to_; }

    // Steps, km (or miles), kcal, or minutes of counting.
    double Value(int index, int measure) const;
    double Total(int measure) const;
    double DailyAverage(int measure) const;  // 0 for an empty period
    double Highest(int measure) const;
    // The day with the highest value (the earliest of equals); -1 when none is above 0.
    int BestDay(int measure) const;
    // Days with at least one step: a lap opened and never walked is not activity.
    int ActiveDays() const;
    // The daily goal in the measure's units when the goal is of that measure; else -1.
    double Goal(int measure, const DAOTarget& target) const;
    // Indexes of the days that start a week, for the locale's first day of the week.
    std::vector<int> WeekStarts(Qt::DayOfWeek firstDay) const;

private:
    QDate from_;
    QDate to_;
    bool miles_;
    std::vector<DAODayTotals> days_;
};
