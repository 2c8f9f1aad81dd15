#pragma once

#include <QString>
#include <vector>

#include "DAOLapMinutes.h"
#include "DAOLapSeconds.h"

// What the main screen shows for a lap: the five value texts besides the step count
// and the 60-point series of the live graph.
//
// Computed from copies of the lap's records, so it can run on the updater thread
// while the GUI thread only paints the result.
struct MeterReadings {
    QString distance;           // km or miles, 3 decimals
    QString calories;           // kcal, 1 decimal
    QString time;               // mm:ss, five seconds per interval record
    QString speed;              // the last interval's speed or pace
    QString averageSpeed;       // the lap's average speed or pace
    std::vector<double> graph;  // the last 60 intervals, oldest first, zeros before the lap

    // `miles`: imperial units; `pace`: minutes per unit instead of speed;
    // `graphType`: 0 step rate, 1 calories, 2 speed, 3 pace.
    static MeterReadings Compute(const std::vector<DAOLapMinutes>& minutes,
                                 const std::vector<DAOLapSeconds>& seconds, bool miles, bool pace,
                                 int graphType);

    // Minutes per unit at `speed` units per hour; 0 when not moving.
    static double PaceOf(double speed);
};
