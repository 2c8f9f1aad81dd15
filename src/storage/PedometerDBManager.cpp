#include "PedometerDBManager.h"

#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>

#include <SQLiteCpp/VariadicBind.h>

#include "Body.h"
#include "Clock.h"
#include "DbDateTime.h"
#include "OptionsColumns.h"

namespace {
// --- Statement helpers -------------------------------------------------------

void bindDate(SQLite::Statement& statement, int index, const QDateTime& when) {
    statement.bind(index, DbDateTime::ToText(when));
}

int flag(bool value) {
    return value ? 1 : 0;
}

// A stored flag counts as set only when it is exactly 1.
bool isSet(const SQLite::Column& column) {
    return column.getInt() == 1;
}

QDateTime dateColumn(const SQLite::Column& column) {
    const QDateTime when = DbDateTime::FromText(column.getText());
    return when.isValid() ? when : DbDateTime::Unset();
}

std::optional<QDateTime> optionalDateColumn(const SQLite::Column& column) {
    if (column.isNull()) return std::nullopt;
    const QDateTime when = DbDateTime::FromText(column.getText());
    if (!when.isValid()) return std::nullopt;
    return when;
}

// Now, at the one-second resolution the database keeps.
QDateTime nowToTheSecond() {
    const QDateTime now = Clock::Now();
    return now.addMSecs(-now.time().msec());
}

struct DayRange {
    QDateTime from;
    QDateTime to;
};

// Today from 00:00:00 to tomorrow 00:00:00; queries include both ends.
DayRange todayRange() {
    const QDateTime now = Clock::Now();
    return {DbDateTime::DayStart(now), DbDateTime::NextDayStart(now)};
}

std::vector<int> todaysLapIds(SQLite::Database& db) {
    const DayRange today = todayRange();
    SQLite::Statement select(db, "SELECT id FROM Lap WHERE startDate BETWEEN ? AND ?");
    bindDate(select, 1, today.from);
    bindDate(select, 2, today.to);
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
        minute->lapMinute = query.getColumn(0).getInt();
        minute->steps = query.getColumn(1).getInt();
        minute->calories = query.getColumn(2).getDouble();
        minute->distance = query.getColumn(3).getDouble();
        minute->secondsCompleted = query.getColumn(4).getInt();
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
        second->currentSecond = query.getColumn(0).getInt();
        second->steps = query.getColumn(1).getInt();
        second->calories = query.getColumn(2).getDouble();
        second->distance = query.getColumn(3).getDouble();
        second->caloriesNoise = query.getColumn(4).getDouble();
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
    update.bind(1, minute.steps);
    update.bind(2, minute.calories);
    update.bind(3, minute.distance);
    update.bind(4, minute.secondsCompleted);
    update.bind(5, minute.lapId);
    update.bind(6, minute.lapMinute);
    update.exec();
}

void insertMinute(SQLite::Database& db, const DAOLapMinutes& minute) {
    SQLite::Statement insert(db, kInsertMinute);
    insert.bind(1, minute.lapId);
    insert.bind(2, minute.lapMinute);
    insert.exec();
}

void insertSecond(SQLite::Database& db, const DAOLapSeconds& second) {
    SQLite::Statement insert(db, kInsertSecond);
    insert.bind(1, second.lapId);
    insert.bind(2, second.currentSecond);
    insert.bind(3, second.steps);
    insert.bind(4, second.calories);
    insert.bind(5, second.distance);
    insert.bind(6, second.caloriesNoise);
    insert.exec();
}

// Runs one data-changing statement with the given binds in its own transaction.
template <typename Bind>
void execInTransaction(DatabaseConnection& connection, const char* sql, Bind&& bind) {
    connection.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        SQLite::Statement statement(db, sql);
        bind(statement);
        statement.exec();
        transaction.commit();
    });
}

void execInTransaction(DatabaseConnection& connection, const char* sql) {
    execInTransaction(connection, sql, [](SQLite::Statement&) {});
}

// Loads laps selected by `sql` (id,startDate,endDate,manual[,techDate]) for a range, with
// their minutes.
std::vector<std::unique_ptr<DAOLap>> lapsBetween(DatabaseConnection& connection, const char* sql,
                                                 const QDateTime& from, const QDateTime& to,
                                                 bool withTechDate) {
    std::vector<std::unique_ptr<DAOLap>> laps;
    const bool done = connection.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db, sql);
        bindDate(select, 1, from);
        bindDate(select, 2, to);
        while (select.executeStep()) {
            auto lap = std::make_unique<DAOLap>();
            lap->id = select.getColumn(0).getInt();
            lap->startDate = dateColumn(select.getColumn(1));
            lap->endDate = optionalDateColumn(select.getColumn(2));
            lap->techDate = withTechDate ? dateColumn(select.getColumn(4))
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

QDateTime logDateOrToday(DatabaseConnection& connection, const char* sql) {
    QDateTime result;
    connection.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db, sql);
        if (select.executeStep()) result = DbDateTime::FromText(select.getColumn(0).getText());
    });
    return DbDateTime::DayStart(result.isValid() ? result : Clock::Now());
}

void setTodaysMeasurement(DatabaseConnection& connection, const char* sql, double value) {
    const QDateTime today = Clock::TodayStart();
    execInTransaction(connection, sql, [&](SQLite::Statement& update) {
        update.bind(1, value);
        bindDate(update, 2, today);
    });
}
// The sums of today's laps entered by hand, in the units of the alarm's progress.
// They count towards the alarm as they count in the day's totals, so the progress
// read adds them and the progress stored leaves them out.
DAOSygnal todaysCorrections(DatabaseConnection& connection) {
    DAOSygnal sums;
    const DayRange today = todayRange();
    connection.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db,
                                 "SELECT total(totalCalories),total(totalDistance)/1000.0,"
                                 "total(totalSeconds),total(totalSteps) FROM Lap WHERE manual=1 "
                                 "AND startDate>=? AND startDate<?");
        SQLite::bind(select, DbDateTime::ToText(today.from), DbDateTime::ToText(today.to));
        if (!select.executeStep()) return;
        sums.calories = select.getColumn(0).getDouble();
        sums.distance = select.getColumn(1).getDouble();
        sums.activityTime = select.getColumn(2).getInt();
        sums.steps = select.getColumn(3).getInt();
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

// Layout 4: the columns and triggers that keep Lap.total* (as in db/Statistics.sql).
QString lapTotalsUpgrade() {
    const QString refresh = QStringLiteral(
        "UPDATE Lap SET (totalSteps,totalDistance,totalCalories,totalSeconds)=(SELECT "
        "total(steps),total(distance),total(calories),total(secondsCompleted) FROM LapMinutes "
        "WHERE lapId=Lap.id)");
    auto trigger = [&](const char* name, const char* event, const char* laps) {
        return QStringLiteral("CREATE TRIGGER %1 AFTER %2 BEGIN %3 WHERE id%4; END;")
            .arg(QLatin1String(name), QLatin1String(event), refresh, QLatin1String(laps));
    };
    QString sql;
    for (const char* column : {"totalSteps", "totalDistance", "totalCalories", "totalSeconds"})
        sql += QStringLiteral("ALTER TABLE Lap ADD COLUMN %1 REAL DEFAULT 0.0;").arg(column);
    return sql + refresh + QLatin1Char(';') +
           trigger("LapTotalsAfterMinuteInsert", "INSERT ON LapMinutes", "=NEW.lapId") +
           trigger("LapTotalsAfterMinuteUpdate", "UPDATE ON LapMinutes",
                   " IN (OLD.lapId,NEW.lapId)") +
           trigger("LapTotalsAfterMinuteDelete", "DELETE ON LapMinutes", "=OLD.lapId") +
           trigger("LapTotalsAfterLapInsert", "INSERT ON Lap", "=NEW.id");
}
}  // namespace

// --- Connections --------------------------------------------------------------

PedometerDBManager::PedometerDBManager()
    : options_(QStringLiteral("Options.db3"), {"SOCIAL", "BODY", "SOUNDS", "SCREEN"},
               // 1: the version number itself. 2: the steps target of the alarm.
               {QString(),
                QStringLiteral("ALTER TABLE SCREEN ADD COLUMN SYGNAL_STEPS INTEGER DEFAULT 10000")}),
      statistics_(
          QStringLiteral("Statistics.db3"),
          {"Lap", "LapMinutes", "LastFiveMinutes", "SygnalValues", "BODYLOGS", "TargetValues"},
          // 1: the indexes the history and the per-interval updates rely on,
          // missing from files of the first releases.
          {QStringLiteral("CREATE INDEX IF NOT EXISTS LapStartDate ON Lap (startDate);"
                          "CREATE INDEX IF NOT EXISTS LapMinutesLap ON LapMinutes "
                          "(lapId, lapMinute);"
                          "CREATE INDEX IF NOT EXISTS LastFiveMinutesLap ON "
                          "LastFiveMinutes (lapId);"),
           // 2: steps as a goal, and the history of the daily goal, which starts with
           // the goal set before as in force since always.
           QStringLiteral(
               "ALTER TABLE TargetValues ADD COLUMN steps INTEGER DEFAULT 10000;"
               "ALTER TABLE SygnalValues ADD COLUMN steps INTEGER DEFAULT 0;"
               "CREATE TABLE GoalHistory (since TEXT PRIMARY KEY, targetActive INTEGER, "
               "target REAL);"
               "INSERT INTO GoalHistory SELECT '0001-01-01',targetActive,CASE targetActive "
               "WHEN 1 THEN distance WHEN 2 THEN calories WHEN 3 THEN activityTime END "
               "FROM TargetValues WHERE targetActive BETWEEN 1 AND 3 LIMIT 1;"),
           // 3: laps entered by hand (corrections of a day) are marked, and the lap
           // sums get an index of their own.
           QStringLiteral("ALTER TABLE Lap ADD COLUMN manual INTEGER DEFAULT 0;"
                          "CREATE INDEX IF NOT EXISTS LapMinutesTotals ON LapMinutes "
                          "(lapId, steps, distance, calories, secondsCompleted);"),
           // 4: each lap keeps the sums of its minutes, summed once here and then kept
           // by triggers.
           lapTotalsUpgrade()}) {}

PedometerDBManager& PedometerDBManager::GetInstance() {
    static PedometerDBManager instance;
    return instance;
}

DatabaseStatus PedometerDBManager::OptionsStatus() {
    return options_.Status();
}

DatabaseStatus PedometerDBManager::StatisticsStatus() {
    return statistics_.Status();
}

DatabaseStatus PedometerDBManager::SavingProblem() {
    for (const DatabaseStatus& status : {statistics_.StatusSoFar(), options_.StatusSoFar()}) {
        if (!status.usable() || !status.lastFailure.isEmpty()) return status;
    }
    return {};
}

void PedometerDBManager::Reopen() {
    options_.Close();
    statistics_.Close();
}

void PedometerDBManager::SetReadOnly(bool readOnly) {
    options_.SetReadOnly(readOnly);
    statistics_.SetReadOnly(readOnly);
}

// --- Laps, minutes and five-second intervals --------------------------------------

std::unique_ptr<DAOLap> PedometerDBManager::CreateNewLap() {
    auto lap = std::make_unique<DAOLap>();
    lap->startDate = nowToTheSecond();
    lap->techDate = DbDateTime::DayStart(lap->startDate);
    statistics_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        // A lap of an earlier day left open (the app was closed while counting) ends where
        // its counted time ends: the new lap takes over, and history shows it finished.
        SQLite::Statement close(db,
                                "UPDATE Lap SET endDate=datetime(startDate,'+'||CAST(coalesce("
                                "totalSeconds,0) AS INTEGER)||' seconds') WHERE endDate IS NULL "
                                "AND manual=0 AND startDate<?");
        bindDate(close, 1, lap->techDate);
        close.exec();
        SQLite::Statement insert(db, "INSERT INTO LAP (startDate,endDate,techDate) VALUES (?,?,?)");
        bindDate(insert, 1, lap->startDate);
        insert.bind(2);  // NULL: the lap is open
        bindDate(insert, 3, lap->techDate);
        insert.exec();
        SQLite::Statement rowId(db, "SELECT last_insert_rowid()");
        const int id = rowId.executeStep() ? rowId.getColumn(0).getInt() : -1;
        transaction.commit();
        lap->id = id;
    });
    return lap;
}

void PedometerDBManager::FinishLap(int id) {
    const QDateTime now = nowToTheSecond();
    execInTransaction(statistics_, "UPDATE Lap SET endDate=? WHERE id=?",
                      [&](SQLite::Statement& update) {
                          bindDate(update, 1, now);
                          update.bind(2, id);
                      });
}

void PedometerDBManager::DeleteLap(int id) {
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
        for (const char* sql : {"DELETE FROM LapMinutes WHERE lapId=?",
                                "DELETE FROM LastFiveMinutes WHERE lapId=?",
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

void PedometerDBManager::ClearLapMinutes(int id) {
    execInTransaction(statistics_, "DELETE FROM LapMinutes WHERE lapId=?",
                      [&](SQLite::Statement& del) { del.bind(1, id); });
}

void PedometerDBManager::CreateNewLapMinute(const DAOLapMinutes& minute) {
    statistics_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        insertMinute(db, minute);
        transaction.commit();
    });
}

void PedometerDBManager::UpdateLapMinute(const DAOLapMinutes& minute) {
    statistics_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        updateMinute(db, minute);
        transaction.commit();
    });
}

void PedometerDBManager::CreateNewLapSecond(const DAOLapSeconds& second) {
    statistics_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        insertSecond(db, second);
        transaction.commit();
    });
}

bool PedometerDBManager::UpdateSmall(const DAOLapMinutes& minute, const DAOLapSeconds& second) {
    return statistics_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        updateMinute(db, minute);
        insertSecond(db, second);
        transaction.commit();
    });
}

bool PedometerDBManager::UpdateFull(const DAOLapMinutes& minute, const DAOLapSeconds& second,
                                    const DAOLapMinutes& next) {
    return statistics_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        updateMinute(db, minute);
        insertSecond(db, second);
        insertMinute(db, next);
        transaction.commit();
    });
}

void PedometerDBManager::ClearLapSeconds() {
    execInTransaction(statistics_, "DELETE FROM LastFiveMinutes");
}

void PedometerDBManager::GetMinutesForLap(DAOLap& lap) {
    // Read under the connection's lock, append under the lap's: never both at once.
    std::vector<std::unique_ptr<DAOLapMinutes>> minutes;
    const int lapId = lap.id;
    const bool done = statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement query(db, kSelectMinutes);
        minutes = readMinutes(query, lapId);
    });
    if (done) appendMinutes(lap, std::move(minutes));
}

void PedometerDBManager::GetSecondsForLap(DAOLap& lap) {
    std::vector<std::unique_ptr<DAOLapSeconds>> seconds;
    const int lapId = lap.id;
    const bool done =
        statistics_.Run([&](SQLite::Database& db) { seconds = readSeconds(db, lapId); });
    if (done) appendSeconds(lap, std::move(seconds));
}

std::unique_ptr<DAOLap> PedometerDBManager::GetTodayLastLap() {
    std::unique_ptr<DAOLap> lap;
    const DayRange today = todayRange();
    const bool done = statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db,
                                 "SELECT id,startDate,endDate FROM Lap WHERE startDate BETWEEN ? "
                                 "AND ? AND manual=0 ORDER BY startDate DESC LIMIT 1");
        bindDate(select, 1, today.from);
        bindDate(select, 2, today.to);
        if (!select.executeStep()) return;
        lap = std::make_unique<DAOLap>();
        lap->id = select.getColumn(0).getInt();
        lap->startDate = dateColumn(select.getColumn(1));
        lap->endDate = optionalDateColumn(select.getColumn(2));
        lap->techDate = DbDateTime::DayStart(lap->startDate);
        SQLite::Statement minutes(db, kSelectMinutes);
        lap->minutes = readMinutes(minutes, lap->id);
        lap->seconds = readSeconds(db, lap->id);
    });
    if (!done) lap.reset();
    return lap;
}

std::vector<std::unique_ptr<DAOLap>> PedometerDBManager::GetLapsForDate(const QDateTime& day) {
    return lapsBetween(statistics_,
                       "SELECT id,startDate,endDate,manual FROM Lap WHERE startDate BETWEEN ? "
                       "AND ? ORDER BY startDate ASC",
                       day, DbDateTime::NextDayStart(day), false);
}

std::unique_ptr<DAOLap> PedometerDBManager::GetLap(int id) {
    std::unique_ptr<DAOLap> lap;
    const bool done = statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db,
                                 "SELECT startDate,endDate,techDate,manual FROM Lap WHERE id=?");
        select.bind(1, id);
        if (!select.executeStep()) return;
        lap = std::make_unique<DAOLap>();
        lap->id = id;
        lap->startDate = dateColumn(select.getColumn(0));
        lap->endDate = optionalDateColumn(select.getColumn(1));
        lap->techDate = dateColumn(select.getColumn(2));
        lap->manual = select.getColumn(3).getInt() == 1;
        SQLite::Statement minutes(db, kSelectMinutes);
        lap->minutes = readMinutes(minutes, id);
    });
    if (!done) lap.reset();
    return lap;
}

std::vector<std::unique_ptr<DAOLap>> PedometerDBManager::GetLapsForPeriod(const QDateTime& from,
                                                                          const QDateTime& to) {
    return lapsBetween(statistics_,
                       "SELECT id,startDate,endDate,manual,techDate FROM Lap WHERE startDate "
                       "BETWEEN ? AND ? ORDER BY startDate ASC",
                       from, DbDateTime::NextDayStart(to), true);
}

std::vector<QDateTime> PedometerDBManager::GetAllDays() {
    std::vector<QDateTime> days;
    const bool done = statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db, "SELECT DISTINCT  techDate FROM Lap ORDER BY techDate DESC");
        while (select.executeStep()) days.push_back(dateColumn(select.getColumn(0)));
    });
    if (!done) days.clear();
    return days;
}

void PedometerDBManager::ResetLogs(const QDateTime& from, const QDateTime& to) {
    const QDateTime until = to.addDays(1);
    statistics_.Run([&](SQLite::Database& db) {
        std::vector<int> ids;
        SQLite::Statement select(db, "SELECT id FROM Lap WHERE startDate BETWEEN ? AND ?");
        bindDate(select, 1, from);
        bindDate(select, 2, until);
        while (select.executeStep()) ids.push_back(select.getColumn(0).getInt());

        SQLite::Transaction transaction(db);
        for (const int id : ids)
            db.exec("DELETE FROM LapMinutes WHERE lapId=" + std::to_string(id));
        SQLite::Statement del(db, "DELETE FROM Lap WHERE startDate BETWEEN ? AND ?");
        bindDate(del, 1, from);
        bindDate(del, 2, until);
        del.exec();
        transaction.commit();
    });
}

double PedometerDBManager::GetTodayDistance() {
    return sumOverTodaysLaps<double>(statistics_,
                                     "SELECT sum(distance) AS Sum FROM LapMinutes WHERE lapId=");
}

double PedometerDBManager::GetTodayCalories() {
    return sumOverTodaysLaps<double>(statistics_,
                                     "SELECT sum(calories) AS Sum FROM LapMinutes WHERE lapId=");
}

int PedometerDBManager::GetTodayActivity() {
    return sumOverTodaysLaps<int>(
        statistics_, "SELECT sum(secondsCompleted) AS Sum FROM LapMinutes WHERE lapId=");
}

int PedometerDBManager::GetTodaySteps() {
    return sumOverTodaysLaps<int>(statistics_,
                                  "SELECT sum(steps) AS Sum FROM LapMinutes WHERE lapId=");
}

// --- Goal alarm progress ----------------------------------------------------------

DAOSygnal PedometerDBManager::GetTodaySygnal() {
    DAOSygnal sygnal;
    const DayRange today = todayRange();
    bool found = false;
    const bool queried = statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db,
                                 "SELECT calories,distance,activityTime,steps FROM SygnalValues "
                                 "WHERE "
                                 "sygnalDate BETWEEN ? AND ? ORDER BY sygnalDate DESC LIMIT 1");
        bindDate(select, 1, today.from);
        bindDate(select, 2, today.to);
        if (!select.executeStep()) return;
        sygnal.calories = select.getColumn(0).getDouble();
        sygnal.distance = select.getColumn(1).getDouble();
        sygnal.activityTime = select.getColumn(2).getInt();
        sygnal.steps = select.getColumn(3).getInt();
        found = true;
    });
    if (!queried) return sygnal;
    if (found) return sygnal + todaysCorrections(statistics_);

    // First request of the day: earlier days' progress is dropped, today's starts at 0.
    ClearSygnals();
    const QDateTime now = nowToTheSecond();
    execInTransaction(statistics_,
                      "INSERT INTO SygnalValues (calories,distance,activityTime,sygnalDate) "
                      "VALUES (0.0,0.0,0,?)",
                      [&](SQLite::Statement& insert) { bindDate(insert, 1, now); });
    return todaysCorrections(statistics_);
}

void PedometerDBManager::UpdateSygnal(const DAOSygnal& sygnal) {
    const DAOSygnal corrections = todaysCorrections(statistics_);
    execInTransaction(statistics_,
                      "UPDATE SygnalValues SET  calories=?,distance=?,activityTime=?,steps=?",
                      [&](SQLite::Statement& update) {
                          SQLite::bind(update, sygnal.calories - corrections.calories,
                                       sygnal.distance - corrections.distance,
                                       sygnal.activityTime - corrections.activityTime,
                                       sygnal.steps - corrections.steps);
                      });
}

void PedometerDBManager::ClearSygnals() {
    execInTransaction(statistics_, "DELETE FROM SygnalValues");
}

// --- Body log -----------------------------------------------------------------------

DAOBodyLog PedometerDBManager::GetTodayBodyLog() {
    DAOBodyLog log;
    const QDateTime today = Clock::TodayStart();
    log.logDate = today;
    statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(
            db, "SELECT logDate,weight,chest,waist,hip FROM BODYLOGS WHERE logDate=?");
        bindDate(select, 1, today);
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
        bindDate(insert, 1, today);
        for (int i = 2; i <= 5; ++i) insert.bind(i, 0.0);
        insert.exec();
        transaction.commit();
    });
    return log;
}

void PedometerDBManager::SetTodayWeight(double value) {
    setTodaysMeasurement(statistics_, "UPDATE BODYLOGS SET  weight=? WHERE logDate=?", value);
}

void PedometerDBManager::SetTodayChest(double value) {
    setTodaysMeasurement(statistics_, "UPDATE BODYLOGS SET  chest=? WHERE logDate=?", value);
}

void PedometerDBManager::SetTodayWaist(double value) {
    setTodaysMeasurement(statistics_, "UPDATE BODYLOGS SET  waist=? WHERE logDate=?", value);
}

void PedometerDBManager::SetTodayHip(double value) {
    setTodaysMeasurement(statistics_, "UPDATE BODYLOGS SET  hip=? WHERE logDate=?", value);
}

void PedometerDBManager::ResetWheight() {
    execInTransaction(statistics_, "UPDATE BODYLOGS SET  weight=0.0");
}

void PedometerDBManager::ResetChest() {
    execInTransaction(statistics_, "UPDATE BODYLOGS SET  chest=0.0");
}

void PedometerDBManager::ResetWaist() {
    execInTransaction(statistics_, "UPDATE BODYLOGS SET  waist=0.0");
}

void PedometerDBManager::ResetHips() {
    execInTransaction(statistics_, "UPDATE BODYLOGS SET  hip=0.0");
}

std::vector<DAOBodyLog> PedometerDBManager::GetBodyLogs() {
    std::vector<DAOBodyLog> logs;
    const bool done = statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(
            db, "SELECT logDate,weight,chest,waist,hip FROM BODYLOGS ORDER BY logDate");
        while (select.executeStep()) {
            DAOBodyLog log;
            log.logDate = dateColumn(select.getColumn(0));
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

QDateTime PedometerDBManager::GetLastLogDate() {
    return logDateOrToday(statistics_,
                          "SELECT logDate FROM BODYLOGS ORDER BY logDate DESC LIMIT 1");
}

QDateTime PedometerDBManager::GetFirstLogDate() {
    return logDateOrToday(statistics_, "SELECT logDate FROM BODYLOGS ORDER BY logDate ASC LIMIT 1");
}

// --- Goals ----------------------------------------------------------------------------

void PedometerDBManager::LoadTargets() {
    LoadTargets(DAOTarget::GetInstance());
}

void PedometerDBManager::LoadTargets(DAOTarget& target) {
    statistics_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db,
                                 "SELECT targetActive,calories,activityTime,distance,wheight,hips,"
                                 "chest,waist,wheightTarget,steps FROM TargetValues LIMIT 1");
        if (!select.executeStep()) return;
        target.targetActive = select.getColumn(0).getInt();
        target.calories = select.getColumn(1).getInt();
        target.activityTime = select.getColumn(2).getInt();
        target.distance = select.getColumn(3).getDouble();
        target.wheight = select.getColumn(4).getDouble();
        target.hips = select.getColumn(5).getDouble();
        target.chest = select.getColumn(6).getDouble();
        target.waist = select.getColumn(7).getDouble();
        target.wheightTarget = select.getColumn(8).getInt();
        target.steps = select.getColumn(9).getInt();
    });
}

void PedometerDBManager::SaveTagets() {
    SaveTagets(DAOTarget::GetInstance());
}

void PedometerDBManager::SaveTagets(const DAOTarget& target) {
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
        if (before.executeStep()) {
            previous = {before.getColumn(0).getInt(), before.getColumn(1).getDouble()};
        }
        if (!(previous == goal)) {
            SQLite::Statement insert(db, "INSERT INTO GoalHistory VALUES (?,?,?)");
            SQLite::bind(insert, today.toStdString(), goal.kind, goal.target);
            insert.exec();
        }
        transaction.commit();
    });
}

// --- Settings, body profile, social -------------------------------------------------

void PedometerDBManager::LoadOptions() {
    LoadOptions(PedometerOptions::GetInstance());
}

void PedometerDBManager::LoadOptions(PedometerOptions& o) {
    // Each table holds one row, read on its own: the sound switches still load when the
    // settings row is missing (and are not saved back with their defaults).
    options_.Run([&](SQLite::Database& db) {
        for (const std::string table : {"SOUNDS", "SCREEN"}) {
            std::string sql;
            for (const OptionsColumns::Column& column : OptionsColumns::All()) {
                if (column.table == table)
                    sql += std::string(sql.empty() ? "SELECT " : ",") + column.name;
            }
            SQLite::Statement select(db, sql + " FROM " + table);
            if (!select.executeStep()) continue;
            int index = 0;
            for (const OptionsColumns::Column& column : OptionsColumns::All()) {
                if (column.table != table) continue;
                const SQLite::Column value = select.getColumn(index++);
                std::visit(
                    [&](auto member) {
                        using Value =
                            typename std::remove_reference_t<decltype(o.*member)>::value_type;
                        if constexpr (std::is_same_v<Value, bool>) {
                            o.*member = isSet(value);
                        } else if constexpr (std::is_same_v<Value, int>) {
                            o.*member = value.getInt();
                        } else {
                            o.*member = value.getDouble();
                        }
                    },
                    column.member);
            }
        }
    });
}

void PedometerDBManager::SaveOptions() {
    SaveOptions(PedometerOptions::GetInstance());
}

void PedometerDBManager::SaveOptions(const PedometerOptions& o) {
    // Both tables in one transaction: the settings are saved whole or not at all.
    options_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        for (const std::string table : {"SOUNDS", "SCREEN"}) {
            std::string sql;
            for (const OptionsColumns::Column& column : OptionsColumns::All()) {
                if (column.table != table) continue;
                sql += std::string(sql.empty() ? "UPDATE " + table + " SET " : ",") + column.name +
                       "=?";
            }
            SQLite::Statement update(db, sql);
            int index = 1;
            for (const OptionsColumns::Column& column : OptionsColumns::All()) {
                if (column.table != table) continue;
                std::visit(
                    [&](auto member) {
                        const auto value = (o.*member).load();
                        if constexpr (std::is_same_v<decltype(value), const bool>) {
                            update.bind(index++, flag(value));
                        } else {
                            update.bind(index++, value);
                        }
                    },
                    column.member);
            }
            update.exec();
        }
        transaction.commit();
    });
}

void PedometerDBManager::LoadBody() {
    Body& body = Body::GetInstance();
    options_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db,
                                 "SELECT MEN,AGE,HEIGHT,WEIGHT,WALK_SIZE,JOG_SIZE,RUN_SIZE,"
                                 "WALK_COEF,JOG_COEF,RUN_COEF FROM BODY");
        if (!select.executeStep()) return;
        body.setMen(select.getColumn(0).getInt());
        body.setAge(select.getColumn(1).getInt());
        body.setHeight(select.getColumn(2).getDouble());
        body.setWeight(select.getColumn(3).getDouble());
        body.setWalkStepSize(select.getColumn(4).getDouble());
        body.setJogStepSize(select.getColumn(5).getDouble());
        body.setRunStepSize(select.getColumn(6).getDouble());
        body.setWalkCoef(select.getColumn(7).getDouble());
        body.setJogCoef(select.getColumn(8).getDouble());
        body.setRunCoef(select.getColumn(9).getDouble());
    });
}

void PedometerDBManager::SaveBody() {
    const Body& body = Body::GetInstance();
    execInTransaction(options_,
                      "UPDATE BODY SET  MEN=?,AGE=?,HEIGHT=?,WEIGHT=?,WALK_SIZE=?,JOG_SIZE=?,"
                      "RUN_SIZE=?,WALK_COEF=?,JOG_COEF=?,RUN_COEF=?",
                      [&](SQLite::Statement& update) {
                          update.bind(1, body.storedMen());
                          update.bind(2, body.storedAge());
                          update.bind(3, body.storedHeight());
                          update.bind(4, body.storedWeight());
                          update.bind(5, body.storedWalkStepSize());
                          update.bind(6, body.storedJogStepSize());
                          update.bind(7, body.storedRunStepSize());
                          update.bind(8, body.storedWalkCoef());
                          update.bind(9, body.storedJogCoef());
                          update.bind(10, body.storedRunCoef());
                      });
}

std::unique_ptr<DAOSocial> PedometerDBManager::GetDAOSocialN() {
    auto social = std::make_unique<DAOSocial>();
    options_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(
            db, "SELECT EXPORT,SHARE,TWIT_LOGIN,TWIT_PASS,FACEB_LOGIN,FACEB_PASS FROM SOCIAL");
        if (!select.executeStep()) return;
        social->export_ = QString::fromUtf8(select.getColumn(0).getText());
        social->share = QString::fromUtf8(select.getColumn(1).getText());
        social->twitLogin = QString::fromUtf8(select.getColumn(2).getText());
        social->twitPass = QString::fromUtf8(select.getColumn(3).getText());
        social->facebLogin = QString::fromUtf8(select.getColumn(4).getText());
        social->facebPass = QString::fromUtf8(select.getColumn(5).getText());
    });
    return social;
}

void PedometerDBManager::SetSocial(const DAOSocial& social) {
    execInTransaction(options_,
                      "UPDATE SOCIAL SET  EXPORT=?,SHARE=?,TWIT_LOGIN=?,TWIT_PASS=?,FACEB_LOGIN=?,"
                      "FACEB_PASS=?",
                      [&](SQLite::Statement& update) {
                          update.bind(1, social.export_.toStdString());
                          update.bind(2, social.share.toStdString());
                          update.bind(3, social.twitLogin.toStdString());
                          update.bind(4, social.twitPass.toStdString());
                          update.bind(5, social.facebLogin.toStdString());
                          update.bind(6, social.facebPass.toStdString());
                      });
}

// --- Bulk import -------------------------------------------------------------------------

bool PedometerDBManager::ImportHistory(std::vector<std::unique_ptr<DAOLap>>& laps,
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
            bindDate(lapInsert, 1, lap->startDate);
            if (lap->endDate) {
                bindDate(lapInsert, 2, *lap->endDate);
            } else {
                lapInsert.bind(2);
            }
            bindDate(lapInsert, 3, lap->techDate);
            lapInsert.bind(4, lap->manual ? 1 : 0);
            lapInsert.exec();
            const int id = static_cast<int>(db.getLastInsertRowid());
            ids.push_back(id);
            for (const auto& minute : lap->minutes) {
                minuteInsert.reset();
                minuteInsert.bind(1, id);
                minuteInsert.bind(2, minute->lapMinute);
                minuteInsert.bind(3, minute->steps);
                minuteInsert.bind(4, minute->calories);
                minuteInsert.bind(5, minute->distance);
                minuteInsert.bind(6, minute->secondsCompleted);
                minuteInsert.exec();
            }
            for (const auto& second : lap->seconds) {
                secondInsert.reset();
                secondInsert.bind(1, id);
                secondInsert.bind(2, second->currentSecond);
                secondInsert.bind(3, second->steps);
                secondInsert.bind(4, second->calories);
                secondInsert.bind(5, second->distance);
                secondInsert.bind(6, second->caloriesNoise);
                secondInsert.exec();
            }
        }
        SQLite::Statement logInsert(
            db, "INSERT INTO BODYLOGS (logDate,weight,chest,waist,hip) VALUES (?,?,?,?,?)");
        for (const DAOBodyLog& log : bodyLogs) {
            logInsert.reset();
            bindDate(logInsert, 1, DbDateTime::DayStart(log.logDate));
            logInsert.bind(2, log.weight);
            logInsert.bind(3, log.chest);
            logInsert.bind(4, log.waist);
            logInsert.bind(5, log.hip);
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

QString PedometerDBManager::GetPreference(const QString& name, const QString& fallback) {
    QString value = fallback;
    options_.Run([&](SQLite::Database& db) {
        if (!db.tableExists("Preferences")) return;
        SQLite::Statement select(db, "SELECT value FROM Preferences WHERE name=?");
        select.bind(1, name.toStdString());
        if (select.executeStep()) value = QString::fromUtf8(select.getColumn(0).getText());
    });
    return value;
}

bool PedometerDBManager::SetPreference(const QString& name, const QString& value) {
    return options_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        // Files seeded by earlier versions have no such table yet.
        db.exec(
            "CREATE TABLE IF NOT EXISTS Preferences (name TEXT PRIMARY KEY, value TEXT "
            "NOT NULL)");
        SQLite::Statement upsert(db,
                                 "INSERT OR REPLACE INTO Preferences (name, value) VALUES (?, ?)");
        upsert.bind(1, name.toStdString());
        upsert.bind(2, value.toStdString());
        upsert.exec();
        transaction.commit();
    });
}
