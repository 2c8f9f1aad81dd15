// The three goal screens: today's goal (TargetSelect), the alarm (SygnalForm) and the
// pacer (PacerForm). They share their tabs and digit fields, so one table drives what a
// tab and a typed entry do on each; the rest are each screen's own rules.
#include <array>
#include <functional>

#include "Converter.h"
#include "DAOTarget.h"
#include "GoalScreenTest.h"
#include "Metronome.h"
#include "PacerForm.h"
#include "SoftkeyBar.h"
#include "SygnalForm.h"
#include "TargetSelect.h"
#include "TargetSlider.h"
#include "TivButton.h"
#include "TivLabel.h"
#include "TivNumberField.h"
#include "TivSlider.h"

namespace {

enum Kind { GOAL, ALARM, PACER };

class GoalScreensTest : public GoalScreenTest {
protected:
    void SetUp() override {
        GoalScreenTest::SetUp();
        DAOTarget::GetInstance() = DAOTarget();
    }
    void TearDown() override {
        Metronome::GetInstance().Stop();
        GoalScreenTest::TearDown();
        DAOTarget::GetInstance() = DAOTarget();
    }
    PedometerForm& Open(Kind kind) {
        if (kind == GOAL) return Push<TargetSelect>();
        if (kind == ALARM) return Push<SygnalForm>();
        return Push<PacerForm>();
    }
    // The single field of a tab, or the whole part and the fraction of a two-part one.
    QLineEdit* Field(bool whole) const {
        if (auto* f = qobject_cast<TargetSelect*>(screen.data()))
            return whole ? f->GetWholeField() : f->GetValueField();
        if (auto* f = qobject_cast<SygnalForm*>(screen.data()))
            return whole ? f->GetWholeField() : f->GetValueField();
        auto* f = qobject_cast<PacerForm*>(screen.data());
        return whole ? f->GetWholeField() : f->GetRateField();
    }
    QLineEdit* Fraction() const {
        if (auto* f = qobject_cast<TargetSelect*>(screen.data())) return f->GetFractionField();
        if (auto* f = qobject_cast<SygnalForm*>(screen.data())) return f->GetFractionField();
        return qobject_cast<PacerForm*>(screen.data())->GetTenthsField();
    }
    static DAOTarget StoredGoal() {
        DAOTarget stored;
        PedometerDBManager::GetInstance().LoadTargets(stored);
        return stored;
    }
    // The stored value a tab edits, in km, Cal, min, steps or steps/min.
    static double StoredValue(Kind kind, int tab) {
        if (kind == GOAL) {
            const DAOTarget g = StoredGoal();
            return std::array<double, 5>{0, g.distance, double(g.calories),
                                         double(g.activityTime), double(g.steps)}[tab];
        }
        const auto o = Stored();
        if (kind == ALARM)
            return std::array<double, 4>{double(o->sygnalCalories), o->sygnalDistance,
                                         double(o->sygnalActivity), double(o->sygnalSteps)}[tab];
        return std::array<double, 4>{0, o->pacerSpeed, o->pacerPace,
                                     double(o->pacerFrequency)}[tab];
    }
    static void AddProgress(double kcal, int seconds, double km) {
        PedometerDBManager& db = PedometerDBManager::GetInstance();
        DAOSygnal today = db.GetTodaySygnal();
        today.calories += kcal;
        today.activityTime += seconds;
        today.distance += km;
        db.UpdateSygnal(today);
    }
    static double StoredKcal() { return PedometerDBManager::GetInstance().GetTodaySygnal().calories; }
};

// Each screen opens on the stored kind's tab, a tab tap stores the kind with a click, and
// a typed value is stored only when in range; otherwise it is kept as typed and explained.
// A fraction field holds metres (three digits) or tenths of a mile or unit.
TEST_F(GoalScreensTest, TabsAndTypedEntriesStoreOnlyWhatIsInRange) {
    const double kMile = Converter::ConvertMilesToKilometers(1.0);
    const struct {
        Kind kind;
        int tab;
        const char* typed;  // "whole.fraction" for two fields
        double stored;      // when accepted
        const char* message = "";
        bool miles = false;
        const char* shown = nullptr;  // what the (whole) field shows, if not as typed
    } cases[] = {
        {GOAL, 2, "1500", 1500}, {GOAL, 2, "0", 0, "Too small: at least 10 Cal."},
        {GOAL, 2, "", 0, "Please enter a number."}, {GOAL, 3, "45x", 45, "", false, "45"},
        {GOAL, 3, "3", 0, "Too small: at least 5 min."},
        {GOAL, 4, "123456", 12345, "", false, "12345"},  // five digits at most
        {GOAL, 4, "99", 0, "Too small: at least 100 steps."},
        {GOAL, 1, "2.5", 2.005}, {GOAL, 1, "0.99", 0, "Too small: at least 0.1 km."},
        {GOAL, 1, "0.1", 0.1 * kMile, "", true},  // tenths of a mile, metres otherwise
        {ALARM, 0, "9", 0, "Too small: at least 10 Cal."}, {ALARM, 0, "450", 450},
        {ALARM, 2, "3", 0, "Too small: at least 5 min."},
        {ALARM, 3, "42", 0, "Too small: at least 100 steps."},
        {ALARM, 1, "0.0", 0, "Too small: at least 0.1 km."}, {ALARM, 1, "2.5", 2.005},
        {ALARM, 1, "0.1", 0.1 * kMile, "", true}, {PACER, 1, "6.5", 6.5},
        {PACER, 1, "0.5", 0, "Too small: at least 1.0 km/h."},
        {PACER, 1, "45.0", 0, "Too large: at most 30.0 km/h."},
        {PACER, 2, "1.9", 0, "Too small: at least 2.0 min/km."}, {PACER, 2, "9.2", 9.2},
        {PACER, 3, "120", 120}, {PACER, 3, "300", 0, "Too large: at most 250 steps/min."},
        {PACER, 3, "", 0, "Please enter a number."}, {PACER, 2, "9.0", 9 * kMile, "", true},
        {PACER, 1, "3.1", 3.1 * kMile, "", true},
    };
    int clicks = 0;
    for (const auto& c : cases) {
        const QString typed = QString::fromUtf8(c.typed);
        SCOPED_TRACE(std::to_string(c.kind) + " tab " + std::to_string(c.tab) + " " + c.typed);
        Options().measurementSystem = c.miles;
        DAOTarget::GetInstance().targetActive = 0;  // opened on another tab than c.tab
        Options().pacerType = 0;
        Options().sygnalType = c.tab == 0 ? 2 : 0;
        Open(c.kind);
        TapTab(c.tab);
        EXPECT_EQ(plays.Plays("click.wav"), ++clicks);
        const int alarmType[] = {0, 2, 3, 10};
        EXPECT_EQ(c.kind == GOAL    ? StoredGoal().targetActive
                  : c.kind == PACER ? Stored()->pacerType.load()
                                    : Stored()->sygnalType.load(),
                  c.kind == ALARM ? alarmType[c.tab] : c.tab);
        const double before = StoredValue(c.kind, c.tab);
        const bool twoFields = typed.contains('.');
        QLineEdit* field = Field(twoFields);
        Enter(field, typed.section('.', 0, 0));
        if (twoFields) Enter(Fraction(), typed.section('.', 1));
        EXPECT_EQ(field->text(), c.shown ? QString::fromUtf8(c.shown) : typed.section('.', 0, 0));
        EXPECT_EQ(static_cast<TivNumberField*>(field)->GetMessage(), c.message);
        EXPECT_NEAR(StoredValue(c.kind, c.tab), *c.message == '\0' ? c.stored : before, 1e-9);
    }
}

// The stored value is shown back in the user's units; a fraction that rounds up carries.
TEST_F(GoalScreensTest, OpeningShowsTheStoredValue) {
    const struct {
        Kind kind;
        bool miles;
        int tab;
        std::function<void()> store;
        const char* whole;
        const char* fraction;  // nullptr: a single field
    } cases[] = {
        {GOAL, false, 1, [] { DAOTarget::GetInstance().distance = 2.5; }, "2", "500"},
        {GOAL, false, 1, [] { DAOTarget::GetInstance().distance = 2.9996; }, "3", "000"},
        {GOAL, true, 1, [] { DAOTarget::GetInstance().distance = 1.3 * 1.609344; }, "1", "3"},
        {GOAL, false, 2, [] { DAOTarget::GetInstance().calories = 300; }, "300", nullptr},
        {ALARM, true, 1, [] { Options().sygnalDistance = 1.3 * 1.609344; }, "1", "3"},
        {PACER, false, 1, [] { Options().pacerSpeed = 6.5; }, "6", "5"},
        {PACER, false, 2, [] { Options().pacerPace = 9.2; }, "9", "2"},
        {PACER, false, 3, [] { Options().pacerFrequency = 118; }, "118", nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.kind) + " tab " + std::to_string(c.tab) + " " + c.whole);
        Options().measurementSystem = c.miles;
        c.store();
        DAOTarget::GetInstance().targetActive = c.tab;
        Options().pacerType = c.tab;
        Options().sygnalType = c.tab == 1 ? 2 : 0;
        Open(c.kind);
        EXPECT_EQ(Field(c.fraction != nullptr)->text(), c.whole);
        if (c.fraction != nullptr) {
            EXPECT_EQ(Fraction()->text(), c.fraction);
        }
    }
}

TEST_F(GoalScreensTest, GoalEditRefreshesTheProgressAtOnce) {
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    auto lap = db.CreateNewLap();
    DAOLapMinutes minute;
    minute.lapId = lap->id;
    minute.lapMinute = 1;
    minute.calories = 5;
    minute.secondsCompleted = 60;
    db.CreateNewLapMinute(minute);
    db.UpdateLapMinute(minute);
    DAOTarget::GetInstance().targetActive = 2;
    DAOTarget::GetInstance().calories = 10;
    auto& form = Push<TargetSelect>();
    TargetSlider* slider = form.GetTargetSlider();
    EXPECT_FALSE(slider->isHidden());
    const int full = slider->GetBarFullWidth();
    EXPECT_EQ(slider->GetBarFillWidth(), 50 * full / 100);
    Enter(form.GetValueField(), "20");
    EXPECT_EQ(slider->GetTargetText(), "20");
    EXPECT_EQ(slider->GetBarFillWidth(), 25 * full / 100);
    TapTab(0);
    EXPECT_TRUE(slider->isHidden());
}

// A value being typed is stored when another tab is chosen; Back from a field leaves the
// screen with one click.
TEST_F(GoalScreensTest, GoalKeepsATypedValueOnATabAndBackLeavesWithOneClick) {
    DAOTarget::GetInstance().targetActive = 2;
    auto& form = Push<TargetSelect>();
    frame->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(frame.get()));
    form.GetValueField()->setFocus();
    form.GetValueField()->selectAll();
    QTest::keyClicks(form.GetValueField(), "450");
    TapTab(3);
    EXPECT_EQ(StoredGoal().calories, 450);
    EXPECT_EQ(StoredGoal().targetActive, 3);
    EXPECT_TRUE(frame->GetSoftkeyBar().IsKeyShown(SoftkeyBar::Key::Right));
    form.GetValueField()->setFocus();
    QTest::keyClick(form.GetValueField(), Qt::Key_Escape);
    EXPECT_EQ(plays.Plays("click.wav"), 2);
    EXPECT_EQ(navigation->GetFormCount(), 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(screen.isNull());
}

// The alarm's type holds kind and phase: stopped 0, 2, 3, running 4, 5, 6, completed
// 8, 7, 9, and 10, 11, 12 for steps. A tab keeps the phase and saves; progress is kept.
TEST_F(GoalScreensTest, AlarmTabsKeepThePhaseAndSave) {
    const int cases[][3] = {{0, 1, 2}, {2, 2, 3}, {3, 0, 0}, {0, 3, 10}, {10, 1, 2},
                            {4, 1, 5}, {5, 2, 6}, {6, 0, 4}, {6, 3, 11}, {11, 0, 4},
                            {8, 1, 7}, {7, 2, 9}, {9, 0, 8}, {7, 3, 12}, {12, 2, 9}, {1, 2, 1}};
    for (const auto& [from, tab, to] : cases) {
        AddProgress(1.0, 5, 0.001);
        Options().sygnalType = from;
        Push<SygnalForm>();
        TapTab(tab);
        EXPECT_EQ(Options().sygnalType.load(), to) << from << " tab " << tab;
        EXPECT_EQ(Stored()->sygnalType.load(), to) << from;
        EXPECT_GT(StoredKcal(), 0.0) << "progress kept, " << from;
    }
}

// Start, Pause and Reset move the phase (not stored until a save elsewhere); starting a
// completed alarm or a reset clears the progress. The screen opens on the kind's tab.
TEST_F(GoalScreensTest, AlarmStartPauseAndResetFollowTheStateTable) {
    const int kTabOf[] = {0, 0, 1, 2, 0, 1, 2, 1, 0, 2, 3, 3, 3};
    const int START = SygnalForm::ID_START, PAUSE = SygnalForm::ID_PAUSE,
              RESET = SygnalForm::ID_RESET;
    const struct {
        int from, action, to;
        bool clears;
    } cases[] = {
        {0, START, 4, false}, {2, START, 5, false}, {3, START, 6, false}, {8, START, 4, true},
        {7, START, 5, true},  {9, START, 6, true},  {4, PAUSE, 0, false}, {5, PAUSE, 2, false},
        {6, PAUSE, 3, false}, {8, RESET, 4, true},  {9, RESET, 6, true},  {7, RESET, 5, true},
        {0, RESET, 0, true},  {10, START, 11, false}, {12, START, 11, true},
        {11, PAUSE, 10, false}, {12, RESET, 11, true},
    };
    for (const auto& c : cases) {
        PedometerDBManager::GetInstance().ClearSygnals();
        AddProgress(1.0, 5, 0.0);
        Options().sygnalCalories = 1000;  // no progress reaches these
        Options().sygnalDistance = 100.0;
        Options().sygnalActivity = 900;
        Options().sygnalType = c.from;
        auto& form = Push<SygnalForm>();
        EXPECT_EQ(form.GetSelectedTabIndex(), kTabOf[c.from]) << c.from;
        const int stored = Stored()->sygnalType;
        if (c.action != RESET) {
            ASSERT_EQ(form.GetStartPauseButton()->GetActionId(), c.action);
        }
        Click(c.action == RESET ? form.GetResetButton() : form.GetStartPauseButton());
        EXPECT_EQ(Options().sygnalType.load(), c.to) << c.from << " action " << c.action;
        EXPECT_EQ(StoredKcal(), c.clears ? 0.0 : 1.0) << c.from << " action " << c.action;
        EXPECT_EQ(Stored()->sygnalType.load(), stored) << c.from;
    }
}

// While shown, the alarm follows the counting and is rebuilt when it completes elsewhere;
// while hidden it reads nothing; a pause takes the progress away.
TEST_F(GoalScreensTest, AlarmProgressFollowsTheCountingWhileShown) {
    Options().sygnalActivity = 10;
    AddProgress(0.0, 120, 0.0);
    Options().sygnalType = 6;
    auto& form = Push<SygnalForm>();
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

    Click(form.GetStartPauseButton());
    EXPECT_EQ(form.GetProgressBar(), nullptr);
    Click(form.GetStartPauseButton());
    Options().sygnalType = 9;  // the updater saw the target reached
    form.OnRefreshTick();
    EXPECT_EQ(form.GetStartPauseButton()->GetActionId(), SygnalForm::ID_START);
    EXPECT_EQ(form.GetProgressLabel()->GetText(), "Goal reached!");

    Options().sygnalDistance = 2.5;  // a running distance alarm, in km
    AddProgress(0.0, 0, 1.0);
    Options().sygnalType = 5;
    auto& distance = Push<SygnalForm>();
    ASSERT_NE(distance.GetProgressBar(), nullptr);
    EXPECT_EQ(distance.GetProgressBar()->value(), 40);
    EXPECT_EQ(distance.GetProgressLabel()->GetText(), "Progress so far: 1.0 of 2.5 km");
}

TEST_F(GoalScreensTest, ARunningAlarmAtItsTargetBecomesCompletedOnOpening) {
    Options().sygnalCalories = 10;
    AddProgress(12.0, 0, 0.0);
    Options().sygnalType = 4;
    auto& form = Push<SygnalForm>();
    EXPECT_EQ(Options().sygnalType.load(), 7);
    EXPECT_EQ(form.GetSelectedTabIndex(), 0);
    ASSERT_NE(form.GetProgressBar(), nullptr);
    EXPECT_EQ(form.GetProgressBar()->value(), 100);
}

TEST_F(GoalScreensTest, PacerSliderEndsGiveEachModesToleranceRange) {
    const struct {
        int mode, position;
        double tolerance;
        const char* label;
    } cases[] = {
        {1, 0, 0.5, "± 0.5 km/h"},   {1, 100, 5.0, "± 5.0 km/h"},     {2, 0, 1.0, "± 1.0 min/km"},
        {2, 100, 6.0, "± 6.0 min/km"}, {3, 0, 5, "± 5 steps/min"}, {3, 55, 57, "± 57 steps/min"},
        {3, 100, 100, "± 100 steps/min"},
    };
    for (const auto& c : cases) {
        Options().pacerDiff = true;
        Options().pacerType = c.mode;
        auto& form = Push<PacerForm>();
        form.SliderValueChanged(c.position);
        const auto stored = Stored();
        EXPECT_DOUBLE_EQ(c.mode == 1   ? stored->pacerDiffSpeed.load()
                         : c.mode == 2 ? stored->pacerDiffPace.load()
                                       : double(stored->pacerDiffFrequency.load()),
                         c.tolerance)
            << c.mode << " at " << c.position;
        EXPECT_EQ(form.GetSliderLabel()->GetText(), QString::fromUtf8(c.label));
    }
}

TEST_F(GoalScreensTest, PacerCheckRowsToggleSaveAndShowTheSlider) {
    Options().pacerDiff = false;
    Options().pacerOffOnStanding = false;
    Options().pacerType = 3;
    auto& form = Push<PacerForm>();
    EXPECT_TRUE(form.GetSlider()->isHidden());
    Click(form.GetCheckRow(PacerForm::ID_DIFF));
    EXPECT_TRUE(Stored()->pacerDiff.load());
    EXPECT_FALSE(form.GetSlider()->isHidden());
    Click(form.GetCheckRow(PacerForm::ID_OFF_ON_STANDING));
    EXPECT_TRUE(Stored()->pacerOffOnStanding.load());
    Click(form.GetCheckRow(PacerForm::ID_DIFF));
    EXPECT_FALSE(Stored()->pacerDiff.load());
    EXPECT_TRUE(form.GetSlider()->isHidden());
    EXPECT_EQ(plays.Plays("click.wav"), 3);
}

TEST_F(GoalScreensTest, PacerOffSilencesARunningPacerAtOnce) {
    Options().pacerFrequency = 120;
    Options().pacerDiff = false;
    Options().pacerOffOnStanding = false;
    Options().pacerType = 3;
    auto& form = Push<PacerForm>();
    Metronome::GetInstance().Start();
    ASSERT_GT(Metronome::GetInstance().GetInterval(), 0);
    EXPECT_EQ(form.GetOffHint(), nullptr);
    TapTab(0);
    EXPECT_EQ(Metronome::GetInstance().GetInterval(), 0);
    EXPECT_NE(form.GetOffHint(), nullptr);  // off says how to get a beat
    TapTab(3);
    EXPECT_EQ(Metronome::GetInstance().GetInterval(), 500);
    EXPECT_EQ(form.GetOffHint(), nullptr);
}

}  // namespace
