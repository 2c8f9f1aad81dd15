#pragma once

// Today's progress of the goal alarm: the row of SygnalValues.
class DAOSygnal {
public:
    int reserved = 0;  // kept for the record's layout; never used
    double calories = 0.0;
    double distance = 0.0;  // km
    int activityTime = 0;   // seconds
    int steps = 0;
    bool fired = false;     // alarm logic only; never stored
};
