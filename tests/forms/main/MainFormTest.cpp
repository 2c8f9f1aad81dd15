#include "MainForm.h"

#include <gtest/gtest.h>

#include <QMenu>
#include <QTest>
#include <thread>

#include "AccelerometerSource.h"
#include "AppFrame.h"
#include "Body.h"
#include "CountingEngine.h"
#include "FreshProfile.h"
#include "Pedometer.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "QuorPedometer.h"
#include "SoftkeyBar.h"
#include "StatisticsManager.h"
#include "TivButton.h"
#include "UpdaterThread.h"
#include "VirtualTime.h"

namespace {

class MainFormTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(profile.IsValid()); }
    void TearDown() override {
        app.reset();
        QCoreApplication::processEvents();
    }

    MainForm& start() {
        app = std::make_unique<Pedometer>();
        app->Engine().UseSensorSource(nullptr);
        app->OnAppInitializing();  // loads the settings
        PedometerOptions::GetInstance().countDownTime = countdown;
        QCoreApplication::processEvents();
        return *app->GetMainForm();
    }
    static void click(QWidget* widget) {
        ASSERT_NE(widget, nullptr);
        QTest::mouseClick(widget, Qt::LeftButton, {}, widget->rect().center());
    }
    // Moves virtual time on, lets the updater store, and lets the GUI thread catch up.
    void advanceSeconds(int seconds) {
        for (int i = 0; i < seconds; ++i) {
            VirtualTime::AdvanceBy(1000);
            statistics().GetUpdaterThread()->WaitUntilIdle();
            QCoreApplication::processEvents();
        }
        QCoreApplication::processEvents();
    }

    StatisticsManager& statistics() const { return app->Engine().Statistics(); }

    FreshProfile profile;
    int countdown = 0;
    std::unique_ptr<Pedometer> app;
};

// A stop during the countdown cancels it; left alone it shows four ticks, then records.
TEST_F(MainFormTest, CountdownCanBeCancelledOrShowsFourTicksThenRecords) {
    countdown = 5;
    MainForm& form = start();
    click(form.GetStartStopButton());
    advanceSeconds(2);
    click(form.GetStartStopButton());
    EXPECT_FALSE(form.IsCountdownRunning());
    EXPECT_EQ(form.GetEnlargedColor(), MainForm::kEnlargedColor);
    advanceSeconds(10);
    EXPECT_FALSE(form.IsAlreadyStarted());

    click(form.GetStartStopButton());
    EXPECT_TRUE(form.IsCountdownRunning());
    EXPECT_EQ(form.GetEnlargedValueText(), QStringLiteral("5"));
    EXPECT_EQ(form.GetEnlargedColor(), QColor(Qt::red));
    advanceSeconds(4);
    EXPECT_EQ(form.GetEnlargedValueText(), QStringLiteral("1"));
    EXPECT_FALSE(form.IsAlreadyStarted());
    advanceSeconds(1);
    EXPECT_TRUE(form.IsAlreadyStarted());
    EXPECT_FALSE(form.IsCountdownRunning());
    EXPECT_EQ(form.GetEnlargedColor(), MainForm::kEnlargedColor);
    EXPECT_EQ(form.GetEnlargedValueText(), form.GetTopValueText(0));  // not the last digit
}

TEST_F(MainFormTest, TopButtonsPickTheEnlargedValueAndStoreIt) {
    MainForm& form = start();
    click(form.GetTopButton(2));
    EXPECT_EQ(PedometerOptions::GetInstance().mainValues.load(), 2);
    PedometerOptions reloaded;
    PedometerDBManager::GetInstance().LoadOptions(reloaded);
    EXPECT_EQ(reloaded.mainValues.load(), 2);
}

TEST_F(MainFormTest, UnderTheLockOnlyTheSlideActs) {
    MainForm& form = start();
    AppFrame& frame = *app->GetFrame();
    click(form.GetButton(MainForm::ID_NEW_LAP));
    ASSERT_NE(form.GetContextMenu(), nullptr);
    click(form.GetButton(MainForm::ID_LOCK));
    ASSERT_TRUE(form.IsLocked());
    EXPECT_EQ(form.GetContextMenu(), nullptr);  // an open menu goes with the lock
    EXPECT_FALSE(frame.GetSoftkeyBar().IsKeyShown(SoftkeyBar::Key::Option));
    QTest::keyClick(&frame, Qt::Key_F1);
    EXPECT_FALSE(form.GetOptionMenu()->isVisible());
    for (int id : std::initializer_list<int>{
             MainForm::ID_OPTION_KEY, MainForm::ID_HISTORY, MainForm::ID_PACER, MainForm::ID_ALARM,
             MainForm::ID_INFO, MainForm::ID_NEW_LAP, MainForm::ID_GOAL, MainForm::ID_START,
             MainForm::ID_TOP_FIRST + 2}) {
        form.OnActionPerformed(form, id);
        EXPECT_EQ(frame.GetCurrentForm(), &form) << id;
        EXPECT_EQ(form.GetContextMenu(), nullptr) << id;
    }
    EXPECT_FALSE(form.IsAlreadyStarted());
    EXPECT_EQ(PedometerOptions::GetInstance().mainValues.load(), 0);

    form.RequestUnblock();  // user event 129
    QCoreApplication::processEvents();
    EXPECT_FALSE(form.IsLocked());
    EXPECT_EQ(form.GetLockPane(), nullptr);
    EXPECT_TRUE(frame.GetSoftkeyBar().IsKeyShown(SoftkeyBar::Key::Option));
    QTest::keyClick(&frame, Qt::Key_F1);
    EXPECT_TRUE(form.GetOptionMenu()->isVisible());
    form.HideOptionMenu();
}

TEST_F(MainFormTest, GraphTapCyclesTheGraphType) {
    MainForm& form = start();
    for (const auto& [before, after] : {std::pair{2, 3}, {3, 0}, {7, 0}}) {
        PedometerOptions::GetInstance().mainGraphic = before;
        click(form.GetGraphButton());
        EXPECT_EQ(PedometerOptions::GetInstance().mainGraphic.load(), after) << before;
    }
}

TEST_F(MainFormTest, InfoAsksForMissingBodyValuesFirst) {
    MainForm& form = start();
    click(form.GetButton(MainForm::ID_INFO));
    ASSERT_NE(form.GetContextMenu(), nullptr);
    EXPECT_EQ(form.GetContextMenu()->actions().size(), 3);
    form.GetContextMenu()->actions().at(2)->trigger();  // accelerometer tips
    QCoreApplication::processEvents();

    Body::GetInstance().setHeight(180.0);
    click(form.GetButton(MainForm::ID_INFO));
    ASSERT_NE(form.GetContextMenu(), nullptr);
    EXPECT_EQ(form.GetContextMenu()->actions().size(), 2);  // weight and tips
    form.GetContextMenu()->actions().at(1)->trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(form.GetContextMenu(), nullptr);

    Body::GetInstance().setWeight(75.0);
    click(form.GetButton(MainForm::ID_INFO));
    EXPECT_EQ(form.GetContextMenu(), nullptr);  // straight to the tips
}

// Without a countdown, Start records at once; steps counted on the sensor's thread reach
// the screen, and Stop stops.
TEST_F(MainFormTest, StartRecordsAtOnceAndStepsFromTheSensorThreadReachTheScreen) {
    MainForm& form = start();
    click(form.GetStartStopButton());
    EXPECT_TRUE(form.IsAlreadyStarted());
    EXPECT_FALSE(form.IsCountdownRunning());
    EXPECT_EQ(form.GetStartStopButton()->GetActionId(), MainForm::ID_STOP);
    EXPECT_EQ(form.GetEnlargedColor(), MainForm::kEnlargedColor);
    std::thread sensor([this] {
        for (int i = 0; i < 25; ++i) statistics().addStep(1);
    });
    sensor.join();
    QCoreApplication::processEvents();
    EXPECT_EQ(form.GetTopValueText(0), QStringLiteral("25"));
    EXPECT_EQ(form.GetEnlargedValueText(), QStringLiteral("25"));

    advanceSeconds(5);  // one interval stored: distance and time follow
    EXPECT_EQ(form.GetTopValueText(3), QStringLiteral("00:05"));
    EXPECT_NE(form.GetTopValueText(1), QStringLiteral("0.000"));
    click(form.GetStartStopButton());
    EXPECT_FALSE(form.IsAlreadyStarted());
    EXPECT_EQ(form.GetStartStopButton()->GetActionId(), MainForm::ID_START);
}

TEST_F(MainFormTest, PausedScreenIgnoresUpdatesUntilResumed) {
    MainForm& form = start();
    click(form.GetStartStopButton());
    form.PauseUpdating();
    statistics().addStep(1);
    QCoreApplication::processEvents();
    EXPECT_EQ(form.GetTopValueText(0), QStringLiteral("0"));
    form.ResumeUpdating();
    advanceSeconds(1);
    EXPECT_TRUE(form.IsUpdating());
    EXPECT_EQ(form.GetTopValueText(0), QStringLiteral("1"));
}

}  // namespace
