// PedometerDBManager: the per-day sums behind the period history, and the streaks of
// days with the daily goal reached.
#include <algorithm>

#include "Clock.h"
#include "DbDateTime.h"
#include "PedometerDBManager.h"

std::vector<DAODayTotals> PedometerDBManager::GetDayTotals(const QDate& from, const QDate& to) {
    std::vector<DAODayTotals> days;
    if (!from.isValid() || !to.isValid() || from > to) return days;
    // Half-open on the start date-time, so a lap opened at the midnight after `to`
    // belongs to the next day and stays out. Each lap row holds the sums of its
    // minutes (kept by triggers), so only one row per lap is read.
    const bool done = statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(
            db,
            "SELECT substr(startDate,1,10),count(*),total(totalSteps),total(totalDistance),"
            "total(totalCalories),total(totalSeconds) FROM Lap WHERE startDate>=? AND "
            "startDate<? GROUP BY 1 ORDER BY 1");
        select.bind(1, DbDateTime::ToText(from.startOfDay()));
        select.bind(2, DbDateTime::ToText(to.addDays(1).startOfDay()));
        while (select.executeStep()) {
            DAODayTotals row;
            row.day =
                QDate::fromString(QString::fromLatin1(select.getColumn(0).getText()), Qt::ISODate);
            if (!row.day.isValid()) continue;  // a damaged start date has no day to go to
            row.laps = select.getColumn(1).getInt();
            row.steps = static_cast<int>(select.getColumn(2).getDouble());
            row.distance = select.getColumn(3).getDouble();
            row.calories = select.getColumn(4).getDouble();
            row.seconds = static_cast<int>(select.getColumn(5).getDouble());
            days.push_back(row);
        }
    });
    if (!done) days.clear();
    return days;
}

std::vector<DatedGoal> PedometerDBManager::GetGoalHistory() {
    std::vector<DatedGoal> goals;
    const bool done = statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db,
                                 "SELECT since,targetActive,target FROM GoalHistory ORDER BY since");
        while (select.executeStep()) {
            const QDate since =
                QDate::fromString(QString::fromLatin1(select.getColumn(0).getText()), Qt::ISODate);
            if (!since.isValid()) continue;
            goals.push_back({since, {select.getColumn(1).getInt(), select.getColumn(2).getDouble()}});
        }
    });
    if (!done) goals.clear();
    return goals;
}

GoalStreaks PedometerDBManager::GetGoalStreaks(const QDate& from, const QDate& to) {
    QDate start = from;
    if (!start.isValid()) {
        statistics_.Run([&](SQLite::Database& db) {
            SQLite::Statement first(db, "SELECT min(startDate) FROM Lap");
            if (first.executeStep() && !first.getColumn(0).isNull()) {
                start = DbDateTime::FromText(first.getColumn(0).getText()).date();
            }
        });
    }
    // Days before the first goal neither break nor extend a run: their sums are not read.
    const std::vector<DatedGoal> goals = GetGoalHistory();
    if (goals.empty()) return {};
    start = std::max(start, goals.front().since);
    if (!start.isValid() || start > to) return {};
    return GoalStreaks(start, to, GetDayTotals(start, to), goals, Clock::Now().date());
}
