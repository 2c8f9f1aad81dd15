#pragma once

#include <QDate>
#include <QWidget>
#include <functional>

// A finger-sized date picker over the whole screen: the month with buttons to the month
// before and after, a grid of its days as wide as the screen (each cell at least 60
// reference units high where the screen allows), and Cancel. A tap on a day inside the
// allowed range chooses it: the picker hides and tells the handler. The back key (the
// property "closesOnBack") and Cancel hide it without a choice. Drawn and measured in the
// layout's scale, so it fits any window; GUI thread only.
class TivDatePicker : public QWidget {
    Q_OBJECT
public:
    // Covers `screen` (its parent) and stays hidden until Open.
    explicit TivDatePicker(QWidget& screen);

    // Shows `date`'s month with `date` marked; days outside [minimum, maximum] (either may
    // be null: no bound) cannot be chosen.
    void Open(const QDate& date, const QDate& minimum, const QDate& maximum,
              std::function<void(const QDate&)> chosen);
    QDate ShownMonth() const { return month_; }
    // The day drawn at `point`, or a null date (a header, an empty cell, a day out of range).
    QDate DayAt(const QPoint& point) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    enum class Part { None, Previous, Next, Cancel, Day };
    struct Geometry {
        QRect previous, next, title, weekdays, grid, cancel;
        int cellWidth = 0;
        int cellHeight = 0;
    };
    Geometry Measure() const;
    Part PartAt(const QPoint& point, QDate* day) const;
    QRect CellRect(const Geometry& g, int index) const;
    bool Allowed(const QDate& day) const;
    // The first day drawn in the grid: the week's first day on or before the 1st.
    QDate FirstCell() const;

    QDate month_;     // the 1st of the month shown
    QDate selected_;
    QDate minimum_;
    QDate maximum_;
    Part pressed_ = Part::None;
    std::function<void(const QDate&)> chosen_;
};
