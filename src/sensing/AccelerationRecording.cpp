#include "AccelerationRecording.h"

#include <cmath>

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

AccelerationRecording AccelerationRecording::Resampled(double rateHz) const {
    if (!(rateHz > 0.0)) return *this;
    AccelerationRecording out;
    double lastSlot = -1.0;
    for (std::size_t i = 0; i < Size(); ++i) {
        const double slot = std::floor(static_cast<double>(times_[i] - times_[0]) * rateHz / 1e9);
        if (slot <= lastSlot) continue;
        lastSlot = slot;
        out.Append(times_[i], samples_[i]);
    }
    return out;
}
