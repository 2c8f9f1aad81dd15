#pragma once

#include <QDate>
#include <vector>

#include "DAOTarget.h"
#include "DailyGoal.h"
#include "GoalStreaks.h"

class DatabaseConnection;
class LapStore;

// The goals (TargetValues) and the history of the daily goal (GoalHistory) in the
// statistics database, and the streaks of days that reached it, judged on the day
// sums `laps` gives. PedometerDBManager forwards to it and documents each call.
class GoalStore {
public:
    GoalStore(DatabaseConnection& statistics, LapStore& laps);

    void LoadTargets(DAOTarget& target);
    void SaveTagets(const DAOTarget& target);
    std::vector<DatedGoal> GetGoalHistory();
    GoalStreaks GetGoalStreaks(const QDate& from, const QDate& to);

private:
    DatabaseConnection& statistics_;
    LapStore& laps_;
};
