#include "TargetSlider.h"

#include <gtest/gtest.h>

#include "DAOTarget.h"
#include "FreshProfile.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "TivUtils.h"
#include "VirtualTime.h"

namespace {

// A slider as wide as its bar picture (440 in the 480-wide layout), bar 28 high, on a
// fresh profile at 18:30.
class TargetSliderTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(profile.IsValid());
        Goal() = DAOTarget();
        TivUtils::SetScreenResolution(TivUtils::WVGA_WIDTH);
        slider.setGeometry(0, 0, 440, 84);
        slider.Initialize(28);
        ASSERT_EQ(slider.GetBarFullWidth(), 440);
    }
    void TearDown() override { Goal() = DAOTarget(); }
    static DAOTarget& Goal() { return DAOTarget::GetInstance(); }
    // Adds one minute of activity to a new lap of today.
    static void AddToday(double metres, double kcal, int seconds, int steps = 0) {
        PedometerDBManager& db = PedometerDBManager::GetInstance();
        DAOLapMinutes minute;
        minute.lapId = db.CreateNewLap()->id;
        minute.lapMinute = 1;
        minute.distance = metres;
        minute.calories = kcal;
        minute.secondsCompleted = seconds;
        minute.steps = steps;
        db.CreateNewLapMinute(minute);  // the row, then its values
        db.UpdateLapMinute(minute);
    }

    FreshProfile profile{QDateTime(QDate(2026, 6, 15), QTime(18, 30))};
    TargetSlider slider;
};

TEST_F(TargetSliderTest, GoalOffHidesTheSliderAndLeavesItsLabels) {
    Goal().targetActive = 2;
    slider.UpdateData();
    EXPECT_FALSE(slider.isHidden());
    Goal().targetActive = 0;
    Goal().calories = 500;
    slider.UpdateData();
    EXPECT_TRUE(slider.isHidden());
    EXPECT_EQ(slider.GetTargetText(), "300");
}

// Today's activity in two laps: each kind of goal reads its own column, in the user's unit;
// the bar is the truncated percentage of the full width and goes on above a hundred.
TEST_F(TargetSliderTest, EachGoalShowsTodaysValueTargetUnitAndBar) {
    AddToday(1250, 2.56, 59, 6000);
    AddToday(0, 0, 540, 412);  // 599 s: 9 whole minutes
    const struct {
        int kind;
        double goal;
        bool miles;
        const char *value, *target, *unit;
        int fill;
    } cases[] = {
        {DAOTarget::CALORIES, 10, false, "2.6", "10", "(Cal)", 25 * 440 / 100},
        {DAOTarget::CALORIES, 1, false, "2.6", "1", "(Cal)", 256 * 440 / 100},
        {DAOTarget::DISTANCE, 2.5, false, "1.250", "2.500", "(km)", 220},
        {DAOTarget::DISTANCE, 2.5, true, "0.777", "1.553", "(mi)", 220},
        {DAOTarget::ACTIVITY, 10, false, "9", "10", "(min)", 396},
        {DAOTarget::STEPS, 10000, false, "6,412", "10,000", "(steps)", 64 * 440 / 100},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.unit) + " " + c.target);
        Goal() = DAOTarget();
        Goal().targetActive = c.kind;
        if (c.kind == DAOTarget::DISTANCE) Goal().distance = c.goal;
        if (c.kind == DAOTarget::CALORIES) Goal().calories = int(c.goal);
        if (c.kind == DAOTarget::ACTIVITY) Goal().activityTime = int(c.goal);
        if (c.kind == DAOTarget::STEPS) Goal().steps = int(c.goal);
        PedometerOptions::GetInstance().measurementSystem = c.miles;
        slider.UpdateData();
        EXPECT_EQ(slider.GetValueText(), c.value);
        EXPECT_EQ(slider.GetTargetText(), c.target);
        EXPECT_EQ(slider.GetUnitText(), c.unit);
        EXPECT_EQ(slider.GetBarFillWidth(), c.fill);
    }
}

TEST_F(TargetSliderTest, OnlyTodaysActivityCounts) {
    Goal().targetActive = 2;
    Goal().calories = 100;
    VirtualTime::Enable(QDateTime(QDate(2026, 6, 14), QTime(23, 59, 59)));
    AddToday(0, 80, 60);  // yesterday
    VirtualTime::Enable(QDateTime(QDate(2026, 6, 15), QTime(0, 0, 0)));
    AddToday(0, 20, 60);
    slider.UpdateData();
    EXPECT_EQ(slider.GetValueText(), "20.0");
}

TEST_F(TargetSliderTest, AnUnreachableTargetFromADamagedRecordShowsNoProgress) {
    AddToday(5000, 50, 600);
    for (int kind : {1, 2, 3, 4}) {
        Goal().targetActive = kind;
        Goal().distance = 0.0;
        Goal().steps = 0;
        Goal().calories = 0;
        Goal().activityTime = -5;
        slider.UpdateData();
        EXPECT_EQ(slider.GetBarFillWidth(), 0) << kind;
    }
    // A tiny but positive target caps the bar instead of overflowing.
    Goal().targetActive = 1;
    Goal().distance = 1e-300;
    slider.UpdateData();
    EXPECT_EQ(slider.GetBarFillWidth(), TargetSlider::kMaxPercent * 440 / 100);
}

}  // namespace
