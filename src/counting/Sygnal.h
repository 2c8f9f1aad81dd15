#pragma once

// The goal alarm's accumulator: today's progress towards a calorie, distance, activity
// or steps target, fed with every five-second interval while counting runs.
//
// The alarm's kind and phase live together in the settings field `sygnalType`; the
// numbers are stored and must stay as they are:
//   stopped {0 calories, 2 distance, 3 activity}, running {4, 5, 6},
//   completed {8 calories, 7 distance, 9 activity}; steps, added later, take the next
//   free numbers: stopped 10, running 11, completed 12. 1 and values above 12 are no
//   state.
class Sygnal {
public:
    virtual ~Sygnal() = default;

    static constexpr int STEPS_STOPPED = 10;
    static constexpr int STEPS_RUNNING = 11;
    static constexpr int STEPS_COMPLETED = 12;

    // Adds one interval's calories (kcal), length (s), distance (m) and steps to today's
    // progress while the alarm runs, and completes the alarm when its target is met:
    // then the alarm sounds and the result is true, for the caller to tell its
    // listeners. Called on the updater thread.
    static bool AddValues(double calories, int seconds, double distanceMeters, int steps = 0);

    static bool IsStopped(int type) {
        return type == 0 || type == 2 || type == 3 || type == STEPS_STOPPED;
    }
    static bool IsRunning(int type) { return (type >= 4 && type <= 6) || type == STEPS_RUNNING; }
    static bool IsCompleted(int type) {
        return (type >= 7 && type <= 9) || type == STEPS_COMPLETED;
    }
    static bool IsCalories(int type) { return type == 0 || type == 4 || type == 8; }
    static bool IsDistance(int type) { return type == 2 || type == 5 || type == 7; }
    static bool IsActivity(int type) { return type == 3 || type == 6 || type == 9; }
    static bool IsSteps(int type) { return type >= STEPS_STOPPED && type <= STEPS_COMPLETED; }
};
