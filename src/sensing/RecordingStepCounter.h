#pragma once

#include <QtGlobal>

#include "DetectorKind.h"

class AccelerationRecording;

// Counts the steps in a recording: replays it at full speed through a fresh step
// detector of the given kind, counting as the application would, with the
// sensitivities Body holds now.
class RecordingStepCounter {
public:
    struct Result {
        int walk = 0;
        int jog = 0;
        int run = 0;
        qint64 samples = 0;  // samples delivered to the detector
        int Steps() const { return walk + jog + run; }
    };

    static Result Count(const AccelerationRecording& recording,
                        DetectorKind kind = kDefaultDetector);
};
