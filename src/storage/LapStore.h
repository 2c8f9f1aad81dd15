#pragma once

#include <QDateTime>
#include <memory>
#include <utility>
#include <vector>

#include "DAOBodyLog.h"
#include "DAODayTotals.h"
#include "DAOLap.h"
#include "DAOLapMinutes.h"
#include "DAOLapSeconds.h"

class DatabaseConnection;

// The laps, their minutes and five-second intervals in the statistics database, and
// the sums read from them (today's, per day). PedometerDBManager forwards to it and
// documents each call; failures behave as described there (nothing stored, defaults
// returned). Safe on any thread: every call runs under the connection's lock.
class LapStore {
public:
    explicit LapStore(DatabaseConnection& statistics);

    std::unique_ptr<DAOLap> CreateNewLap();
    void FinishLap(int id);
    void DeleteLap(int id);
    void ClearLapMinutes(int id);
    void CreateNewLapMinute(const DAOLapMinutes& minute);
    void UpdateLapMinute(const DAOLapMinutes& minute);
    void CreateNewLapSecond(const DAOLapSeconds& second);
    bool UpdateSmall(const DAOLapMinutes& minute, const DAOLapSeconds& second);
    bool UpdateFull(const DAOLapMinutes& minute, const DAOLapSeconds& second,
                    const DAOLapMinutes& next);
    void ClearLapSeconds();
    void GetMinutesForLap(DAOLap& lap);
    void GetSecondsForLap(DAOLap& lap);
    std::unique_ptr<DAOLap> GetTodayLastLap();
    std::vector<std::unique_ptr<DAOLap>> GetLapsForDate(const QDateTime& day);
    std::vector<std::unique_ptr<DAOLap>> GetLapsForPeriod(const QDateTime& from,
                                                          const QDateTime& to);
    std::vector<QDateTime> GetAllDays();
    std::vector<std::pair<QDateTime, int>> GetLatestLapSteps(int count);
    std::vector<DAODayTotals> GetDayTotals(const QDate& from, const QDate& to);
    std::unique_ptr<DAOLap> GetLap(int id);
    void ResetLogs(const QDateTime& from, const QDateTime& to);
    double GetTodayDistance();
    double GetTodayCalories();
    int GetTodayActivity();
    int GetTodaySteps();
    // Finished history in one transaction; the body logs ride along, so that a
    // filled data folder has either all of it or nothing.
    bool ImportHistory(std::vector<std::unique_ptr<DAOLap>>& laps,
                       const std::vector<DAOBodyLog>& bodyLogs);

private:
    DatabaseConnection& statistics_;
};
