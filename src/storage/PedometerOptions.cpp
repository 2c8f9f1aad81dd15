#include "PedometerOptions.h"

PedometerOptions& PedometerOptions::GetInstance() {
    static PedometerOptions instance;
    return instance;
}

// Keep in step with the row of SCREEN and SOUNDS in res/db/Options.sql; a test
// compares the two.
void PedometerOptions::RestoreDefaults() {
    soundSteps = false;
    soundButtons = true;
    soundStart = true;
    soundCountdown = true;
    soundMetronome = true;
    firstStart = true;
    measurementSystem = false;
    showBmi = true;
    paceInsteadOfSpeed = false;
    countDownTime = 5;
    mainValues = 0;
    mainGraphic = 0;
    pacerType = 0;
    pacerDiff = false;
    pacerOffOnStanding = true;
    pacerSpeed = 5.0;
    pacerPace = 12.0;
    pacerFrequency = 110;
    pacerDiffSpeed = 0.5;
    pacerDiffPace = 1.0;
    pacerDiffFrequency = 5;
    sygnalType = 0;
    sygnalCalories = 300;
    sygnalDistance = 5.0;
    sygnalActivity = 30;
    sygnalSteps = 10000;
    startOnBlock = false;
}
