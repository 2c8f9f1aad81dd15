#pragma once

#include <QWidget>

#include "HourlyTotals.h"

// A day by the hour: one bar of steps per hour of the clock from `firstHour` to
// `lastHour` (the whole day, or the hours a lap covered), the hours marked every three
// below, and one line under the bars telling the chosen hour's steps, distance and
// calories. A tap on a bar chooses its hour; the busiest hour is chosen at first.
//
// Holds a copy of the totals it is given. GUI thread only.
class HourlyChart : public QWidget {
    Q_OBJECT
public:
    explicit HourlyChart(QWidget* parent = nullptr);

    void SetTotals(const HourlyTotals& totals, int firstHour, int lastHour, bool miles);
    void SelectHour(int hour);
    int GetSelectedHour() const { return selected_; }
    // The line under the bars, e.g. "14:00–15:00: 1,234 steps, 0.9 km, 45 Cal".
    QString GetDetailText() const;
    // The hour whose bar holds `x` (a point in the widget), or -1.
    int HourAt(int x) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QRect PlotRect() const;

    HourlyTotals totals_{QDate()};
    int first_ = 0;
    int last_ = 23;
    bool miles_ = false;
    int selected_ = -1;
};
