#include "GoalStreaks.h"

GoalStreaks::GoalStreaks(const QDate& from, const QDate& to,
                         const std::vector<DAODayTotals>& totals,
                         const std::vector<DatedGoal>& goals, const QDate& today) {
    if (!from.isValid() || !to.isValid() || from > to) return;
    size_t nextTotal = 0;
    size_t nextGoal = 0;
    DailyGoal goal;
    Streak run;
    const DAODayTotals noLaps;
    for (QDate day = from; day <= to; day = day.addDays(1)) {
        while (nextGoal < goals.size() && goals[nextGoal].since <= day) goal = goals[nextGoal++].goal;
        while (nextTotal < totals.size() && totals[nextTotal].day < day) ++nextTotal;
        const bool hasLaps = nextTotal < totals.size() && totals[nextTotal].day == day;
        if (!goal.IsSet()) continue;
        if (goal.ReachedBy(hasLaps ? totals[nextTotal] : noLaps)) {
            if (run.days == 0) run.first = day;
            run.last = day;
            ++run.days;
            if (run.days > longest_.days) longest_ = run;
        } else if (day != today) {
            run = Streak{};
        }
    }
    current_ = run;
}
