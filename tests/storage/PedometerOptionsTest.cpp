#include "PedometerOptions.h"

#include <tuple>
#include <vector>

#include "StorageTestSupport.h"

using storagetest::StorageTest;

namespace {

using O = PedometerOptions;
// All 27 settings by type, each with a value unlike its default (the bools are flipped).
const std::pair<std::atomic<int> O::*, int> kInts[] = {
    {&O::countDownTime, 0},       {&O::mainValues, 4},        {&O::mainGraphic, 3},
    {&O::pacerType, 2},           {&O::pacerFrequency, 132},  {&O::pacerDiffFrequency, 8},
    {&O::sygnalType, 5},          {&O::sygnalCalories, 420},  {&O::sygnalActivity, 45},
    {&O::sygnalSteps, 7500}};
const std::pair<std::atomic<double> O::*, double> kDoubles[] = {
    {&O::pacerSpeed, 6.5},     {&O::pacerPace, 9.25},     {&O::pacerDiffSpeed, 0.75},
    {&O::pacerDiffPace, 0.5},  {&O::sygnalDistance, 3.5}};
std::atomic<bool> O::*const kBools[] = {
    &O::soundSteps, &O::soundButtons,       &O::soundStart,         &O::soundCountdown,
    &O::soundMetronome, &O::firstStart,     &O::measurementSystem,  &O::showBmi,
    &O::paceInsteadOfSpeed, &O::pacerDiff,  &O::pacerOffOnStanding, &O::startOnBlock};

// All settings as numbers, for comparing records.
std::vector<double> Values(const PedometerOptions& o) {
    std::vector<double> out;
    for (const auto& [field, value] : kInts) out.push_back((o.*field).load());
    for (const auto& [field, value] : kDoubles) out.push_back((o.*field).load());
    for (const auto field : kBools) out.push_back((o.*field).load());
    return out;
}

void ChangeEverything(PedometerOptions& o) {
    const PedometerOptions defaults;
    for (const auto& [field, value] : kInts) o.*field = value;
    for (const auto& [field, value] : kDoubles) o.*field = value;
    for (const auto field : kBools) o.*field = !(defaults.*field).load();
}

using PedometerOptionsTest = StorageTest;

// The seed gives the built-in defaults; every setting survives a save and a reopening.
TEST_F(PedometerOptionsTest, SeedMatchesTheDefaultsAndSavingKeepsAllSettings) {
    PedometerOptions loaded, changed;
    ChangeEverything(loaded);
    manager().LoadOptions(loaded);
    EXPECT_EQ(Values(loaded), Values(PedometerOptions()));
    ChangeEverything(changed);
    manager().SaveOptions(changed);
    manager().Reopen();
    manager().LoadOptions(loaded);
    EXPECT_EQ(Values(loaded), Values(changed));
}

TEST_F(PedometerOptionsTest, OnlyOneSetsAFlagAndSavingWritesZeroOrOne) {
    manager().IsOptionsUsable();  // seeds the file
    manager().Reopen();
    Exec(OptionsPath(), "UPDATE SCREEN SET SHOW_BMI=2, FIRST_STATR=-1, PACER_DIFF=1");
    Exec(OptionsPath(), "UPDATE SOUNDS SET BUTTONS=2");
    // A second settings row is ignored.
    Exec(OptionsPath(), "INSERT INTO SCREEN SELECT * FROM SCREEN");
    Exec(OptionsPath(), "UPDATE SCREEN SET COUNT_DOWN_TIME=0, SHOW_BMI=1 WHERE rowid=2");
    PedometerOptions options;
    manager().LoadOptions(options);
    EXPECT_EQ(std::tuple(options.showBmi.load(), options.firstStart.load(),
                         options.soundButtons.load(), options.pacerDiff.load(),
                         options.countDownTime.load()),
              std::tuple(false, false, false, true, 5));
    manager().SaveOptions(options);
    EXPECT_EQ(QueryText(OptionsPath(),
                        "SELECT SHOW_BMI||FIRST_STATR||BUTTONS||PACER_DIFF FROM SCREEN,SOUNDS "
                        "WHERE SCREEN.rowid=1"),
              "0001");
}

// A save that fails halfway changes neither table; without a settings row nothing is
// loaded and saving creates none.
TEST_F(PedometerOptionsTest, AFailedSaveOrAMissingSettingsRowChangesNothing) {
    manager().IsOptionsUsable();
    Exec(OptionsPath(), "CREATE TRIGGER Refuse BEFORE UPDATE ON SCREEN BEGIN "
                        "SELECT RAISE(ABORT, 'refused'); END");
    PedometerOptions options;
    ChangeEverything(options);
    manager().SaveOptions(options);
    EXPECT_EQ(QueryInt(OptionsPath(), "SELECT STEPS FROM SOUNDS"), 0);

    // Without the settings row the sound switches still load, so saving keeps them.
    Exec(OptionsPath(), "DROP TRIGGER Refuse; DELETE FROM SCREEN; UPDATE SOUNDS SET STEPS=1");
    PedometerOptions fresh;
    manager().LoadOptions(fresh);
    EXPECT_TRUE(fresh.soundSteps);
    manager().SaveOptions(fresh);
    EXPECT_EQ(QueryInt(OptionsPath(), "SELECT STEPS FROM SOUNDS"), 1);
    EXPECT_EQ(QueryInt(OptionsPath(), "SELECT count(*) FROM SCREEN"), 0);
}

// Preferences: a fallback until stored, the newest value after, and a file seeded before
// the table existed gets it on the first write.
TEST_F(PedometerOptionsTest, PreferencesFallBackUntilStoredAndSurviveAnOlderFile) {
    manager().IsOptionsUsable();
    Exec(OptionsPath(), "DROP TABLE Preferences");
    EXPECT_EQ(manager().GetPreference("detector", "classic"), "classic");
    EXPECT_TRUE(manager().SetPreference("detector", "adaptive"));
    EXPECT_TRUE(manager().SetPreference("detector", "classic2"));
    EXPECT_EQ(manager().GetPreference("detector", "x"), "classic2");
    EXPECT_EQ(manager().GetPreference("sensor"), QString());
}

}  // namespace
