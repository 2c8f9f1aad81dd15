#include "TargetSlider.h"
#include "TestData.h"

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
    AddToday(0, 0, 540, 412);
    for (const QByteArrayList& c : testdata::Table("goal-bar.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        Goal() = DAOTarget();
        Goal().targetActive = c[0].toInt();
        Goal().distance = c[1].toDouble();
        Goal().calories = Goal().activityTime = Goal().steps = c[1].toInt();
        PedometerOptions::GetInstance().measurementSystem = c[2] == "1";
        slider.UpdateData();
        EXPECT_EQ(slider.GetValueText(), QString::fromLatin1(c[3]));
        EXPECT_EQ(slider.GetTargetText(), QString::fromLatin1(c[4]));
        EXPECT_EQ(slider.GetUnitText(), QString::fromLatin1(c[5]));
        EXPECT_EQ(slider.GetBarFillWidth(), c[6].toInt());
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
