#include "OptionsColumns.h"

const std::vector<OptionsColumns::Column>& OptionsColumns::All() {
    using O = PedometerOptions;
    static const std::vector<Column> columns = {
        {"SOUNDS", "STEPS", &O::soundSteps},
        {"SOUNDS", "BUTTONS", &O::soundButtons},
        {"SOUNDS", "START", &O::soundStart},
        {"SOUNDS", "COUNTDOWN", &O::soundCountdown},
        {"SOUNDS", "METRONOM", &O::soundMetronome},
        {"SCREEN", "MEASURMENT_SYSTEM", &O::measurementSystem},
        {"SCREEN", "TEMP_PRIOR_SPEED", &O::paceInsteadOfSpeed},
        {"SCREEN", "SHOW_BMI", &O::showBmi},
        {"SCREEN", "COUNT_DOWN_TIME", &O::countDownTime},
        {"SCREEN", "FIRST_STATR", &O::firstStart},
        {"SCREEN", "MAIN_VALUES", &O::mainValues},
        {"SCREEN", "MAIN_GRAPHIC", &O::mainGraphic},
        {"SCREEN", "PACER_TYPE", &O::pacerType},
        {"SCREEN", "PACER_OFF_ACT", &O::pacerOffOnStanding},
        {"SCREEN", "PACER_DIFF", &O::pacerDiff},
        {"SCREEN", "PACER_SPEED", &O::pacerSpeed},
        {"SCREEN", "PACER_TEMP", &O::pacerPace},
        {"SCREEN", "PACER_FREQ", &O::pacerFrequency},
        {"SCREEN", "PACER_DIF_SPEED", &O::pacerDiffSpeed},
        {"SCREEN", "PACER_DIF_TEMP", &O::pacerDiffPace},
        {"SCREEN", "PACER_DIF_FREQ", &O::pacerDiffFrequency},
        {"SCREEN", "SYGNAL_TYPE", &O::sygnalType},
        {"SCREEN", "SYGNAL_CALORIES", &O::sygnalCalories},
        {"SCREEN", "SYGNAL_DISTANCE", &O::sygnalDistance},
        {"SCREEN", "SYGNAL_ACTIVITY", &O::sygnalActivity},
        {"SCREEN", "START_ON_BLOCK", &O::startOnBlock},
        {"SCREEN", "SYGNAL_STEPS", &O::sygnalSteps},
    };
    return columns;
}
