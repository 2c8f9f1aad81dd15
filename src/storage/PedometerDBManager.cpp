#include "PedometerDBManager.h"

#include "AlarmStore.h"
#include "Body.h"
#include "BodyLogStore.h"
#include "GoalStore.h"
#include "LapStore.h"
#include "SettingsStore.h"

namespace {
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
    : options_(
          QStringLiteral("Options.db3"), {"SOCIAL", "BODY", "SOUNDS", "SCREEN"},
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
           lapTotalsUpgrade()}),
      laps_(std::make_unique<LapStore>(statistics_)),
      alarm_(std::make_unique<AlarmStore>(statistics_)),
      bodyLog_(std::make_unique<BodyLogStore>(statistics_)),
      goals_(std::make_unique<GoalStore>(statistics_, *laps_)),
      settings_(std::make_unique<SettingsStore>(options_)) {}

PedometerDBManager::~PedometerDBManager() = default;

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

// --- Laps, minutes and five-second intervals ---------------------------------

std::unique_ptr<DAOLap> PedometerDBManager::CreateNewLap() {
    return laps_->CreateNewLap();
}

void PedometerDBManager::FinishLap(int id) {
    laps_->FinishLap(id);
}

void PedometerDBManager::DeleteLap(int id) {
    laps_->DeleteLap(id);
}

void PedometerDBManager::ClearLapMinutes(int id) {
    laps_->ClearLapMinutes(id);
}

void PedometerDBManager::CreateNewLapMinute(const DAOLapMinutes& minute) {
    laps_->CreateNewLapMinute(minute);
}

void PedometerDBManager::UpdateLapMinute(const DAOLapMinutes& minute) {
    laps_->UpdateLapMinute(minute);
}

void PedometerDBManager::CreateNewLapSecond(const DAOLapSeconds& second) {
    laps_->CreateNewLapSecond(second);
}

bool PedometerDBManager::UpdateSmall(const DAOLapMinutes& minute, const DAOLapSeconds& second) {
    return laps_->UpdateSmall(minute, second);
}

bool PedometerDBManager::UpdateFull(const DAOLapMinutes& minute, const DAOLapSeconds& second,
                                    const DAOLapMinutes& next) {
    return laps_->UpdateFull(minute, second, next);
}

void PedometerDBManager::ClearLapSeconds() {
    laps_->ClearLapSeconds();
}

void PedometerDBManager::GetMinutesForLap(DAOLap& lap) {
    laps_->GetMinutesForLap(lap);
}

void PedometerDBManager::GetSecondsForLap(DAOLap& lap) {
    laps_->GetSecondsForLap(lap);
}

std::unique_ptr<DAOLap> PedometerDBManager::GetTodayLastLap() {
    return laps_->GetTodayLastLap();
}

std::vector<std::unique_ptr<DAOLap>> PedometerDBManager::GetLapsForDate(const QDateTime& day) {
    return laps_->GetLapsForDate(day);
}

std::vector<std::unique_ptr<DAOLap>> PedometerDBManager::GetLapsForPeriod(const QDateTime& from,
                                                                          const QDateTime& to) {
    return laps_->GetLapsForPeriod(from, to);
}

std::vector<QDateTime> PedometerDBManager::GetAllDays() {
    return laps_->GetAllDays();
}

std::vector<std::pair<QDateTime, int>> PedometerDBManager::GetLatestLapSteps(int count) {
    return laps_->GetLatestLapSteps(count);
}

std::vector<DAODayTotals> PedometerDBManager::GetDayTotals(const QDate& from, const QDate& to) {
    return laps_->GetDayTotals(from, to);
}

std::unique_ptr<DAOLap> PedometerDBManager::GetLap(int id) {
    return laps_->GetLap(id);
}

void PedometerDBManager::ResetLogs(const QDateTime& from, const QDateTime& to) {
    laps_->ResetLogs(from, to);
}

double PedometerDBManager::GetTodayDistance() {
    return laps_->GetTodayDistance();
}

double PedometerDBManager::GetTodayCalories() {
    return laps_->GetTodayCalories();
}

int PedometerDBManager::GetTodayActivity() {
    return laps_->GetTodayActivity();
}

int PedometerDBManager::GetTodaySteps() {
    return laps_->GetTodaySteps();
}

// --- Goal alarm progress -----------------------------------------------------

DAOSygnal PedometerDBManager::GetTodaySygnal() {
    return alarm_->GetTodaySygnal();
}

void PedometerDBManager::UpdateSygnal(const DAOSygnal& sygnal) {
    alarm_->UpdateSygnal(sygnal);
}

void PedometerDBManager::ClearSygnals() {
    alarm_->ClearSygnals();
}

// --- Body log ----------------------------------------------------------------

DAOBodyLog PedometerDBManager::GetTodayBodyLog() {
    return bodyLog_->GetTodayBodyLog();
}

void PedometerDBManager::SetTodayWeight(double value) {
    bodyLog_->SetTodayWeight(value);
}

void PedometerDBManager::SetTodayChest(double value) {
    bodyLog_->SetTodayChest(value);
}

void PedometerDBManager::SetTodayWaist(double value) {
    bodyLog_->SetTodayWaist(value);
}

void PedometerDBManager::SetTodayHip(double value) {
    bodyLog_->SetTodayHip(value);
}

void PedometerDBManager::ResetWheight() {
    bodyLog_->ResetWheight();
}

void PedometerDBManager::ResetChest() {
    bodyLog_->ResetChest();
}

void PedometerDBManager::ResetWaist() {
    bodyLog_->ResetWaist();
}

void PedometerDBManager::ResetHips() {
    bodyLog_->ResetHips();
}

std::vector<DAOBodyLog> PedometerDBManager::GetBodyLogs() {
    return bodyLog_->GetBodyLogs();
}

QDateTime PedometerDBManager::GetLastLogDate() {
    return bodyLog_->GetLastLogDate();
}

QDateTime PedometerDBManager::GetFirstLogDate() {
    return bodyLog_->GetFirstLogDate();
}

// --- Goals -------------------------------------------------------------------

void PedometerDBManager::LoadTargets() {
    goals_->LoadTargets(DAOTarget::GetInstance());
}

void PedometerDBManager::LoadTargets(DAOTarget& target) {
    goals_->LoadTargets(target);
}

void PedometerDBManager::SaveTagets() {
    goals_->SaveTagets(DAOTarget::GetInstance());
}

void PedometerDBManager::SaveTagets(const DAOTarget& target) {
    goals_->SaveTagets(target);
}

std::vector<DatedGoal> PedometerDBManager::GetGoalHistory() {
    return goals_->GetGoalHistory();
}

GoalStreaks PedometerDBManager::GetGoalStreaks(const QDate& from, const QDate& to) {
    return goals_->GetGoalStreaks(from, to);
}

// --- Settings, body profile, social ------------------------------------------

void PedometerDBManager::LoadOptions() {
    settings_->LoadOptions(PedometerOptions::GetInstance());
}

void PedometerDBManager::LoadOptions(PedometerOptions& options) {
    settings_->LoadOptions(options);
}

void PedometerDBManager::SaveOptions() {
    settings_->SaveOptions(PedometerOptions::GetInstance());
}

void PedometerDBManager::SaveOptions(const PedometerOptions& options) {
    settings_->SaveOptions(options);
}

void PedometerDBManager::LoadBody() {
    settings_->LoadBody(Body::GetInstance());
}

void PedometerDBManager::SaveBody() {
    settings_->SaveBody(Body::GetInstance());
}

std::unique_ptr<DAOSocial> PedometerDBManager::GetDAOSocialN() {
    return settings_->GetDAOSocialN();
}

void PedometerDBManager::SetSocial(const DAOSocial& social) {
    settings_->SetSocial(social);
}

QString PedometerDBManager::GetPreference(const QString& name, const QString& fallback) {
    return settings_->GetPreference(name, fallback);
}

bool PedometerDBManager::SetPreference(const QString& name, const QString& value) {
    return settings_->SetPreference(name, value);
}

// --- Bulk import -------------------------------------------------------------

bool PedometerDBManager::ImportHistory(std::vector<std::unique_ptr<DAOLap>>& laps,
                                       const std::vector<DAOBodyLog>& bodyLogs) {
    return laps_->ImportHistory(laps, bodyLogs);
}
