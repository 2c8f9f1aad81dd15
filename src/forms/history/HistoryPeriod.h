#pragma once

#include <QDate>
#include <memory>

#include "GoalStreaks.h"
#include "PedometerForm.h"

class HistoryPanel;
class PeriodChart;
class PeriodSummary;
class TivLabel;

// The history of a period of days (the last 7, 30 or 180, or a chosen range): a bar per
// day for steps, distance, calories or counting time (a tap on the chart moves to the
// next), the daily goal as a line, and below it the period's totals, daily averages,
// active days, best day and the streaks of days with the daily goal reached within it.
//
// Reads the per-day sums and the streaks (PedometerDBManager::GetDayTotals,
// GetGoalStreaks) when first shown, and
// again whenever it reappears; writes nothing except the chosen measure (preference
// "history.period.measure"). Opened from the reports screen or by name. GUI thread only.
class HistoryPeriod : public PedometerForm {
    Q_OBJECT
public:
    explicit HistoryPeriod(QWidget* parent = nullptr);
    ~HistoryPeriod() override;

    // The days `from` to `to`, both included, under `title`. Always true.
    bool Initialize(const QDate& from, const QDate& to, const QString& title);
    void OnInitializing() override;
    void FormWillAppear() override;
    // Shows the next measure (steps, distance, calories, time, steps...).
    void NextMeasure();

    const PeriodSummary* GetSummary() const { return summary_.get(); }
    int GetMeasure() const { return measure_; }
    HistoryPanel* GetPanel() const { return panel_; }

private:
    void ShowMeasure();

    QDate from_;
    QDate to_;
    QString title_;
    int measure_ = 0;
    std::unique_ptr<PeriodSummary> summary_;
    GoalStreaks streaks_;
    PeriodChart* chart_ = nullptr;
    TivLabel* caption_ = nullptr;
    HistoryPanel* panel_ = nullptr;
};
