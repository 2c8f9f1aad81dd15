#include "AlarmStore.h"

#include "DbDateTime.h"
#include "StoreStatements.h"

namespace {
using Sql = StoreStatements;

// The sums of today's laps entered by hand, in the units of the alarm's progress.
// They count towards the alarm as they count in the day's totals, so the progress
// read adds them and the progress stored leaves them out.
DAOSygnal todaysCorrections(DatabaseConnection& connection) {
    DAOSygnal sums;
    const Sql::DayRange today = Sql::TodayRange();
    connection.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db,
                                 "SELECT total(totalCalories),total(totalDistance)/1000.0,"
                                 "total(totalSeconds),total(totalSteps) FROM Lap WHERE manual=1 "
                                 "AND startDate>=? AND startDate<?");
        SQLite::bind(select, DbDateTime::ToText(today.from), DbDateTime::ToText(today.to));
        if (!select.executeStep()) return;
        Sql::ReadColumns(select, sums.calories, sums.distance, sums.activityTime, sums.steps);
    });
    return sums;
}

DAOSygnal operator+(DAOSygnal progress, const DAOSygnal& more) {
    progress.calories += more.calories;
    progress.distance += more.distance;
    progress.activityTime += more.activityTime;
    progress.steps += more.steps;
    return progress;
}
}  // namespace

AlarmStore::AlarmStore(DatabaseConnection& statistics) : statistics_(statistics) {}

DAOSygnal AlarmStore::GetTodaySygnal() {
    DAOSygnal sygnal;
    const Sql::DayRange today = Sql::TodayRange();
    bool found = false;
    const bool queried = statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db,
                                 "SELECT calories,distance,activityTime,steps FROM SygnalValues "
                                 "WHERE "
                                 "sygnalDate BETWEEN ? AND ? ORDER BY sygnalDate DESC LIMIT 1");
        SQLite::bind(select, DbDateTime::ToText(today.from), DbDateTime::ToText(today.to));
        if (!select.executeStep()) return;
        Sql::ReadColumns(select, sygnal.calories, sygnal.distance, sygnal.activityTime,
                         sygnal.steps);
        found = true;
    });
    if (!queried) return sygnal;
    if (found) return sygnal + todaysCorrections(statistics_);

    // First request of the day: earlier days' progress is dropped, today's starts at 0.
    ClearSygnals();
    Sql::ExecInTransaction(statistics_,
                           "INSERT INTO SygnalValues (calories,distance,activityTime,sygnalDate) "
                           "VALUES (0.0,0.0,0,?)",
                           DbDateTime::ToText(Sql::NowToTheSecond()));
    return todaysCorrections(statistics_);
}

void AlarmStore::UpdateSygnal(const DAOSygnal& sygnal) {
    const DAOSygnal corrections = todaysCorrections(statistics_);
    Sql::ExecInTransaction(
        statistics_, "UPDATE SygnalValues SET  calories=?,distance=?,activityTime=?,steps=?",
        sygnal.calories - corrections.calories, sygnal.distance - corrections.distance,
        sygnal.activityTime - corrections.activityTime, sygnal.steps - corrections.steps);
}

void AlarmStore::ClearSygnals() {
    Sql::ExecInTransaction(statistics_, "DELETE FROM SygnalValues");
}
