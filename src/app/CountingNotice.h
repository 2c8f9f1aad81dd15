#pragma once

#include <QDate>
#include <functional>

#include "CrossThreadTrigger.h"
#include "MainFormListener.h"
#include "Timer.h"

class CountingEngine;
class DesktopNotifications;

// What the pedometer tells the user outside its window, through the desktop's
// notifications: while it counts with the window away (hidden, minimised, the session
// locked), "Counting - 3,412 steps today" with the actions Open and Stop, refreshed at
// most once a minute and withdrawn when the window is back or counting ends; and, window
// or not, a notice when the goal alarm fires or today's goal is reached (once a day).
//
// It is one of the counting engine's listeners. Step calls are ignored (the count is
// read once a minute, so steps wake nothing); interval and alarm calls arrive on the
// updater thread and are handed to the GUI thread. Nothing else runs: no timer while
// the window is shown. Open and Stop reach the callbacks the application sets. GUI
// thread, but for the listener calls.
class CountingNotice final : public MainFormListener {
public:
    static constexpr int kCountingSlot = 1;
    static constexpr int kGoalSlot = 2;
    static constexpr int kRefreshMs = 60 * 1000;

    // Both outlive the notice.
    CountingNotice(CountingEngine& engine, DesktopNotifications& notifications);
    ~CountingNotice() override;
    CountingNotice(const CountingNotice&) = delete;
    CountingNotice& operator=(const CountingNotice&) = delete;

    void SetOnOpen(std::function<void()> onOpen) { onOpen_ = std::move(onOpen); }
    void SetOnStop(std::function<void()> onStop) { onStop_ = std::move(onStop); }

    // The window went away (true) or came back (false); also after counting started or
    // stopped, so the notice follows.
    void SetBackground(bool background);
    bool IsShowingCount() const { return shownSteps_ >= 0; }
    // Today's steps: the stored steps of today's finished laps and the current lap's.
    int TodaySteps() const;

    // MainFormListener.
    void RequestStepsUpdate(int) override {}
    void UpdateStepsCount(int) override {}
    void UpdateData(const DAOLap* lap) override;
    void SygnalFired() override;

private:
    void Refresh();
    void CheckGoal();
    void ShowAlarm();
    bool GoalReached() const;

    CountingEngine& engine_;
    DesktopNotifications& notifications_;
    std::function<void()> onOpen_;
    std::function<void()> onStop_;
    bool background_ = false;
    int shownSteps_ = -1;  // the count on screen, -1 when no counting notice is up
    QDate goalToldOn_;     // today's goal was announced (or already reached at start)
    Timer refreshTimer_;
    CrossThreadTrigger intervalTrigger_;
    CrossThreadTrigger alarmTrigger_;
};
