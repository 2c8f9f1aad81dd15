// The three goal screens: today's goal (TargetSelect), the alarm (SygnalForm) and the
// pacer (PacerForm). They share their tabs and digit fields, so one table drives what a
// tab and a typed entry do on each; the rest are each screen's own rules.
#include <array>

#include "DAOTarget.h"
#include "GoalScreenTest.h"
#include "Metronome.h"
#include "PacerForm.h"
#include "SoftkeyBar.h"
#include "SygnalForm.h"
#include "TestData.h"
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
    int clicks = 0;
    for (const QByteArrayList& c : testdata::Table("goal-entries.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        const Kind kind = c[0] == "goal" ? GOAL : c[0] == "alarm" ? ALARM : PACER;
        const int tab = c[1].toInt();
        const QString typed = QString::fromUtf8(c[2]);
        const QByteArray message = c.value(4);
        Options().measurementSystem = c.value(5) == "1";
        DAOTarget::GetInstance().targetActive = 0;  // opened on another tab than `tab`
        Options().pacerType = 0;
        Options().sygnalType = tab == 0 ? 2 : 0;
        Open(kind);
        TapTab(tab);
        EXPECT_EQ(plays.Plays("click.wav"), ++clicks);
        const int alarmType[] = {0, 2, 3, 10};
        EXPECT_EQ(kind == GOAL    ? StoredGoal().targetActive
                  : kind == PACER ? Stored()->pacerType.load()
                                  : Stored()->sygnalType.load(),
                  kind == ALARM ? alarmType[tab] : tab);
        const double before = StoredValue(kind, tab);
        const bool twoFields = typed.contains('.');
        QLineEdit* field = Field(twoFields);
        Enter(field, typed.section('.', 0, 0));
        if (twoFields) Enter(Fraction(), typed.section('.', 1));
        EXPECT_EQ(field->text(), c.size() > 6 ? QString::fromUtf8(c[6]) : typed.section('.', 0, 0));
        EXPECT_EQ(static_cast<TivNumberField*>(field)->GetMessage(), QString::fromUtf8(message));
        EXPECT_NEAR(StoredValue(kind, tab), message.isEmpty() ? c[3].toDouble() : before, 1e-9);
    }
}

// The stored value is shown back in the user's units; a fraction that rounds up carries.
TEST_F(GoalScreensTest, OpeningShowsTheStoredValue) {
    for (const QByteArrayList& c : testdata::Table("goal-opening.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        const Kind kind = c[0] == "goal" ? GOAL : c[0] == "alarm" ? ALARM : PACER;
        const int tab = c[2].toInt();
        const double value = c[3].toDouble();
        Options().measurementSystem = c[1] == "1";
        if (kind == GOAL && tab == 1) DAOTarget::GetInstance().distance = value;
        if (kind == GOAL && tab == 2) DAOTarget::GetInstance().calories = int(value);
        if (kind == ALARM) Options().sygnalDistance = value;
        if (kind == PACER && tab == 1) Options().pacerSpeed = value;
        if (kind == PACER && tab == 2) Options().pacerPace = value;
        if (kind == PACER && tab == 3) Options().pacerFrequency = int(value);
        DAOTarget::GetInstance().targetActive = tab;
        Options().pacerType = tab;
        Options().sygnalType = tab == 1 ? 2 : 0;
        Open(kind);
        const bool twoFields = c.size() > 5;
        EXPECT_EQ(Field(twoFields)->text(), QString::fromLatin1(c[4]));
        if (twoFields) {
            EXPECT_EQ(Fraction()->text(), QString::fromLatin1(c[5]));
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

TEST_F(GoalScreensTest, AlarmTabsKeepThePhaseAndSave) {
    for (const QByteArrayList& c : testdata::Table("alarm-tabs.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        AddProgress(1.0, 5, 0.001);
        Options().sygnalType = c[0].toInt();
        Push<SygnalForm>();
        TapTab(c[1].toInt());
        EXPECT_EQ(Options().sygnalType.load(), c[2].toInt());
        EXPECT_EQ(Stored()->sygnalType.load(), c[2].toInt());
        EXPECT_GT(StoredKcal(), 0.0) << "progress kept";
    }
}

// Start, Pause and Reset move the phase (not stored until a save elsewhere); starting a
// completed alarm or a reset clears the progress. The screen opens on the kind's tab.
TEST_F(GoalScreensTest, AlarmStartPauseAndResetFollowTheStateTable) {
    const int kTabOf[] = {0, 0, 1, 2, 0, 1, 2, 1, 0, 2, 3, 3, 3};
    for (const QByteArrayList& c : testdata::Table("alarm-buttons.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        const int from = c[0].toInt(), to = c[2].toInt();
        const int action = c[1] == "start"   ? SygnalForm::ID_START
                           : c[1] == "pause" ? SygnalForm::ID_PAUSE
                                             : SygnalForm::ID_RESET;
        PedometerDBManager::GetInstance().ClearSygnals();
        AddProgress(1.0, 5, 0.0);
        Options().sygnalCalories = 1000;  // no progress reaches these
        Options().sygnalDistance = 100.0;
        Options().sygnalActivity = 900;
        Options().sygnalType = from;
        auto& form = Push<SygnalForm>();
        EXPECT_EQ(form.GetSelectedTabIndex(), kTabOf[from]);
        const int stored = Stored()->sygnalType;
        if (action != SygnalForm::ID_RESET) {
            ASSERT_EQ(form.GetStartPauseButton()->GetActionId(), action);
        }
        Click(action == SygnalForm::ID_RESET ? form.GetResetButton() : form.GetStartPauseButton());
        EXPECT_EQ(Options().sygnalType.load(), to);
        EXPECT_EQ(StoredKcal(), c[3] == "1" ? 0.0 : 1.0);
        EXPECT_EQ(Stored()->sygnalType.load(), stored);
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
    for (const QByteArrayList& c : testdata::Table("pacer-tolerances.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        const int mode = c[0].toInt();
        Options().pacerDiff = true;
        Options().pacerType = mode;
        auto& form = Push<PacerForm>();
        form.SliderValueChanged(c[1].toInt());
        const auto stored = Stored();
        EXPECT_DOUBLE_EQ(mode == 1   ? stored->pacerDiffSpeed.load()
                         : mode == 2 ? stored->pacerDiffPace.load()
                                     : double(stored->pacerDiffFrequency.load()),
                         c[2].toDouble());
        EXPECT_EQ(form.GetSliderLabel()->GetText(), QString::fromUtf8(c[3]));
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
