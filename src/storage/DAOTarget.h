#pragma once

// The user's goals: the daily goal and the desired body values (the row of
// TargetValues).
//
// GetInstance() is the application's one goals record, loaded from the statistics
// database when first reached and saved with PedometerDBManager::SaveTagets().
// It is read and changed on the GUI thread only. Other instances are plain records
// (tests, tools).
class DAOTarget {
public:
    static DAOTarget& GetInstance();

    // The daily goal's kind; the numbers are stored.
    enum Kind { OFF = 0, DISTANCE = 1, CALORIES = 2, ACTIVITY = 3, STEPS = 4 };
    static constexpr int kLowestSteps = 100;  // the floor of a steps goal

    int targetActive = 0;   // daily goal: a Kind
    double distance = 5.0;  // daily distance goal, km
    int calories = 300;     // daily calorie goal, kcal
    int activityTime = 30;  // daily activity goal, minutes
    int steps = 10000;      // daily steps goal
    double wheight = -1.0;  // desired weight, kg; -1 unset
    double chest = -1.0;    // desired girths, cm; -1 unset
    double waist = -1.0;
    double hips = -1.0;
    int wheightTarget = 0;  // which body target is pursued
};
