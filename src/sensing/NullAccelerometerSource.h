#pragma once

#include "AccelerometerSource.h"

// The source of a machine without an accelerometer: never available, never delivers.
class NullAccelerometerSource final : public AccelerometerSource {
public:
    bool IsAvailable() const override { return false; }
    void Start(AccelerometerListener*) override {}
    void Stop() override {}
    bool IsRunning() const override { return false; }
};
