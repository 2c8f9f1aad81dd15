#include "LayoutCheck.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLocale>
#include <QWidget>

#include "AccelerometerSource.h"
#include "AppFrame.h"
#include "BlockPane.h"
#include "CountingEngine.h"
#include "AppResource.h"
#include "Clock.h"
#include "FreshProfile.h"
#include "HistoryGenerator.h"
#include "MainForm.h"
#include "Pedometer.h"
#include "PedometerDBManager.h"
#include "PedometerForm.h"
#include "ScreenDirectory.h"
#include "TivNavigationController.h"
#include "TivUtils.h"

namespace {

// Phones from the smallest to large ones at scale 1, the reference size, and desktops.
const QSize kSizes[] = {{320, 480}, {360, 720},  {360, 760},  {412, 915},
                        {480, 800}, {720, 1280}, {1280, 800}};

class LayoutCheckTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(profile.IsValid());
        qputenv("PEDOMETER_NO_DBUS", "1");
        // Two weeks of walks up to now: the history screens show their rows, the goal
        // streaks, today's hourly chart and a lap to open.
        const QDate today = Clock::Now().date();
        request.day = today;
        request.from = today.addDays(-13);
        request.to = today;
        HistoryGenerator::History history =
            HistoryGenerator(2).Generate(request.from, today, Clock::Now());
        PedometerDBManager& manager = PedometerDBManager::GetInstance();
        ASSERT_TRUE(manager.ImportHistory(history.laps, {}));
        const auto laps = manager.GetLapsForDate(today.startOfDay());
        ASSERT_FALSE(laps.empty());
        request.lapId = laps.front()->id;
    }
    void TearDown() override {
        app.reset();
        QCoreApplication::processEvents();
        AppResource::GetInstance().SetLanguage("en");
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        AppFrame::SetStartSize(QSize());
    }

    FreshProfile profile{QDateTime(QDate(2026, 6, 15), QTime(19, 0))};  // a Monday evening
    ScreenRequest request;
    std::unique_ptr<Pedometer> app;
};

// Every screen in both languages opens, is shown and fits every size: opened at the first
// size, then resized through the others as a rotation or a window's resize would; Back
// (a few presses at most) leads to the main screen again. Nothing lies outside the
// window, no touch controls overlap or are too small, no text is too small to read.
TEST_F(LayoutCheckTest, EveryScreenFitsEverySizeInBothLanguages) {
    int checked = 0;
    for (const char* language : {"en", "de"}) {
        AppResource::GetInstance().SetLanguage(language);
        QLocale::setDefault(QLocale(QString::fromLatin1(language)));
        AppFrame::SetStartSize(kSizes[0]);
        app = std::make_unique<Pedometer>();
        app->Engine().UseSensorSource(nullptr);
        app->OnAppInitializing();
        TivNavigationController& navigation = *app->GetNavigationController();
        QWidget& window = *app->GetFrame();
        for (const QString& name : ScreenDirectory::Names()) {
            window.resize(kSizes[0]);
            QString error;
            const QWidget* shown = ScreenDirectory::Open(name, navigation, request, &error);
            ASSERT_NE(shown, nullptr) << name.toStdString() << ": " << error.toStdString();
            EXPECT_TRUE(shown->isVisible()) << name.toStdString();
            for (const QSize& size : kSizes) {
                window.resize(size);
                QCoreApplication::processEvents();
                const LayoutCheck::Result result = LayoutCheck::Check(window);
                EXPECT_TRUE(result.Passed())
                    << language << " " << result.Line(name, size).toStdString() << "\n  "
                    << QStringList(result.problems.begin(), result.problems.end())
                           .join(QStringLiteral("\n  "))
                           .toStdString();
                ++checked;
            }
            for (int press = 0; press < 5 && navigation.GetFormCount() > 1; ++press) {
                auto* top = qobject_cast<PedometerForm*>(navigation.GetTopForm());
                ASSERT_NE(top, nullptr);
                top->OnActionPerformed(*top, PedometerForm::BACK_ACTION_ID);
                QCoreApplication::processEvents();
            }
            if (app->GetMainForm()->IsLocked()) {
                if (QWidget* pane = app->GetMainForm()->GetLockPane())
                    app->GetMainForm()->Unblock(pane);
            }
            EXPECT_EQ(navigation.GetTopForm(), app->GetMainForm()) << "Back from " << name.toStdString();
        }
        QString unknown;  // an unknown screen is refused by name
        EXPECT_FALSE(ScreenDirectory::Open("no-such-screen", navigation, request, &unknown));
        EXPECT_TRUE(unknown.contains(QStringLiteral("no-such-screen")));
        app.reset();
        QCoreApplication::processEvents();
    }
    EXPECT_GT(checked, 2 * 30 * int(std::size(kSizes)));
}

}  // namespace
