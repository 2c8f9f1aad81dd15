#pragma once

#include <QDateTime>
#include <memory>
#include <vector>

#include "DAOBodyLog.h"
#include "DAODayTotals.h"
#include "DAOLap.h"
#include "DAOLapMinutes.h"
#include "DAOLapSeconds.h"
#include "DAOSocial.h"
#include "DAOSygnal.h"
#include "DAOTarget.h"
#include "DailyGoal.h"
#include "DatabaseConnection.h"
#include "DatabaseStatus.h"
#include "GoalStreaks.h"
#include "PedometerOptions.h"

class AlarmStore;
class BodyLogStore;
class GoalStore;
class LapStore;
class SettingsStore;

// The only gateway to the two databases in the data folder: the settings
// (Options.db3) and the statistics (Statistics.db3).
//
// Both are opened on first use and seeded from the resources when missing (see
// DatabaseConnection). Each operation runs one fixed statement sequence under its
// connection's lock, so the updater thread and the GUI thread may call any of them
// at the same time. Nothing is reported upward: an operation on an unusable database
// or a statement that fails changes nothing and leaves results at their defaults
// (empty lists, zero sums, records with their constructors' values). Whether a
// database is usable, and why not, comes from OptionsStatus()/StatisticsStatus().
//
// "Now" and "today" come from Clock; today's range runs from today 00:00:00 to
// tomorrow 00:00:00, both ends included.
//
// Each section below is kept by a class of its own (LapStore, AlarmStore,
// BodyLogStore, GoalStore, SettingsStore) working on one of the two connections; the
// manager owns them and forwards.
class PedometerDBManager {
public:
    static PedometerDBManager& GetInstance();

    PedometerDBManager(const PedometerDBManager&) = delete;
    PedometerDBManager& operator=(const PedometerDBManager&) = delete;

    // --- Connections ---------------------------------------------------------
    DatabaseStatus OptionsStatus();
    DatabaseStatus StatisticsStatus();
    // The first database that does not save what it is given (unusable, or a write
    // failed since it was opened); a default status when both save. It does not wait
    // for a damage check still running.
    DatabaseStatus SavingProblem();
    // The statistics database itself, for whole-table work such as export and import.
    DatabaseConnection& StatisticsConnection() { return statistics_; }
    DatabaseConnection& OptionsConnection() { return options_; }
    bool IsOptionsUsable() { return OptionsStatus().usable(); }
    bool IsStatisticsUsable() { return StatisticsStatus().usable(); }
    // Closes both files; the next operation opens them again under the current
    // AppPaths::Home() (after the data folder changed, or to retry after a failure).
    void Reopen();
    // Opens the files without write access from the next opening on (tools that
    // only read; a missing file is then not seeded).
    void SetReadOnly(bool readOnly);

    // --- Laps, minutes and five-second intervals (statistics) ----------------
    // Stores a lap started now, open (no end date). The record has id -1 if that
    // failed.
    std::unique_ptr<DAOLap> CreateNewLap();
    void FinishLap(int id);
    void DeleteLap(int id);
    void ClearLapMinutes(int id);
    void CreateNewLapMinute(const DAOLapMinutes& minute);
    void UpdateLapMinute(const DAOLapMinutes& minute);
    void CreateNewLapSecond(const DAOLapSeconds& second);
    // The per-interval writes, each one transaction: the minute's new values and the
    // interval; UpdateFull also creates the next minute's row.
    // Both return whether the interval was stored.
    bool UpdateSmall(const DAOLapMinutes& minute, const DAOLapSeconds& second);
    bool UpdateFull(const DAOLapMinutes& minute, const DAOLapSeconds& second,
                    const DAOLapMinutes& next);
    void ClearLapSeconds();
    // Append the stored records to the lap's lists (under its lock).
    void GetMinutesForLap(DAOLap& lap);
    void GetSecondsForLap(DAOLap& lap);
    // Today's latest lap with its minutes and intervals; null when today has none.
    std::unique_ptr<DAOLap> GetTodayLastLap();
    // Laps started from `day` (as given) to the next midnight, with their minutes.
    std::vector<std::unique_ptr<DAOLap>> GetLapsForDate(const QDateTime& day);
    // Laps started from `from` (as given) to the midnight after `to`'s day, with
    // their minutes.
    std::vector<std::unique_ptr<DAOLap>> GetLapsForPeriod(const QDateTime& from,
                                                          const QDateTime& to);
    // Every day with a lap, newest first, each at 00:00:00.
    std::vector<QDateTime> GetAllDays();
    // The start and steps of the latest `count` laps with steps, newest first. One query on
    // the laps' stored sums, so a screen can offer them as it opens.
    std::vector<std::pair<QDateTime, int>> GetLatestLapSteps(int count);
    // One row per day from `from` to `to` (both days whole) that has a lap started in
    // it, oldest first: the sums of its laps' minutes. A lap belongs to the day it
    // started on, so a row stored at midnight counts for the day it opens. Days without
    // laps have no row; an invalid or reversed range gives none. One grouped query,
    // cheap enough for years of history.
    std::vector<DAODayTotals> GetDayTotals(const QDate& from, const QDate& to);
    // The lap with this id and its minutes; null when there is none.
    std::unique_ptr<DAOLap> GetLap(int id);
    // Deletes the laps started from `from` to `to` plus one day, and their minutes.
    void ResetLogs(const QDateTime& from, const QDateTime& to);
    double GetTodayDistance();  // metres
    double GetTodayCalories();  // kcal
    int GetTodayActivity();     // seconds
    int GetTodaySteps();

    // --- Goal alarm progress (statistics) ------------------------------------
    // Today's progress, with today's laps entered by hand counted in (they are
    // taken out again when progress is stored); on the first request of a day the
    // old rows are dropped and a zero row is started.
    DAOSygnal GetTodaySygnal();
    void UpdateSygnal(const DAOSygnal& sygnal);
    void ClearSygnals();

    // --- Body log (statistics) -----------------------------------------------
    // Today's measurements; a zero row for today is created when there is none.
    DAOBodyLog GetTodayBodyLog();
    // Change today's row, which GetTodayBodyLog() must have created.
    void SetTodayWeight(double value);
    void SetTodayChest(double value);
    void SetTodayWaist(double value);
    void SetTodayHip(double value);
    // Set one measurement to 0.0 (not measured) in every row.
    void ResetWheight();
    void ResetChest();
    void ResetWaist();
    void ResetHips();
    // Every row, oldest first.
    std::vector<DAOBodyLog> GetBodyLogs();
    // The newest / oldest log day at 00:00:00; today when there is none.
    QDateTime GetLastLogDate();
    QDateTime GetFirstLogDate();

    // --- Goals (statistics) ----------------------------------------------------
    // Into and from DAOTarget::GetInstance(), or the given record.
    void LoadTargets();
    void LoadTargets(DAOTarget& target);
    // Saving also notes the daily goal in force from today on in the goal history.
    void SaveTagets();
    void SaveTagets(const DAOTarget& target);
    // The daily goal's history, oldest first: from which day on each goal held.
    std::vector<DatedGoal> GetGoalHistory();
    // The runs of days with the daily goal reached from `from` to `to` (both whole),
    // each day judged by the goal then in force (GoalStreaks). An invalid `from` starts
    // at the first day with a lap. Reads the days' sums in one query.
    GoalStreaks GetGoalStreaks(const QDate& from, const QDate& to);

    // --- Settings, body profile, social (settings) ---------------------------
    // Into and from PedometerOptions::GetInstance(), or the given record. Loading
    // leaves the record as it is when the settings rows are missing.
    void LoadOptions();
    void LoadOptions(PedometerOptions& options);
    void SaveOptions();
    void SaveOptions(const PedometerOptions& options);
    // Into and from Body::GetInstance().
    void LoadBody();
    void SaveBody();
    std::unique_ptr<DAOSocial> GetDAOSocialN();
    void SetSocial(const DAOSocial& social);
    // Settings beyond the settings record, by name ("detector", ...): the stored text,
    // or `fallback` when there is none or the file cannot be read. SetPreference
    // returns false when the value could not be stored.
    QString GetPreference(const QString& name, const QString& fallback = {});
    bool SetPreference(const QString& name, const QString& value);

    // --- Bulk import (statistics) ----------------------------------------------
    // Stores finished history in one transaction: each lap with its minutes and
    // five-second records (the lap ids are assigned here), and the body logs. Used to
    // fill a data folder with history; returns false if nothing was stored.
    bool ImportHistory(std::vector<std::unique_ptr<DAOLap>>& laps,
                       const std::vector<DAOBodyLog>& bodyLogs);

private:
    PedometerDBManager();
    ~PedometerDBManager();

    DatabaseConnection options_;
    DatabaseConnection statistics_;
    // The sections, made after the connections they work on.
    std::unique_ptr<LapStore> laps_;
    std::unique_ptr<AlarmStore> alarm_;
    std::unique_ptr<BodyLogStore> bodyLog_;
    std::unique_ptr<GoalStore> goals_;
    std::unique_ptr<SettingsStore> settings_;
};
