#pragma once

#include "StepReceiver.h"

// Counts the steps it receives, per gait.
class StepTally final : public StepReceiver {
public:
    void addStep(int gait) override {
        if (gait == 1) ++walk;
        if (gait == 2) ++jog;
        if (gait == 3) ++run;
    }
    int Total() const { return walk + jog + run; }

    int walk = 0;
    int jog = 0;
    int run = 0;
};
