#include "DailyGoal.h"

#include "DAOTarget.h"

DailyGoal DailyGoal::Of(const DAOTarget& goals) {
    switch (goals.targetActive) {
        case DAOTarget::DISTANCE:
            return {DAOTarget::DISTANCE, goals.distance};
        case DAOTarget::CALORIES:
            return {DAOTarget::CALORIES, double(goals.calories)};
        case DAOTarget::ACTIVITY:
            return {DAOTarget::ACTIVITY, double(goals.activityTime)};
        case DAOTarget::STEPS:
            return {DAOTarget::STEPS, double(goals.steps)};
        default:
            return {};
    }
}

bool DailyGoal::IsSet() const {
    return kind >= DAOTarget::DISTANCE && kind <= DAOTarget::STEPS;
}

bool DailyGoal::ReachedBy(const DAODayTotals& day) const {
    switch (kind) {
        case DAOTarget::DISTANCE:
            return day.distance / 1000.0 >= target;
        case DAOTarget::CALORIES:
            return day.calories >= target;
        case DAOTarget::ACTIVITY:
            return day.seconds / 60 >= target;
        case DAOTarget::STEPS:
            return day.steps >= target;
        default:
            return false;
    }
}
