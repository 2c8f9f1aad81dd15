#pragma once

// Receives the steps the detector accepts.
//
// Called on the sensor thread, once per step, with the gait code: 1 walk, 2 jog, 3 run.
// The statistics manager implements it; tools and tests use their own tallies.
class StepReceiver {
public:
    virtual ~StepReceiver() = default;
    virtual void addStep(int gait) = 0;
};
