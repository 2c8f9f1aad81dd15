#pragma once

#include <QDate>

// One calendar day's sums over the minutes of the laps started that day: what the
// period history draws as one bar and the all-days list shows as one row.
class DAODayTotals {
public:
    QDate day;
    int laps = 0;
    int steps = 0;
    double distance = 0.0;  // metres
    double calories = 0.0;  // kcal
    int seconds = 0;        // counting time
};
