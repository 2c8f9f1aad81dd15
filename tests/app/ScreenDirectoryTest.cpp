#include "ScreenDirectory.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QWidget>

#include "AccelerometerSource.h"
#include "CountingEngine.h"
#include "FreshProfile.h"
#include "MainForm.h"
#include "Pedometer.h"
#include "PedometerForm.h"
#include "TivNavigationController.h"

namespace {

class ScreenDirectoryTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(profile.IsValid());
        qputenv("PEDOMETER_NO_DBUS", "1");
        app = std::make_unique<Pedometer>();
        app->Engine().UseSensorSource(nullptr);
        app->OnAppInitializing();
    }
    void TearDown() override {
        app.reset();
        QCoreApplication::processEvents();
    }

    FreshProfile profile;
    std::unique_ptr<Pedometer> app;
};

// Every screen, including those added later, opens over the main screen on a fresh
// profile (or refuses with a reason, for screens that need a record to show), is
// visible, and Back leads to the main screen again.
TEST_F(ScreenDirectoryTest, EveryScreenOpensOverTheMainScreenAndBackReturns) {
    TivNavigationController& navigation = *app->GetNavigationController();
    ASSERT_TRUE(ScreenDirectory::Names().contains(QStringLiteral("main")));
    for (const QString& name : ScreenDirectory::Names()) {
        SCOPED_TRACE(name.toStdString());
        QString error;
        QWidget* shown = ScreenDirectory::Open(name, navigation, ScreenRequest{}, &error);
        if (shown == nullptr) {
            EXPECT_FALSE(error.isEmpty());
            continue;
        }
        QCoreApplication::processEvents();
        EXPECT_TRUE(shown->isVisible());
        while (navigation.GetFormCount() > 1) {
            auto* top = qobject_cast<PedometerForm*>(navigation.GetTopForm());
            ASSERT_NE(top, nullptr);
            top->OnActionPerformed(*top, PedometerForm::BACK_ACTION_ID);
            QCoreApplication::processEvents();
        }
        if (app->GetMainForm()->IsLocked()) app->GetMainForm()->Unblock(shown);
        EXPECT_EQ(navigation.GetTopForm(), app->GetMainForm());
    }
}

TEST_F(ScreenDirectoryTest, AnUnknownNameIsRefusedWithTheName) {
    QString error;
    EXPECT_EQ(ScreenDirectory::Open(QStringLiteral("no-such-screen"),
                                    *app->GetNavigationController(), ScreenRequest{}, &error),
              nullptr);
    EXPECT_TRUE(error.contains(QStringLiteral("no-such-screen")));
}

}  // namespace
