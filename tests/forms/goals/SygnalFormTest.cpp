#include "SygnalForm.h"

#include "GoalScreenTest.h"
#include "TivButton.h"
#include "TivLabel.h"
#include "TivNumberField.h"

namespace {

class SygnalFormTest : public GoalScreenTest {
protected:
    SygnalForm& Open(int type) {
        Options().sygnalType = type;
        return Push<SygnalForm>();
    }
    static void AddProgress(double kcal, int seconds, double km) {
        PedometerDBManager& db = PedometerDBManager::GetInstance();
        DAOSygnal today = db.GetTodaySygnal();
        today.calories += kcal;
        today.activityTime += seconds;
        today.distance += km;
        db.UpdateSygnal(today);
    }
    static void SetFarTargets() {  // no test's progress reaches them
        Options().sygnalCalories = 1000;
        Options().sygnalDistance = 100.0;
        Options().sygnalActivity = 900;
    }
    static double StoredKcal() {
        return PedometerDBManager::GetInstance().GetTodaySygnal().calories;
    }
};

TEST_F(SygnalFormTest, TabsKeepThePhaseAndSave) {
    struct Case {
        int from;
        int tab;
        int to;
    };
    const Case cases[] = {{0, 1, 2}, {2, 2, 3}, {3, 0, 0}, {0, 3, 10}, {10, 1, 2},  // stopped
                          {4, 1, 5}, {5, 2, 6}, {6, 0, 4}, {6, 3, 11}, {11, 0, 4},  // running
                          {8, 1, 7}, {7, 2, 9}, {9, 0, 8}, {7, 3, 12}, {12, 2, 9},  // completed
                          {1, 2, 1}};  // no state stays
    for (const Case& c : cases) {
        AddProgress(1.0, 5, 0.001);
        Open(c.from);
        TapTab(c.tab);
        EXPECT_EQ(Options().sygnalType.load(), c.to) << c.from << " tab " << c.tab;
        EXPECT_EQ(Stored()->sygnalType.load(), c.to) << c.from;
        EXPECT_GT(StoredKcal(), 0.0) << "progress kept, " << c.from;
    }
    EXPECT_EQ(plays.Plays("click.wav"), int(std::size(cases)));
}

TEST_F(SygnalFormTest, StartPauseAndResetFollowTheStateTable) {
    struct Case {
        int from;
        int action;
        int to;
        bool clears;
    };
    const Case cases[] = {
        {0, SygnalForm::ID_START, 4, false}, {2, SygnalForm::ID_START, 5, false},
        {3, SygnalForm::ID_START, 6, false}, {8, SygnalForm::ID_START, 4, true},
        {7, SygnalForm::ID_START, 5, true},  {9, SygnalForm::ID_START, 6, true},
        {4, SygnalForm::ID_PAUSE, 0, false}, {5, SygnalForm::ID_PAUSE, 2, false},
        {6, SygnalForm::ID_PAUSE, 3, false}, {8, SygnalForm::ID_RESET, 4, true},
        {9, SygnalForm::ID_RESET, 6, true},  {7, SygnalForm::ID_RESET, 5, true},
        {0, SygnalForm::ID_RESET, 0, true},  {10, SygnalForm::ID_START, 11, false},
        {12, SygnalForm::ID_START, 11, true}, {11, SygnalForm::ID_PAUSE, 10, false},
        {12, SygnalForm::ID_RESET, 11, true},
    };
    for (const Case& c : cases) {
        PedometerDBManager::GetInstance().ClearSygnals();
        AddProgress(1.0, 5, 0.0);
        SetFarTargets();
        SygnalForm& form = Open(c.from);
        const int stored = Stored()->sygnalType;
        if (c.action != SygnalForm::ID_RESET) {
            ASSERT_EQ(form.GetStartPauseButton()->GetActionId(), c.action) << c.from;
        }
        Click(c.action == SygnalForm::ID_RESET ? form.GetResetButton()
                                               : form.GetStartPauseButton());
        EXPECT_EQ(Options().sygnalType.load(), c.to) << c.from << " action " << c.action;
        EXPECT_EQ(StoredKcal(), c.clears ? 0.0 : 1.0) << c.from << " action " << c.action;
        // Only a save elsewhere stores the new state.
        EXPECT_EQ(Stored()->sygnalType.load(), stored) << c.from;
    }
}

TEST_F(SygnalFormTest, ProgressShowsWhileRunningAndGoesOnPause) {
    Options().sygnalDistance = 2.5;
    AddProgress(0.0, 0, 1.0);
    SygnalForm& form = Open(5);
    ASSERT_NE(form.GetProgressBar(), nullptr);
    EXPECT_EQ(form.GetProgressBar()->value(), 40);
    EXPECT_EQ(form.GetProgressLabel()->GetText(), "Progress so far: 1.0 of 2.5 km");
    EXPECT_EQ(form.GetStartPauseButton()->GetActionId(), SygnalForm::ID_PAUSE);

    Click(form.GetStartPauseButton());
    EXPECT_EQ(Options().sygnalType.load(), 2);
    EXPECT_EQ(form.GetProgressBar(), nullptr);
    EXPECT_EQ(form.GetProgressLabel(), nullptr);
    EXPECT_EQ(form.GetStartPauseButton()->GetActionId(), SygnalForm::ID_START);
}

// While shown, the screen follows the counting, and is rebuilt when the alarm completes
// elsewhere; while hidden, it reads nothing.
TEST_F(SygnalFormTest, ProgressFollowsTheCountingWhileShown) {
    Options().sygnalActivity = 10;
    AddProgress(0.0, 120, 0.0);
    SygnalForm& form = Open(6);
    ASSERT_NE(form.GetProgressBar(), nullptr);
    EXPECT_EQ(form.GetProgressBar()->value(), 20);
    AddProgress(0.0, 180, 0.0);
    form.OnRefreshTick();
    EXPECT_EQ(form.GetProgressBar()->value(), 50);
    EXPECT_EQ(form.GetProgressLabel()->GetText(), "Progress so far: 5 of 10 min");

    form.hide();
    AddProgress(0.0, 60, 0.0);
    form.OnRefreshTick();
    EXPECT_EQ(form.GetProgressBar()->value(), 50);
    form.show();
    form.OnRefreshTick();
    EXPECT_EQ(form.GetProgressBar()->value(), 60);

    Options().sygnalType = 9;  // the updater saw the target reached
    form.OnRefreshTick();
    EXPECT_EQ(form.GetStartPauseButton()->GetActionId(), SygnalForm::ID_START);
    EXPECT_EQ(form.GetProgressLabel()->GetText(), "Goal reached!");
}

TEST_F(SygnalFormTest, ARunningAlarmAtItsTargetBecomesDistanceCompleted) {
    Options().sygnalCalories = 10;
    AddProgress(12.0, 0, 0.0);
    SygnalForm& form = Open(4);
    EXPECT_EQ(Options().sygnalType.load(), 7);
    EXPECT_EQ(form.GetSelectedTabIndex(), 0);  // still the calories tab
    ASSERT_NE(form.GetProgressBar(), nullptr);
    EXPECT_EQ(form.GetProgressBar()->value(), 100);
    EXPECT_EQ(form.GetProgressLabel()->GetText(), "Goal reached!");
}

// Opening shows the tab of the alarm's kind and the button its phase allows.
TEST_F(SygnalFormTest, OpeningSelectsTheKindsTabAndCaptionsTheButtons) {
    struct Case {
        int type;
        int tab;
        const char* startPause;
    };
    const Case cases[] = {{0, 0, "Start"}, {2, 1, "Start"}, {3, 2, "Start"}, {4, 0, "Pause"},
                          {5, 1, "Pause"}, {6, 2, "Pause"}, {7, 1, "Start"}, {9, 2, "Start"},
                          {10, 3, "Start"}, {11, 3, "Pause"}, {12, 3, "Start"}};
    for (const Case& c : cases) {
        SetFarTargets();
        SygnalForm& form = Open(c.type);
        EXPECT_EQ(form.GetSelectedTabIndex(), c.tab) << c.type;
        const auto caption = [](const TivButton* button) {
            const auto* label = button->findChild<TivLabel*>();
            return label != nullptr ? label->GetText() : QString();
        };
        EXPECT_EQ(caption(form.GetStartPauseButton()), c.startPause) << c.type;
        EXPECT_EQ(caption(form.GetResetButton()), "Reset") << c.type;
    }
}

// A target below its floor is kept as typed, explained and not stored.
TEST_F(SygnalFormTest, TargetsBelowTheirFloorsAreRefusedWithTheReason) {
    const auto message = [](QLineEdit* f) { return static_cast<TivNumberField*>(f)->GetMessage(); };
    SygnalForm& form = Open(0);
    const auto before = Stored();
    Enter(form.GetValueField(), "9");
    EXPECT_EQ(form.GetValueField()->text(), "9");
    EXPECT_EQ(message(form.GetValueField()), "Too small: at least 10 Cal.");
    EXPECT_EQ(Stored()->sygnalCalories.load(), before->sygnalCalories.load());
    Enter(form.GetValueField(), "450");
    EXPECT_EQ(message(form.GetValueField()), "");
    EXPECT_EQ(Stored()->sygnalCalories.load(), 450);

    TapTab(2);
    Enter(form.GetValueField(), "3");
    EXPECT_EQ(message(form.GetValueField()), "Too small: at least 5 min.");
    EXPECT_EQ(Stored()->sygnalActivity.load(), before->sygnalActivity.load());

    TapTab(3);
    Enter(form.GetValueField(), "42");
    EXPECT_EQ(form.GetValueField()->text(), "42");
    EXPECT_EQ(message(form.GetValueField()), "Too small: at least 100 steps.");
    EXPECT_EQ(Stored()->sygnalSteps.load(), before->sygnalSteps.load());

    TapTab(1);
    Enter(form.GetWholeField(), "0");
    Enter(form.GetFractionField(), "0");
    EXPECT_EQ(message(form.GetWholeField()), "Too small: at least 0.1 km.");
    EXPECT_DOUBLE_EQ(Stored()->sygnalDistance.load(), before->sygnalDistance.load());
    Enter(form.GetWholeField(), "2");
    Enter(form.GetFractionField(), "5");  // labelled "m": 5 metres
    EXPECT_EQ(form.GetFractionField()->text(), "5");
    EXPECT_DOUBLE_EQ(Stored()->sygnalDistance.load(), 2.005);
}

TEST_F(SygnalFormTest, ImperialDistanceIsMilesAndTenths) {
    Options().measurementSystem = true;
    Options().sygnalDistance = 1.3 * 1.609344;
    SygnalForm& form = Open(2);
    EXPECT_EQ(form.GetWholeField()->text(), "1");
    EXPECT_EQ(form.GetFractionField()->text(), "3");
    Enter(form.GetWholeField(), "0");
    Enter(form.GetFractionField(), "1");
    EXPECT_NEAR(Stored()->sygnalDistance.load(), 0.1609344, 1e-9);
}

}  // namespace
