#include "TargetSelect.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QLocale>
#include <QPointer>
#include <QTest>

#include "../sound/FakeSoundPlayer.h"
#include "AppFrame.h"
#include "AppResource.h"
#include "Converter.h"
#include "FormHeader.h"
#include "GoalTestSupport.h"
#include "PlatformSettings.h"
#include "SoftkeyBar.h"
#include "SoundsManager.h"
#include "TargetSlider.h"
#include "TivNavigationController.h"
#include "TivNumberField.h"

namespace {

const QString kClick = QStringLiteral("click.wav");

// The goal screen pushed over a plain root, in a shown frame, with counted clicks.
class TargetSelectTest : public GoalTest {
protected:
    void SetUp() override {
        GoalTest::SetUp();
        PlatformSettings::SetSilentMode(false);
        SoundsManager::GetInstance().SetPlayerFactory(FakePlayers(plays));
        SoundsManager::GetInstance().SetActive(true);
    }
    void TearDown() override {
        controller.reset();
        frame.reset();
        SoundsManager::GetInstance().SetPlayerFactory(FakePlayers(Leftovers()));
        GoalTest::TearDown();
    }
    static FakePlayerLog& Leftovers() {
        static FakePlayerLog* log = new FakePlayerLog;
        return *log;
    }

    TargetSelect& Open() {
        frame = std::make_unique<AppFrame>();
        controller = std::make_unique<TivNavigationController>(*frame);
        auto* root = new PedometerForm;
        controller->InitWithRootForm(root);
        frame->AddControl(*root);
        frame->SetCurrentForm(*root);
        frame->show();
        screen = new TargetSelect;
        screen->Initialize();
        controller->PushForm(screen);
        return *screen;
    }
    void TapTab(int index) {
        FormHeader* header = screen->GetHeader();
        QTest::mouseClick(header, Qt::LeftButton, {}, header->TabRect(index).center());
    }
    // Types `text` over the field's contents and finishes with Enter.
    static void Enter(QLineEdit* field, const QString& text) {
        ASSERT_NE(field, nullptr);
        field->selectAll();
        if (text.isEmpty())
            QTest::keyClick(field, Qt::Key_Backspace);
        else
            QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
    }

    FakePlayerLog plays;
    std::unique_ptr<AppFrame> frame;
    std::unique_ptr<TivNavigationController> controller;
    QPointer<TargetSelect> screen;
};

TEST_F(TargetSelectTest, OpensOnTheStoredKindWithItsTargetAndABackKey) {
    Goal().targetActive = 2;
    Goal().calories = 300;
    TargetSelect& form = Open();
    EXPECT_EQ(form.GetHeader()->GetTitleText(), "Today's goal");
    ASSERT_EQ(form.GetHeader()->GetTabCount(), 5);
    EXPECT_EQ(form.GetHeader()->GetTabText(0), "Off");
    EXPECT_EQ(form.GetHeader()->GetTabActionId(4), TargetSelect::ID_STEPS);
    EXPECT_EQ(form.GetSelectedTabIndex(), 2);
    ASSERT_NE(form.GetValueField(), nullptr);
    EXPECT_EQ(form.GetValueField()->text(), "300");
    EXPECT_EQ(form.GetValueField()->maxLength(), 4);
    EXPECT_EQ(form.GetWholeField(), nullptr);
    EXPECT_FALSE(form.GetTargetSlider()->isHidden());
    EXPECT_TRUE(frame->GetSoftkeyBar().IsKeyShown(SoftkeyBar::Key::Right));
}

TEST_F(TargetSelectTest, ATabClicksStoresAndSavesTheKindAndRebuildsTheFields) {
    Goal().targetActive = 0;
    TargetSelect& form = Open();
    EXPECT_EQ(form.GetSelectedTabIndex(), 0);
    EXPECT_TRUE(form.GetTargetSlider()->isHidden());
    EXPECT_EQ(form.GetValueField(), nullptr);
    ASSERT_NE(form.GetHintLabel(), nullptr);  // says what a goal does
    EXPECT_FALSE(form.GetHintLabel()->GetText().isEmpty());
    EXPECT_NE(form.GetHintLabel()->GetText(), "today_goal__ Off hint");

    TapTab(1);
    EXPECT_EQ(form.GetHintLabel(), nullptr);
    EXPECT_EQ(plays.Plays(kClick), 1);
    EXPECT_EQ(Goal().targetActive, 1);
    EXPECT_EQ(Stored().targetActive, 1);
    ASSERT_NE(form.GetWholeField(), nullptr);
    EXPECT_EQ(form.GetWholeField()->text(), "5");
    EXPECT_EQ(form.GetFractionField()->text(), "000");
    EXPECT_EQ(form.GetFractionField()->maxLength(), 3);
    EXPECT_FALSE(form.GetTargetSlider()->isHidden());

    TapTab(3);
    EXPECT_EQ(Stored().targetActive, 3);
    ASSERT_NE(form.GetValueField(), nullptr);
    EXPECT_EQ(form.GetValueField()->text(), "30");
    EXPECT_EQ(form.GetValueField()->maxLength(), 3);
    EXPECT_EQ(form.GetWholeField(), nullptr);

    TapTab(0);
    EXPECT_EQ(plays.Plays(kClick), 3);
    EXPECT_EQ(Stored().targetActive, 0);
    EXPECT_TRUE(form.GetTargetSlider()->isHidden());
    EXPECT_EQ(form.GetValueField(), nullptr);
}

// A value out of range, or none, is kept as typed, explained and not stored.
TEST_F(TargetSelectTest, CaloriesActivityAndStepsOutOfRangeAreRefusedWithTheReason) {
    const struct {
        int tab;
        const char* typed;
        const char* shown;
        int DAOTarget::*stored;
        int value;
        const char* message;
    } cases[] = {
        {2, "1500", "1500", &DAOTarget::calories, 1500, ""},
        {2, "0", "0", &DAOTarget::calories, 1500, "Too small: at least 10 Cal."},
        {2, "", "", &DAOTarget::calories, 1500, "Please enter a number."},
        {3, "45x", "45", &DAOTarget::activityTime, 45, ""},  // the field takes digits only
        {3, "3", "3", &DAOTarget::activityTime, 45, "Too small: at least 5 min."},
        {4, "123456", "12345", &DAOTarget::steps, 12345, ""},  // five digits at most
        {4, "99", "99", &DAOTarget::steps, 12345, "Too small: at least 100 steps."},
    };
    Goal().targetActive = 2;
    TargetSelect& form = Open();
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string("tab ") + std::to_string(c.tab) + " typed " + c.typed);
        if (form.GetSelectedTabIndex() != c.tab) TapTab(c.tab);
        Enter(form.GetValueField(), c.typed);
        EXPECT_EQ(form.GetValueField()->text(), c.shown);
        EXPECT_EQ(Stored().*c.stored, c.value);
        EXPECT_EQ(static_cast<TivNumberField*>(form.GetValueField())->GetMessage(), c.message);
    }
}

TEST_F(TargetSelectTest, MetricDistanceIsKilometresAndThreeDigitsOfMetres) {
    Goal().targetActive = 1;
    Goal().distance = 2.5;
    TargetSelect& form = Open();
    EXPECT_EQ(form.GetWholeField()->text(), "2");
    EXPECT_EQ(form.GetFractionField()->text(), "500");

    Enter(form.GetFractionField(), "5");  // labelled "m": 5 metres
    EXPECT_EQ(form.GetFractionField()->text(), "5");
    EXPECT_DOUBLE_EQ(Stored().distance, 2.005);

    Enter(form.GetWholeField(), "0");
    Enter(form.GetFractionField(), "99");
    EXPECT_EQ(qobject_cast<TivNumberField*>(form.GetWholeField())->GetMessage(),
              "Too small: at least 0.1 km.");
    EXPECT_DOUBLE_EQ(Stored().distance, 2.005);
}

TEST_F(TargetSelectTest, ImperialDistanceIsMilesAndTenths) {
    PedometerOptions::GetInstance().measurementSystem = true;
    Goal().targetActive = 1;
    Goal().distance = Converter::ConvertMilesToKilometers(1.3);
    TargetSelect& form = Open();
    EXPECT_EQ(form.GetWholeField()->text(), "1");
    EXPECT_EQ(form.GetFractionField()->text(), "3");
    EXPECT_EQ(form.GetFractionField()->maxLength(), 1);

    Enter(form.GetWholeField(), "0");
    Enter(form.GetFractionField(), "1");
    EXPECT_NEAR(Stored().distance, 0.1609344, 1e-9);
}

TEST_F(TargetSelectTest, AFractionThatRoundsUpCarriesIntoTheWholePart) {
    Goal().targetActive = 1;
    Goal().distance = 2.9996;
    TargetSelect& form = Open();
    EXPECT_EQ(form.GetWholeField()->text(), "3");
    EXPECT_EQ(form.GetFractionField()->text(), "000");
}

TEST_F(TargetSelectTest, AnEditRefreshesTheProgressAtOnce) {
    AddToday(0, 5, 60);
    Goal().targetActive = 2;
    Goal().calories = 10;
    TargetSelect& form = Open();
    TargetSlider* slider = form.GetTargetSlider();
    const int full = slider->GetBarFullWidth();
    EXPECT_EQ(slider->GetBarFillWidth(), 50 * full / 100);
    Enter(form.GetValueField(), "20");
    EXPECT_EQ(slider->GetTargetText(), "20");
    EXPECT_EQ(slider->GetBarFillWidth(), 25 * full / 100);
}

TEST_F(TargetSelectTest, AValueBeingTypedIsKeptWhenAnotherTabIsChosen) {
    Goal().targetActive = 2;
    TargetSelect& form = Open();
    frame->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(frame.get()));
    QLineEdit* field = form.GetValueField();
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, "450");
    TapTab(3);
    EXPECT_EQ(Stored().calories, 450);
    EXPECT_EQ(Stored().targetActive, 3);
}

TEST_F(TargetSelectTest, BackKeyFromAFieldLeavesTheScreenWithOneClick) {
    Goal().targetActive = 2;
    TargetSelect& form = Open();
    frame->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(frame.get()));
    form.GetValueField()->setFocus();
    QTest::keyClick(form.GetValueField(), Qt::Key_Escape);
    EXPECT_EQ(plays.Plays(kClick), 1);
    EXPECT_EQ(controller->GetFormCount(), 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(screen.isNull());
}

}  // namespace
