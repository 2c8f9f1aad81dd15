#include "BodyLogStore.h"

#include "Clock.h"
#include "DbDateTime.h"
#include "StoreStatements.h"

using Sql = StoreStatements;

BodyLogStore::BodyLogStore(DatabaseConnection& statistics) : statistics_(statistics) {}

DAOBodyLog BodyLogStore::GetTodayBodyLog() {
    DAOBodyLog log;
    const QDateTime today = Clock::TodayStart();
    log.logDate = today;
    statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(
            db, "SELECT logDate,weight,chest,waist,hip FROM BODYLOGS WHERE logDate=?");
        Sql::BindDate(select, 1, today);
        if (select.executeStep()) {
            log.weight = select.getColumn(1).getDouble();
            log.chest = select.getColumn(2).getDouble();
            log.waist = select.getColumn(3).getDouble();
            log.hip = select.getColumn(4).getDouble();
            return;
        }
        SQLite::Transaction transaction(db);
        SQLite::Statement insert(
            db, "INSERT INTO BODYLOGS (logDate,weight,chest,waist,hip) VALUES (?,?,?,?,?)");
        SQLite::bind(insert, DbDateTime::ToText(today), 0.0, 0.0, 0.0, 0.0);
        insert.exec();
        transaction.commit();
    });
    return log;
}

void BodyLogStore::SetToday(const char* sql, double value) {
    Sql::ExecInTransaction(statistics_, sql, value, DbDateTime::ToText(Clock::TodayStart()));
}

void BodyLogStore::SetTodayWeight(double value) {
    SetToday("UPDATE BODYLOGS SET  weight=? WHERE logDate=?", value);
}

void BodyLogStore::SetTodayChest(double value) {
    SetToday("UPDATE BODYLOGS SET  chest=? WHERE logDate=?", value);
}

void BodyLogStore::SetTodayWaist(double value) {
    SetToday("UPDATE BODYLOGS SET  waist=? WHERE logDate=?", value);
}

void BodyLogStore::SetTodayHip(double value) {
    SetToday("UPDATE BODYLOGS SET  hip=? WHERE logDate=?", value);
}

void BodyLogStore::ResetWheight() {
    Sql::ExecInTransaction(statistics_, "UPDATE BODYLOGS SET  weight=0.0");
}

void BodyLogStore::ResetChest() {
    Sql::ExecInTransaction(statistics_, "UPDATE BODYLOGS SET  chest=0.0");
}

void BodyLogStore::ResetWaist() {
    Sql::ExecInTransaction(statistics_, "UPDATE BODYLOGS SET  waist=0.0");
}

void BodyLogStore::ResetHips() {
    Sql::ExecInTransaction(statistics_, "UPDATE BODYLOGS SET  hip=0.0");
}

std::vector<DAOBodyLog> BodyLogStore::GetBodyLogs() {
    std::vector<DAOBodyLog> logs;
    const bool done = statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(
            db, "SELECT logDate,weight,chest,waist,hip FROM BODYLOGS ORDER BY logDate");
        while (select.executeStep()) {
            DAOBodyLog log;
            log.logDate = Sql::DateColumn(select.getColumn(0));
            log.weight = select.getColumn(1).getDouble();
            log.chest = select.getColumn(2).getDouble();
            log.waist = select.getColumn(3).getDouble();
            log.hip = select.getColumn(4).getDouble();
            logs.push_back(log);
        }
    });
    if (!done) logs.clear();
    return logs;
}

QDateTime BodyLogStore::LogDateOrToday(const char* sql) {
    QDateTime result;
    statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db, sql);
        if (select.executeStep()) result = DbDateTime::FromText(select.getColumn(0).getText());
    });
    return DbDateTime::DayStart(result.isValid() ? result : Clock::Now());
}

QDateTime BodyLogStore::GetLastLogDate() {
    return LogDateOrToday("SELECT logDate FROM BODYLOGS ORDER BY logDate DESC LIMIT 1");
}

QDateTime BodyLogStore::GetFirstLogDate() {
    return LogDateOrToday("SELECT logDate FROM BODYLOGS ORDER BY logDate ASC LIMIT 1");
}
