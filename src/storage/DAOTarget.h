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

    int targetActive = 0;   // daily goal: 0 none, 1 distance, 2 calories, 3 activity
    double distance = 5.0;  // daily distance goal, km
    int calories = 300;     // daily calorie goal, kcal
    int activityTime = 30;  // daily activity goal, minutes
    double wheight = -1.0;  // desired weight, kg; -1 unset
    double chest = -1.0;    // desired girths, cm; -1 unset
    double waist = -1.0;
    double hips = -1.0;
    int wheightTarget = 0;  // which body target is pursued
};
