#include "PedometerOptions.h"

#include <vector>

#include "StorageTestSupport.h"

using storagetest::StorageTest;

namespace {

// All 27 settings as numbers, in the record's order, for comparing records.
std::vector<double> Values(const PedometerOptions& o) {
    return {double(o.soundSteps),
            double(o.soundButtons),
            double(o.soundStart),
            double(o.soundCountdown),
            double(o.soundMetronome),
            double(o.firstStart),
            double(o.measurementSystem),
            double(o.showBmi),
            double(o.paceInsteadOfSpeed),
            double(o.countDownTime),
            double(o.mainValues),
            double(o.mainGraphic),
            double(o.pacerType),
            double(o.pacerDiff),
            double(o.pacerOffOnStanding),
            o.pacerSpeed,
            o.pacerPace,
            double(o.pacerFrequency),
            o.pacerDiffSpeed,
            o.pacerDiffPace,
            double(o.pacerDiffFrequency),
            double(o.sygnalType),
            double(o.sygnalCalories),
            o.sygnalDistance,
            double(o.sygnalActivity),
            double(o.startOnBlock),
            double(o.sygnalSteps)};
}

// Every field different from the defaults, and each bool flipped.
void ChangeEverything(PedometerOptions& o) {
    o.soundSteps = true;
    o.soundButtons = false;
    o.soundStart = false;
    o.soundCountdown = false;
    o.soundMetronome = false;
    o.firstStart = false;
    o.measurementSystem = true;
    o.showBmi = false;
    o.paceInsteadOfSpeed = true;
    o.countDownTime = 0;
    o.mainValues = 4;
    o.mainGraphic = 3;
    o.pacerType = 2;
    o.pacerDiff = true;
    o.pacerOffOnStanding = false;
    o.pacerSpeed = 6.5;
    o.pacerPace = 9.25;
    o.pacerFrequency = 132;
    o.pacerDiffSpeed = 0.75;
    o.pacerDiffPace = 0.5;
    o.pacerDiffFrequency = 8;
    o.sygnalType = 5;
    o.sygnalCalories = 420;
    o.sygnalDistance = 3.5;
    o.sygnalActivity = 45;
    o.startOnBlock = true;
    o.sygnalSteps = 7500;
}

using PedometerOptionsTest = StorageTest;

TEST_F(PedometerOptionsTest, BuiltInDefaultsMatchTheSeedDatabase) {
    PedometerOptions loaded;
    ChangeEverything(loaded);
    manager().LoadOptions(loaded);
    const PedometerOptions defaults;
    EXPECT_EQ(Values(loaded), Values(defaults));
}

TEST_F(PedometerOptionsTest, SavingThenLoadingKeepsAllSettings) {
    PedometerOptions changed;
    ChangeEverything(changed);
    manager().SaveOptions(changed);
    manager().Reopen();
    PedometerOptions loaded;
    manager().LoadOptions(loaded);
    EXPECT_EQ(Values(loaded), Values(changed));
    const PedometerOptions defaults;
    const std::vector<double> before = Values(defaults), after = Values(loaded);
    for (size_t i = 0; i < before.size(); ++i) EXPECT_NE(before[i], after[i]) << "field " << i;
}

TEST_F(PedometerOptionsTest, OnlyOneSetsAFlagAndSavingWritesZeroOrOne) {
    manager().IsOptionsUsable();  // seeds the file
    manager().Reopen();
    Exec(OptionsPath(), "UPDATE SCREEN SET SHOW_BMI=2, FIRST_STATR=-1, PACER_DIFF=1");
    Exec(OptionsPath(), "UPDATE SOUNDS SET BUTTONS=2");
    PedometerOptions options;
    manager().LoadOptions(options);
    EXPECT_FALSE(options.showBmi);
    EXPECT_FALSE(options.firstStart);
    EXPECT_FALSE(options.soundButtons);
    EXPECT_TRUE(options.pacerDiff);

    manager().SaveOptions(options);
    EXPECT_EQ(QueryInt(OptionsPath(), "SELECT SHOW_BMI FROM SCREEN"), 0);
    EXPECT_EQ(QueryInt(OptionsPath(), "SELECT FIRST_STATR FROM SCREEN"), 0);
    EXPECT_EQ(QueryInt(OptionsPath(), "SELECT BUTTONS FROM SOUNDS"), 0);
    EXPECT_EQ(QueryInt(OptionsPath(), "SELECT PACER_DIFF FROM SCREEN"), 1);
}

TEST_F(PedometerOptionsTest, WithoutASettingsRowNothingIsLoadedOrCreated) {
    manager().IsOptionsUsable();
    Exec(OptionsPath(), "DELETE FROM SCREEN");
    PedometerOptions options;
    ChangeEverything(options);
    const std::vector<double> before = Values(options);
    manager().LoadOptions(options);
    EXPECT_EQ(Values(options), before);

    manager().SaveOptions(options);
    EXPECT_EQ(QueryInt(OptionsPath(), "SELECT count(*) FROM SCREEN"), 0);
    manager().LoadOptions(options);
    EXPECT_EQ(Values(options), before);
}

TEST_F(PedometerOptionsTest, ASecondSettingsRowIsIgnoredWhenLoading) {
    manager().IsOptionsUsable();
    Exec(OptionsPath(), "INSERT INTO SCREEN SELECT * FROM SCREEN");
    Exec(OptionsPath(), "UPDATE SCREEN SET COUNT_DOWN_TIME=0 WHERE rowid=2");
    PedometerOptions options;
    options.countDownTime = 9;
    manager().LoadOptions(options);
    EXPECT_EQ(options.countDownTime, 5);
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
