#include "GoalStore.h"

#include <algorithm>

#include "Clock.h"
#include "DbDateTime.h"
#include "LapStore.h"
#include "StoreStatements.h"

GoalStore::GoalStore(DatabaseConnection& statistics, LapStore& laps)
    : statistics_(statistics), laps_(laps) {}

void GoalStore::LoadTargets(DAOTarget& target) {
    statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db,
                                 "SELECT targetActive,calories,activityTime,distance,wheight,hips,"
                                 "chest,waist,wheightTarget,steps FROM TargetValues LIMIT 1");
        if (!select.executeStep()) return;
        StoreStatements::ReadColumns(select, target.targetActive, target.calories,
                                     target.activityTime, target.distance, target.wheight,
                                     target.hips, target.chest, target.waist, target.wheightTarget,
                                     target.steps);
    });
}

void GoalStore::SaveTagets(const DAOTarget& target) {
    const QString today = Clock::Now().date().toString(Qt::ISODate);
    const DailyGoal goal = DailyGoal::Of(target);
    statistics_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        SQLite::Statement update(db,
                                 "UPDATE TargetValues SET targetActive=?,calories=?,activityTime=?,"
                                 "distance=?,wheight=?,hips=?,chest=?,waist=?,wheightTarget=?,"
                                 "steps=?");
        SQLite::bind(update, target.targetActive, target.calories, target.activityTime,
                     target.distance, target.wheight, target.hips, target.chest, target.waist,
                     target.wheightTarget, target.steps);
        update.exec();
        // Today's row of the goal history holds the goal as it is now, unless the goal
        // in force before today is the same.
        db.exec("DELETE FROM GoalHistory WHERE since='" + today.toStdString() + "'");
        SQLite::Statement before(db,
                                 "SELECT targetActive,target FROM GoalHistory ORDER BY since DESC "
                                 "LIMIT 1");
        DailyGoal previous;
        if (before.executeStep())
            StoreStatements::ReadColumns(before, previous.kind, previous.target);
        if (!(previous == goal)) {
            SQLite::Statement insert(db, "INSERT INTO GoalHistory VALUES (?,?,?)");
            SQLite::bind(insert, today.toStdString(), goal.kind, goal.target);
            insert.exec();
        }
        transaction.commit();
    });
}

std::vector<DatedGoal> GoalStore::GetGoalHistory() {
    std::vector<DatedGoal> goals;
    const bool done = statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(
            db, "SELECT since,targetActive,target FROM GoalHistory ORDER BY since");
        while (select.executeStep()) {
            const QDate since =
                QDate::fromString(QString::fromLatin1(select.getColumn(0).getText()), Qt::ISODate);
            if (!since.isValid()) continue;
            goals.push_back(
                {since, {select.getColumn(1).getInt(), select.getColumn(2).getDouble()}});
        }
    });
    if (!done) goals.clear();
    return goals;
}

GoalStreaks GoalStore::GetGoalStreaks(const QDate& from, const QDate& to) {
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
    return GoalStreaks(start, to, laps_.GetDayTotals(start, to), goals, Clock::Now().date());
}
