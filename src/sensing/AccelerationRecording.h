#pragma once

#include <QtGlobal>
#include <cstddef>
#include <vector>

#include "AccelerationSample.h"

// A recorded accelerometer trace: samples in g with their times in nanoseconds, in
// recording order (times never decrease). Filled by AccelerationCsvReader, replayed by
// ReplayCursor and CsvReplaySource.
class AccelerationRecording {
public:
    void Reserve(std::size_t count);
    // Appends one sample; the caller keeps the times in order.
    void Append(qint64 timeNs, const AccelerationSample& sample);

    std::size_t Size() const { return times_.size(); }
    bool IsEmpty() const { return times_.empty(); }
    qint64 TimeNs(std::size_t i) const { return times_[i]; }
    const AccelerationSample& Sample(std::size_t i) const { return samples_[i]; }
    // From the first sample to the last; 0 when empty.
    qint64 DurationNs() const;
    // The recording as a sensor sampling at `rateHz` would have given it: of each 1/rate
    // seconds from the first sample on, the first sample recorded in it (times kept).
    // A rate that is not above zero keeps every sample.
    AccelerationRecording Resampled(double rateHz) const;

private:
    std::vector<qint64> times_;
    std::vector<AccelerationSample> samples_;
};
