#pragma once

#include <QDateTime>
#include <vector>

#include "DAOBodyLog.h"

class DatabaseConnection;

// The body measurements by day (BODYLOGS, statistics database). PedometerDBManager
// forwards to it and documents each call.
class BodyLogStore {
public:
    explicit BodyLogStore(DatabaseConnection& statistics);

    DAOBodyLog GetTodayBodyLog();
    void SetTodayWeight(double value);
    void SetTodayChest(double value);
    void SetTodayWaist(double value);
    void SetTodayHip(double value);
    void ResetWheight();
    void ResetChest();
    void ResetWaist();
    void ResetHips();
    std::vector<DAOBodyLog> GetBodyLogs();
    QDateTime GetLastLogDate();
    QDateTime GetFirstLogDate();

private:
    // One measurement of today's row.
    void SetToday(const char* sql, double value);
    // The day of the first log row `sql` selects; today when there is none.
    QDateTime LogDateOrToday(const char* sql);

    DatabaseConnection& statistics_;
};
