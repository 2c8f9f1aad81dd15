#include "LapStore.h"

#include <string>
#include <type_traits>
#include <utility>

#include "DbDateTime.h"
#include "StoreStatements.h"

namespace {
using Sql = StoreStatements;

std::vector<int> todaysLapIds(SQLite::Database& db) {
    const Sql::DayRange today = Sql::TodayRange();
    SQLite::Statement select(db, "SELECT id FROM Lap WHERE startDate BETWEEN ? AND ?");
    SQLite::bind(select, DbDateTime::ToText(today.from), DbDateTime::ToText(today.to));
    std::vector<int> ids;
    while (select.executeStep()) ids.push_back(select.getColumn(0).getInt());
    return ids;
}

// Adds up one column of the minutes of today's laps. The lap id is appended to the
// statement's text; a lap without minutes gives NULL, read as 0.
template <typename Total>
Total sumOverTodaysLaps(DatabaseConnection& connection, const std::string& sumSql) {
    Total total = 0;
    const bool done = connection.Run([&](SQLite::Database& db) {
        for (const int id : todaysLapIds(db)) {
            SQLite::Statement sum(db, sumSql + std::to_string(id));
            if (!sum.executeStep()) continue;
            if constexpr (std::is_integral_v<Total>) {
                total += sum.getColumn(0).getInt();
            } else {
                total += sum.getColumn(0).getDouble();
            }
        }
    });
    return done ? total : Total{0};
}

constexpr const char* kSelectMinutes =
    "SELECT lapMinute,steps,calories,distance,secondsCompleted FROM LapMinutes WHERE lapId=? "
    "ORDER BY lapMinute ASC";
constexpr const char* kSelectSeconds =
    "SELECT currentSecond,steps,calories,distance,caloriesNoise FROM LastFiveMinutes WHERE "
    "lapId=? ORDER BY currentSecond ASC";
constexpr const char* kInsertMinute = "INSERT INTO LapMinutes (lapId,lapMinute) VALUES (?,?)";
constexpr const char* kUpdateMinute =
    "UPDATE LapMinutes SET  steps=?,calories=?,distance=?,secondsCompleted=? WHERE lapId=? AND "
    "lapMinute=?";
constexpr const char* kInsertSecond =
    "INSERT INTO LastFiveMinutes (lapId,currentSecond,steps,calories,distance,caloriesNoise) "
    "VALUES (?,?,?,?,?,?)";

// Runs the (re-usable) minutes query for one lap id.
std::vector<std::unique_ptr<DAOLapMinutes>> readMinutes(SQLite::Statement& query, int lapId) {
    query.reset();
    query.bind(1, lapId);
    std::vector<std::unique_ptr<DAOLapMinutes>> minutes;
    while (query.executeStep()) {
        auto minute = std::make_unique<DAOLapMinutes>();
        minute->lapId = lapId;
        Sql::ReadColumns(query, minute->lapMinute, minute->steps, minute->calories,
                         minute->distance, minute->secondsCompleted);
        minutes.push_back(std::move(minute));
    }
    return minutes;
}

std::vector<std::unique_ptr<DAOLapSeconds>> readSeconds(SQLite::Database& db, int lapId) {
    SQLite::Statement query(db, kSelectSeconds);
    query.bind(1, lapId);
    std::vector<std::unique_ptr<DAOLapSeconds>> seconds;
    while (query.executeStep()) {
        auto second = std::make_unique<DAOLapSeconds>();
        second->lapId = lapId;
        Sql::ReadColumns(query, second->currentSecond, second->steps, second->calories,
                         second->distance, second->caloriesNoise);
        seconds.push_back(std::move(second));
    }
    return seconds;
}

void appendMinutes(DAOLap& lap, std::vector<std::unique_ptr<DAOLapMinutes>> minutes) {
    std::lock_guard lock(lap.recordsMutex);
    for (auto& minute : minutes) lap.minutes.push_back(std::move(minute));
}

void appendSeconds(DAOLap& lap, std::vector<std::unique_ptr<DAOLapSeconds>> seconds) {
    std::lock_guard lock(lap.recordsMutex);
    for (auto& second : seconds) lap.seconds.push_back(std::move(second));
}

void updateMinute(SQLite::Database& db, const DAOLapMinutes& minute) {
    SQLite::Statement update(db, kUpdateMinute);
    SQLite::bind(update, minute.steps, minute.calories, minute.distance, minute.secondsCompleted,
                 minute.lapId, minute.lapMinute);
    update.exec();
}

void insertMinute(SQLite::Database& db, const DAOLapMinutes& minute) {
    SQLite::Statement insert(db, kInsertMinute);
    SQLite::bind(insert, minute.lapId, minute.lapMinute);
    insert.exec();
}

// The interval under the given lap id (its own, or the one a lap was just stored under).
void insertSecond(SQLite::Statement& insert, int lapId, const DAOLapSeconds& second) {
    insert.reset();
    SQLite::bind(insert, lapId, second.currentSecond, second.steps, second.calories,
                 second.distance, second.caloriesNoise);
    insert.exec();
}

void insertSecond(SQLite::Database& db, const DAOLapSeconds& second) {
    SQLite::Statement insert(db, kInsertSecond);
    insertSecond(insert, second.lapId, second);
}

// Loads laps selected by `sql` (id,startDate,endDate,manual[,techDate]) for a range, with
// their minutes.
std::vector<std::unique_ptr<DAOLap>> lapsBetween(DatabaseConnection& connection, const char* sql,
                                                 const QDateTime& from, const QDateTime& to,
                                                 bool withTechDate) {
    std::vector<std::unique_ptr<DAOLap>> laps;
    const bool done = connection.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db, sql);
        SQLite::bind(select, DbDateTime::ToText(from), DbDateTime::ToText(to));
        while (select.executeStep()) {
            auto lap = std::make_unique<DAOLap>();
            lap->id = select.getColumn(0).getInt();
            lap->startDate = Sql::DateColumn(select.getColumn(1));
            lap->endDate = Sql::OptionalDateColumn(select.getColumn(2));
            lap->techDate = withTechDate ? Sql::DateColumn(select.getColumn(4))
                                         : DbDateTime::DayStart(lap->startDate);
            lap->manual = select.getColumn(3).getInt() == 1;
            laps.push_back(std::move(lap));
        }
        // One prepared statement serves every lap of the range.
        SQLite::Statement minutes(db, kSelectMinutes);
        for (auto& lap : laps) lap->minutes = readMinutes(minutes, lap->id);
    });
    if (!done) laps.clear();
    return laps;
}
}  // namespace

LapStore::LapStore(DatabaseConnection& statistics) : statistics_(statistics) {}

std::unique_ptr<DAOLap> LapStore::CreateNewLap() {
    auto lap = std::make_unique<DAOLap>();
    lap->startDate = Sql::NowToTheSecond();
    lap->techDate = DbDateTime::DayStart(lap->startDate);
    statistics_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        // A lap of an earlier day left open (the app was closed while counting) ends where
        // its counted time ends: the new lap takes over, and history shows it finished.
        SQLite::Statement close(db,
                                "UPDATE Lap SET endDate=datetime(startDate,'+'||CAST(coalesce("
                                "totalSeconds,0) AS INTEGER)||' seconds') WHERE endDate IS NULL "
                                "AND manual=0 AND startDate<?");
        Sql::BindDate(close, 1, lap->techDate);
        close.exec();
        SQLite::Statement insert(db, "INSERT INTO LAP (startDate,endDate,techDate) VALUES (?,?,?)");
        Sql::BindDate(insert, 1, lap->startDate);
        insert.bind(2);  // NULL: the lap is open
        Sql::BindDate(insert, 3, lap->techDate);
        insert.exec();
        SQLite::Statement rowId(db, "SELECT last_insert_rowid()");
        const int id = rowId.executeStep() ? rowId.getColumn(0).getInt() : -1;
        transaction.commit();
        lap->id = id;
    });
    return lap;
}

void LapStore::FinishLap(int id) {
    Sql::ExecInTransaction(statistics_, "UPDATE Lap SET endDate=? WHERE id=?",
                           DbDateTime::ToText(Sql::NowToTheSecond()), id);
}

void LapStore::DeleteLap(int id) {
    // Steps taken away from the lap by hand (a manual lap of negative steps starting a
    // second after it) go with it, so that no total is left short of steps. Their minutes
    // and intervals go too: the next lap may be given a deleted lap's id.
    statistics_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        SQLite::Statement laps(
            db,
            "SELECT id FROM Lap WHERE id=?1 OR (manual=1 AND startDate=(SELECT datetime("
            "startDate,'+1 second') FROM Lap WHERE id=?1) AND (SELECT total(steps) FROM "
            "LapMinutes WHERE lapId=Lap.id)<0)");
        laps.bind(1, id);
        std::vector<int> ids;
        while (laps.executeStep()) ids.push_back(laps.getColumn(0).getInt());
        for (const char* sql :
             {"DELETE FROM LapMinutes WHERE lapId=?", "DELETE FROM LastFiveMinutes WHERE lapId=?",
              "DELETE FROM Lap WHERE id=?"}) {
            SQLite::Statement del(db, sql);
            for (const int lap : ids) {
                del.bind(1, lap);
                del.exec();
                del.reset();
            }
        }
        transaction.commit();
    });
}

void LapStore::ClearLapMinutes(int id) {
    Sql::ExecInTransaction(statistics_, "DELETE FROM LapMinutes WHERE lapId=?", id);
}

void LapStore::CreateNewLapMinute(const DAOLapMinutes& minute) {
    statistics_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        insertMinute(db, minute);
        transaction.commit();
    });
}

void LapStore::UpdateLapMinute(const DAOLapMinutes& minute) {
    statistics_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        updateMinute(db, minute);
        transaction.commit();
    });
}

void LapStore::CreateNewLapSecond(const DAOLapSeconds& second) {
    statistics_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        insertSecond(db, second);
        transaction.commit();
    });
}

bool LapStore::UpdateSmall(const DAOLapMinutes& minute, const DAOLapSeconds& second) {
    return statistics_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        updateMinute(db, minute);
        insertSecond(db, second);
        transaction.commit();
    });
}

bool LapStore::UpdateFull(const DAOLapMinutes& minute, const DAOLapSeconds& second,
                          const DAOLapMinutes& next) {
    return statistics_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        updateMinute(db, minute);
        insertSecond(db, second);
        insertMinute(db, next);
        transaction.commit();
    });
}

void LapStore::ClearLapSeconds() {
    Sql::ExecInTransaction(statistics_, "DELETE FROM LastFiveMinutes");
}

void LapStore::GetMinutesForLap(DAOLap& lap) {
    // Read under the connection's lock, append under the lap's: never both at once.
    std::vector<std::unique_ptr<DAOLapMinutes>> minutes;
    const int lapId = lap.id;
    const bool done = statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement query(db, kSelectMinutes);
        minutes = readMinutes(query, lapId);
    });
    if (done) appendMinutes(lap, std::move(minutes));
}

void LapStore::GetSecondsForLap(DAOLap& lap) {
    std::vector<std::unique_ptr<DAOLapSeconds>> seconds;
    const int lapId = lap.id;
    const bool done =
        statistics_.Run([&](SQLite::Database& db) { seconds = readSeconds(db, lapId); });
    if (done) appendSeconds(lap, std::move(seconds));
}

std::unique_ptr<DAOLap> LapStore::GetTodayLastLap() {
    std::unique_ptr<DAOLap> lap;
    const Sql::DayRange today = Sql::TodayRange();
    const bool done = statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db,
                                 "SELECT id,startDate,endDate FROM Lap WHERE startDate BETWEEN ? "
                                 "AND ? AND manual=0 ORDER BY startDate DESC LIMIT 1");
        SQLite::bind(select, DbDateTime::ToText(today.from), DbDateTime::ToText(today.to));
        if (!select.executeStep()) return;
        lap = std::make_unique<DAOLap>();
        lap->id = select.getColumn(0).getInt();
        lap->startDate = Sql::DateColumn(select.getColumn(1));
        lap->endDate = Sql::OptionalDateColumn(select.getColumn(2));
        lap->techDate = DbDateTime::DayStart(lap->startDate);
        SQLite::Statement minutes(db, kSelectMinutes);
        lap->minutes = readMinutes(minutes, lap->id);
        lap->seconds = readSeconds(db, lap->id);
    });
    if (!done) lap.reset();
    return lap;
}

std::vector<std::unique_ptr<DAOLap>> LapStore::GetLapsForDate(const QDateTime& day) {
    return lapsBetween(statistics_,
                       "SELECT id,startDate,endDate,manual FROM Lap WHERE startDate BETWEEN ? "
                       "AND ? ORDER BY startDate ASC",
                       day, DbDateTime::NextDayStart(day), false);
}

std::unique_ptr<DAOLap> LapStore::GetLap(int id) {
    std::unique_ptr<DAOLap> lap;
    const bool done = statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db,
                                 "SELECT startDate,endDate,techDate,manual FROM Lap WHERE id=?");
        select.bind(1, id);
        if (!select.executeStep()) return;
        lap = std::make_unique<DAOLap>();
        lap->id = id;
        lap->startDate = Sql::DateColumn(select.getColumn(0));
        lap->endDate = Sql::OptionalDateColumn(select.getColumn(1));
        lap->techDate = Sql::DateColumn(select.getColumn(2));
        lap->manual = select.getColumn(3).getInt() == 1;
        SQLite::Statement minutes(db, kSelectMinutes);
        lap->minutes = readMinutes(minutes, id);
    });
    if (!done) lap.reset();
    return lap;
}

std::vector<std::unique_ptr<DAOLap>> LapStore::GetLapsForPeriod(const QDateTime& from,
                                                                const QDateTime& to) {
    return lapsBetween(statistics_,
                       "SELECT id,startDate,endDate,manual,techDate FROM Lap WHERE startDate "
                       "BETWEEN ? AND ? ORDER BY startDate ASC",
                       from, DbDateTime::NextDayStart(to), true);
}

std::vector<QDateTime> LapStore::GetAllDays() {
    std::vector<QDateTime> days;
    const bool done = statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db, "SELECT DISTINCT  techDate FROM Lap ORDER BY techDate DESC");
        while (select.executeStep()) days.push_back(Sql::DateColumn(select.getColumn(0)));
    });
    if (!done) days.clear();
    return days;
}

std::vector<std::pair<QDateTime, int>> LapStore::GetLatestLapSteps(int count) {
    std::vector<std::pair<QDateTime, int>> laps;
    const bool done = statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db,
                                 "SELECT startDate,totalSteps FROM Lap WHERE totalSteps>0 "
                                 "ORDER BY startDate DESC LIMIT ?");
        select.bind(1, count);
        while (select.executeStep()) {
            laps.emplace_back(Sql::DateColumn(select.getColumn(0)), select.getColumn(1).getInt());
        }
    });
    if (!done) laps.clear();
    return laps;
}

std::vector<DAODayTotals> LapStore::GetDayTotals(const QDate& from, const QDate& to) {
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
        SQLite::bind(select, DbDateTime::ToText(from.startOfDay()),
                     DbDateTime::ToText(to.addDays(1).startOfDay()));
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

void LapStore::ResetLogs(const QDateTime& from, const QDateTime& to) {
    const std::string first = DbDateTime::ToText(from);
    const std::string until = DbDateTime::ToText(to.addDays(1));
    statistics_.Run([&](SQLite::Database& db) {
        std::vector<int> ids;
        SQLite::Statement select(db, "SELECT id FROM Lap WHERE startDate BETWEEN ? AND ?");
        SQLite::bind(select, first, until);
        while (select.executeStep()) ids.push_back(select.getColumn(0).getInt());

        SQLite::Transaction transaction(db);
        for (const int id : ids)
            db.exec("DELETE FROM LapMinutes WHERE lapId=" + std::to_string(id));
        SQLite::Statement del(db, "DELETE FROM Lap WHERE startDate BETWEEN ? AND ?");
        SQLite::bind(del, first, until);
        del.exec();
        transaction.commit();
    });
}

double LapStore::GetTodayDistance() {
    return sumOverTodaysLaps<double>(statistics_,
                                     "SELECT sum(distance) AS Sum FROM LapMinutes WHERE lapId=");
}

double LapStore::GetTodayCalories() {
    return sumOverTodaysLaps<double>(statistics_,
                                     "SELECT sum(calories) AS Sum FROM LapMinutes WHERE lapId=");
}

int LapStore::GetTodayActivity() {
    return sumOverTodaysLaps<int>(
        statistics_, "SELECT sum(secondsCompleted) AS Sum FROM LapMinutes WHERE lapId=");
}

int LapStore::GetTodaySteps() {
    return sumOverTodaysLaps<int>(statistics_,
                                  "SELECT sum(steps) AS Sum FROM LapMinutes WHERE lapId=");
}

bool LapStore::ImportHistory(std::vector<std::unique_ptr<DAOLap>>& laps,
                             const std::vector<DAOBodyLog>& bodyLogs) {
    std::vector<int> ids;
    ids.reserve(laps.size());
    const bool done = statistics_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        SQLite::Statement lapInsert(
            db, "INSERT INTO Lap (startDate,endDate,techDate,manual) VALUES (?,?,?,?)");
        SQLite::Statement minuteInsert(db,
                                       "INSERT INTO LapMinutes (lapId,lapMinute,steps,calories,"
                                       "distance,secondsCompleted) VALUES (?,?,?,?,?,?)");
        SQLite::Statement secondInsert(db, kInsertSecond);
        for (const auto& lap : laps) {
            lapInsert.reset();
            Sql::BindDate(lapInsert, 1, lap->startDate);
            if (lap->endDate) {
                Sql::BindDate(lapInsert, 2, *lap->endDate);
            } else {
                lapInsert.bind(2);
            }
            Sql::BindDate(lapInsert, 3, lap->techDate);
            lapInsert.bind(4, lap->manual ? 1 : 0);
            lapInsert.exec();
            const int id = static_cast<int>(db.getLastInsertRowid());
            ids.push_back(id);
            for (const auto& minute : lap->minutes) {
                minuteInsert.reset();
                SQLite::bind(minuteInsert, id, minute->lapMinute, minute->steps, minute->calories,
                             minute->distance, minute->secondsCompleted);
                minuteInsert.exec();
            }
            for (const auto& second : lap->seconds) insertSecond(secondInsert, id, *second);
        }
        SQLite::Statement logInsert(
            db, "INSERT INTO BODYLOGS (logDate,weight,chest,waist,hip) VALUES (?,?,?,?,?)");
        for (const DAOBodyLog& log : bodyLogs) {
            logInsert.reset();
            SQLite::bind(logInsert, DbDateTime::ToText(DbDateTime::DayStart(log.logDate)),
                         log.weight, log.chest, log.waist, log.hip);
            logInsert.exec();
        }
        transaction.commit();
    });
    if (!done) return false;
    for (size_t i = 0; i < laps.size(); ++i) {
        DAOLap& lap = *laps[i];
        lap.id = ids[i];
        for (auto& minute : lap.minutes) minute->lapId = lap.id;
        for (auto& second : lap.seconds) second->lapId = lap.id;
    }
    return true;
}
