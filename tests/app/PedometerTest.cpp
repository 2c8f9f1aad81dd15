#include "Pedometer.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include "AccelerometerSource.h"
#include "CountingEngine.h"
#include "AppPaths.h"
#include "Body.h"
#include "DAOLap.h"
#include "FreshProfile.h"
#include "MainForm.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "PowerManager.h"
#include "StatisticsManager.h"
#include "TivNavigationController.h"
#include "VirtualTime.h"

namespace {

class PedometerTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(profile.IsValid());
        qputenv("PEDOMETER_NO_DBUS", "1");
    }
    // The application with no accelerometer, started.
    Pedometer& start() {
        app = std::make_unique<Pedometer>();
        app->Engine().UseSensorSource(nullptr);
        EXPECT_TRUE(app->OnAppInitializing());
        return *app;
    }
    void TearDown() override {
        app.reset();
        QCoreApplication::processEvents();
    }
    int lapId() const { return app->Engine().Statistics().GetCurrentLap()->id; }

    FreshProfile profile{QDateTime(QDate(2026, 6, 15), QTime(23, 0, 0))};
    std::unique_ptr<Pedometer> app;
};

TEST_F(PedometerTest, FirstStartClearsTheFlagOnce) {
    start();
    PedometerOptions saved;
    PedometerDBManager::GetInstance().LoadOptions(saved);
    EXPECT_FALSE(saved.firstStart.load());
    EXPECT_EQ(app->GetNavigationController()->GetTopForm(), app->GetMainForm());
}

TEST_F(PedometerTest, ComingBackOnAnotherDayStartsANewLap) {
    start();
    const int first = lapId();

    app->OnBackground();
    EXPECT_FALSE(TivNavigationController::IsForeground());
    EXPECT_FALSE(app->GetMainForm()->IsUpdating());
    VirtualTime::AdvanceBy(30 * 60 * 1000);  // 23:30, same day
    app->OnForeground();
    EXPECT_TRUE(TivNavigationController::IsForeground());
    EXPECT_EQ(lapId(), first);

    app->OnBackground();
    VirtualTime::AdvanceBy(60 * 60 * 1000);  // 00:30 the next day
    app->OnForeground();
    EXPECT_NE(lapId(), first);
}

TEST_F(PedometerTest, ForegroundKeepsTheScreenOnOnlyWhileCounting) {
    start();
    PowerManager::KeepScreenOnState(false, false);
    app->OnBackground();
    app->OnForeground();
    EXPECT_FALSE(PowerManager::IsKeepingScreenOn());

    app->Engine().Statistics().start();
    app->OnBackground();
    app->OnForeground();
    EXPECT_TRUE(PowerManager::IsKeepingScreenOn());
    app->Engine().Statistics().stop();
    PowerManager::KeepScreenOnState(false, false);
}

}  // namespace
