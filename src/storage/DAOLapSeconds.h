#pragma once

// One five-second interval of the current lap: a row of LastFiveMinutes.
class DAOLapSeconds {
public:
    int lapId = -1;
    int currentSecond = 0;  // lap time at the end of the interval: 5, 10, 15, ...
    int steps = 0;
    double calories = 0.0;       // kcal
    double caloriesNoise = 0.0;  // the graph's calorie rate; the updater adds to it
    double distance = 0.0;       // metres
};
