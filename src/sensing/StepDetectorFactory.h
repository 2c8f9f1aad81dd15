#pragma once

#include <QString>

#include "DetectorKind.h"

// Picks the step detector: by name ("classic", "adaptive"), from a process-wide choice
// (the --detector option of the programs), or from the "detector" preference the
// settings screens write.
//
// Threads: the choice is guarded by a mutex; Configured may read the options database
// (through PedometerDBManager, which serialises its own access).
class StepDetectorFactory {
public:
    // Overrides the preference for this process (pedometer --detector).
    static void SetChoice(DetectorKind kind);
    // Back to the preference.
    static void ClearChoice();
    // The overriding choice if one was set, else the "detector" preference; the default
    // (kDefaultDetector) when neither names a known detector.
    static DetectorKind Configured();

    // "classic" or "adaptive" to its kind; false (kind untouched) for anything else.
    static bool Parse(const QString& name, DetectorKind* kind);
};
