#include "TargetSlider.h"

#include <gtest/gtest.h>

#include "GoalTestSupport.h"

namespace {

// A slider as wide as its bar picture (440 in the 480-wide layout), bar 28 high.
class TargetSliderTest : public GoalTest {
protected:
    void SetUp() override {
        GoalTest::SetUp();
        slider.setGeometry(0, 0, 440, 84);
        slider.Initialize(28);
        ASSERT_EQ(slider.GetBarFullWidth(), 440);
    }
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

TEST_F(TargetSliderTest, CaloriesShowOneDecimalAndAnEmptyBarAtZero) {
    Goal().targetActive = 2;
    Goal().calories = 10;
    slider.UpdateData();
    EXPECT_EQ(slider.GetValueText(), "0.0");
    EXPECT_EQ(slider.GetTargetText(), "10");
    EXPECT_EQ(slider.GetUnitText(), "(Cal)");
    EXPECT_EQ(slider.GetBarFillWidth(), 0);

    AddToday(0, 2.56, 60);  // 25.6 %: the percentage is truncated
    slider.UpdateData();
    EXPECT_EQ(slider.GetValueText(), "2.6");
    EXPECT_EQ(slider.GetBarFillWidth(), 25 * 440 / 100);
}

TEST_F(TargetSliderTest, DistanceIsComparedInKilometresAndShownInTheUsersUnit) {
    Goal().targetActive = 1;
    Goal().distance = 2.5;
    AddToday(1250, 0, 0);
    slider.UpdateData();
    EXPECT_EQ(slider.GetValueText(), "1.250");
    EXPECT_EQ(slider.GetTargetText(), "2.500");
    EXPECT_EQ(slider.GetUnitText(), "(km)");
    EXPECT_EQ(slider.GetBarFillWidth(), 220);

    PedometerOptions::GetInstance().measurementSystem = true;
    slider.UpdateData();
    EXPECT_EQ(slider.GetValueText(), "0.777");   // 1.25 km
    EXPECT_EQ(slider.GetTargetText(), "1.553");  // 2.5 km
    EXPECT_EQ(slider.GetUnitText(), "(mi)");
    EXPECT_EQ(slider.GetBarFillWidth(), 220);
}

TEST_F(TargetSliderTest, ActivityCountsWholeMinutesOnly) {
    Goal().targetActive = 3;
    Goal().activityTime = 10;
    AddToday(0, 0, 59);
    slider.UpdateData();
    EXPECT_EQ(slider.GetValueText(), "0");
    EXPECT_EQ(slider.GetUnitText(), "(min)");
    EXPECT_EQ(slider.GetBarFillWidth(), 0);
    AddToday(0, 0, 540);  // 599 s: still 9 minutes
    slider.UpdateData();
    EXPECT_EQ(slider.GetValueText(), "9");
    EXPECT_EQ(slider.GetBarFillWidth(), 396);
}

TEST_F(TargetSliderTest, StepsAreGroupedWholeNumbers) {
    Goal().targetActive = DAOTarget::STEPS;
    AddToday(0, 0, 60, 6412);
    slider.UpdateData();
    EXPECT_EQ(slider.GetValueText() + " / " + slider.GetTargetText() + " " + slider.GetUnitText(),
              "6,412 / 10,000 (steps)");
    EXPECT_EQ(slider.GetBarFillWidth(), 64 * 440 / 100);
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

TEST_F(TargetSliderTest, TheBarWidthIsPercentOfTheFullWidthAndAboveAHundredGoesOn) {
    slider.SetProgressBarValue(1);  // 4 pixels
    EXPECT_EQ(slider.GetBarFillWidth(), 4);
    slider.SetProgressBarValue(0);
    EXPECT_EQ(slider.GetBarFillWidth(), 0);
    EXPECT_EQ(slider.GetBarFullHeight(), 28);

    Goal().targetActive = 2;
    Goal().calories = 10;
    AddToday(0, 30, 60);
    slider.UpdateData();
    EXPECT_EQ(slider.GetBarFillWidth(), 3 * 440);
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
