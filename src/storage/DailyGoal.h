#pragma once

#include <QDate>

#include "DAODayTotals.h"

class DAOTarget;

// One day's goal: its kind (DAOTarget::Kind) and its target in the kind's unit (km,
// kcal, minutes, steps). Plain value; a kind that is off or unknown is no goal.
class DailyGoal {
public:
    int kind = 0;
    double target = 0.0;

    // The goal the record sets now.
    static DailyGoal Of(const DAOTarget& goals);

    bool IsSet() const;
    // Whether the day's totals meet the goal. Activity counts whole minutes, as the
    // progress bar does; no goal is never reached.
    bool ReachedBy(const DAODayTotals& day) const;
    bool operator==(const DailyGoal& other) const = default;
};

// The goal in force from a day on (a row of GoalHistory).
struct DatedGoal {
    QDate since;
    DailyGoal goal;
};
