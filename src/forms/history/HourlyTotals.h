#pragma once

#include <QDate>
#include <array>

class DAOLap;

// The steps, distance and calories of each hour of the clock (0-23) on one day, summed
// from the laps' minute records: minute k of a lap started at S counts for the hour of
// S + (k - 1) minutes. Minutes that fall on another day (a lap over midnight) are left
// out. No widgets, no threads.
class HourlyTotals {
public:
    struct Hour {
        int steps = 0;
        double distance = 0.0;  // metres
        double calories = 0.0;  // kcal
    };

    explicit HourlyTotals(const QDate& day) : day_(day) {}

    // Adds the lap's minutes (read under its lock).
    void AddLap(const DAOLap& lap);
    const Hour& At(int hour) const { return hours_[size_t(hour)]; }
    int HighestSteps() const;
    // The first and last hour with a minute of a lap, or -1 when none.
    int FirstHour() const { return first_; }
    int LastHour() const { return last_; }

private:
    QDate day_;
    std::array<Hour, 24> hours_{};
    int first_ = -1;
    int last_ = -1;
};
