#include "RecordingStepCounter.h"

#include <memory>

#include "CsvReplaySource.h"
#include "NullAccelerometerSource.h"
#include "QuorPedometer.h"
#include "StepTally.h"

RecordingStepCounter::Result RecordingStepCounter::Count(const AccelerationRecording& recording,
                                                         DetectorKind kind) {
    // The detector gets no live source: it is counting ("updating") while the replay
    // pushes the samples in on this thread.
    QuorPedometer detector(std::make_unique<NullAccelerometerSource>(), kind);
    StepTally tally;
    detector.statistics = &tally;
    detector.startUpdating();

    // The replay only borrows the recording for this call.
    const CsvReplaySource replay(
        std::shared_ptr<const AccelerationRecording>(&recording, [](const auto*) {}));
    Result result;
    result.samples = replay.Feed(detector);
    detector.stopUpdating();
    result.walk = tally.walk;
    result.jog = tally.jog;
    result.run = tally.run;
    return result;
}
