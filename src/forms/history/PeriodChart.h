#pragma once

#include <QWidget>
#include <functional>

#include "ChartAxis.h"

class PeriodSummary;

// The bar chart of a period history: one bar per day for the chosen measure, from the
// period's first day on the left to its last on the right, over a zero-based scale
// with four labelled grid lines. Days without activity keep their place as empty
// slots; the best day is drawn in yellow; the daily goal, when one is set for the
// measure, is a dashed green line. Weeks start on the locale's first day: short
// periods mark each week (or day), long ones each month and shade every other week, so
// that 180 days stay readable 270 pixels wide.
//
// Draws from a summary it does not own (set again after the summary changes). A tap
// calls the tap handler (the screen switches the measure). GUI thread only.
class PeriodChart : public QWidget {
    Q_OBJECT
public:
    explicit PeriodChart(QWidget* parent = nullptr);

    void SetSummary(const PeriodSummary* summary, int measure, double goal);
    void SetTapHandler(std::function<void()> handler) { onTap_ = std::move(handler); }
    int GetMeasure() const { return measure_; }
    // The value axis for the days shown: from zero to a round top at or above the
    // highest value and the goal, in steps of 1, 2 or 5 times a power of ten.
    static ChartAxis Axis(double highest, double goal);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QRect PlotRect() const;

    const PeriodSummary* summary_ = nullptr;
    int measure_ = 0;
    double goal_ = -1.0;
    bool pressed_ = false;
    std::function<void()> onTap_;
};
