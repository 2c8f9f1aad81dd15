#pragma once

// One started minute of a lap: a row of LapMinutes, keyed by (lapId, lapMinute).
class DAOLapMinutes {
public:
    int lapId = -1;  // unset until the minute is attached to a stored lap
    int lapMinute = 0;
    int steps = 0;
    double calories = 0.0;  // kcal
    double distance = 0.0;  // metres
    int secondsCompleted = 0;
};
