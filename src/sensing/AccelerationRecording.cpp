#include "AccelerationRecording.h"

void AccelerationRecording::Reserve(std::size_t count) {
    times_.reserve(count);
    samples_.reserve(count);
}

void AccelerationRecording::Append(qint64 timeNs, const AccelerationSample& sample) {
    times_.push_back(timeNs);
    samples_.push_back(sample);
}

qint64 AccelerationRecording::DurationNs() const {
    return times_.empty() ? 0 : times_.back() - times_.front();
}
