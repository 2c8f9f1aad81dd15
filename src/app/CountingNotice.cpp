#include "CountingNotice.h"

#include <QLocale>

#include "AppResource.h"
#include "Clock.h"
#include "CountingEngine.h"
#include "DAOLap.h"
#include "DAOTarget.h"
#include "DesktopNotifications.h"
#include "PedometerDBManager.h"

namespace {
const QString kOpen = QStringLiteral("open");
const QString kStop = QStringLiteral("stop");
}  // namespace

CountingNotice::CountingNotice(CountingEngine& engine, DesktopNotifications& notifications)
    : engine_(engine),
      notifications_(notifications),
      refreshTimer_([this] { Refresh(); }),
      intervalTrigger_([this] { CheckGoal(); }),
      alarmTrigger_([this] { ShowAlarm(); }) {
    // A goal reached before this start was announced then.
    if (GoalReached()) goalToldOn_ = Clock::Now().date();
    notifications_.SetOnAction([this](int slot, const QString& key) {
        if (slot != kCountingSlot) return;
        if (key == kOpen && onOpen_) onOpen_();
        if (key == kStop && onStop_) onStop_();
    });
    engine_.AddListener(*this);
}

CountingNotice::~CountingNotice() {
    engine_.RemoveListener(*this);
    notifications_.SetOnAction(nullptr);
}

void CountingNotice::SetBackground(bool background) {
    background_ = background;
    Refresh();
}

int CountingNotice::TodaySteps() const {
    const std::shared_ptr<DAOLap> current = engine_.Statistics().GetCurrentLap();
    int steps = engine_.Statistics().GetLapSteps();
    for (const auto& lap : PedometerDBManager::GetInstance().GetLapsForDate(Clock::TodayStart())) {
        if (current && lap->id == current->id) continue;
        for (const auto& minute : lap->minutes) steps += minute->steps;
    }
    return steps;
}

void CountingNotice::Refresh() {
    if (!background_ || !engine_.Statistics().GetStarted()) {
        refreshTimer_.Cancel();
        if (shownSteps_ >= 0) notifications_.Close(kCountingSlot);
        shownSteps_ = -1;
        return;
    }
    const int steps = TodaySteps();
    if (steps != shownSteps_) {
        QString text = AppResource::Text("notice__ Counting - %@ steps today");
        text.replace(QLatin1String("%@"), QLocale().toString(steps));
        notifications_.Show(
            kCountingSlot, text, QString(),
            {kOpen, AppResource::Text("notice__ Open"), kStop, AppResource::Text("notice__ Stop")},
            true);
        shownSteps_ = steps;
    }
    refreshTimer_.Start(kRefreshMs);
}

void CountingNotice::UpdateData(const DAOLap*) {
    intervalTrigger_.Trigger();
}

void CountingNotice::SygnalFired() {
    alarmTrigger_.Trigger();
}

bool CountingNotice::GoalReached() const {
    const DAOTarget& goal = DAOTarget::GetInstance();
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    switch (goal.targetActive) {
        case 1:
            return goal.distance > 0 && db.GetTodayDistance() / 1000.0 >= goal.distance;
        case 2:
            return goal.calories > 0 && db.GetTodayCalories() >= goal.calories;
        case 3:
            return goal.activityTime > 0 && db.GetTodayActivity() / 60 >= goal.activityTime;
        default:
            return false;
    }
}

void CountingNotice::CheckGoal() {
    const QDate today = Clock::Now().date();
    if (goalToldOn_ == today || !GoalReached()) return;
    goalToldOn_ = today;
    notifications_.Show(kGoalSlot, AppResource::Text("today_goal__ Today's goal"),
                        AppResource::Text("alarm__ Completed!"), {}, false);
}

void CountingNotice::ShowAlarm() {
    notifications_.Show(kGoalSlot, AppResource::Text("more__ Alarm"),
                        AppResource::Text("alarm__ Completed!"), {}, false);
}
