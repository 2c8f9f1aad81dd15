#pragma once

#include <QString>

// Calibrates the walking step length: a known distance walked, divided by the walking
// steps counted on it. The result is stored as the profile's walk step length, and the
// preference "walk_step_calibrated" remembers the calibrated length, so the length shows
// as calibrated for as long as it is the one in use (entering another one by hand, or
// going back to lengths from the height, ends that by itself).
//
// Safe from any thread (Body and the preferences are).
class StepLengthCalibration {
public:
    static constexpr const char* kPreference = "walk_step_calibrated";
    static constexpr double kShortestStep = 0.3;  // metres; outside these no one walks,
    static constexpr double kLongestStep = 1.2;   // so the distance or the count is wrong

    enum class Verdict { Calibrated, NoDistance, NoSteps, TooShort, TooLong, NotStored };
    struct Result {
        Verdict verdict = Verdict::NoSteps;
        double stepLength = 0.0;  // metres, also when refused (what it would have been)
    };

    // The step length `metres` walked in `walkSteps` steps give, or why it is refused.
    static Result Compute(double metres, int walkSteps);
    // Computes and, when accepted, stores it in the profile (saved to the database);
    // NotStored when the settings database cannot be written.
    static Result Apply(double metres, int walkSteps);
    // The profile's walk step length is a calibrated one.
    static bool IsCalibrated();

    // Why a verdict refuses, as a key of the texts ("" for Calibrated).
    static const char* MessageKey(Verdict verdict);
};
