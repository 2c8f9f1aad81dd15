#pragma once

#include <vector>

class DAOLap;
class DAOLapSeconds;

// The main screen graph's series: one value per five-second record of the last five
// minutes of a lap, oldest first, always kPoints long. A lap shorter than five
// minutes gives leading zeros, so the newest value is always at the right end.
//
// Pure computation: callable from any thread (the updater thread builds the series
// and hands it to the graph on the GUI thread).
class GraphSeries {
public:
    static constexpr int kPoints = 60;
    static constexpr int kRecordSeconds = 5;

    // The graph types, as stored in PedometerOptions::mainGraphic.
    static constexpr int STEP_RATE = 0;  // steps per minute
    static constexpr int CALORIES = 1;   // the record's calorie rate per minute
    static constexpr int SPEED = 2;      // km/h, or mph with `miles`
    static constexpr int PACE = 3;       // min/km, or min/mi with `miles`

    // The value of one record for `type`; 0 for an unknown type. A record without
    // distance has a pace of 0 (not an endless one).
    static double ValueOf(const DAOLapSeconds& record, int type, bool miles);

    // The series of the last kPoints records of `seconds` (in lap order).
    static std::vector<double> FromSeconds(const std::vector<DAOLapSeconds>& seconds, int type,
                                           bool miles);

    // The same from a lap that another thread may be extending: the newest records
    // are copied under the lap's recordsMutex. A null lap gives all zeros. Do not
    // call while holding that mutex.
    static std::vector<double> FromLap(const DAOLap* lap, int type, bool miles);
};
