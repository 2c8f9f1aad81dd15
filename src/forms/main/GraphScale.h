#pragma once

#include <QPoint>
#include <QSize>
#include <QString>
#include <QStringList>
#include <vector>

// How the main screen graph fits a series into its frame, without drawing anything.
//
// The graph scales itself: the lowest value of the series sits on the bottom line of
// the frame and the highest on the top line. The frame runs from x 40 to (width - 10)
// and from y 20 to (height - 20); three grid lines split it into four bands. The four
// axis labels sit on the top line and on the grid lines and read max, max - step,
// max - 2 step, max - 3 step, with step a quarter of the range; the bottom line (the
// minimum) has no label.
class GraphScale {
public:
    static constexpr int kLeft = 40;    // frame's left edge
    static constexpr int kRight = 10;   // gap from the frame's right edge to the canvas edge
    static constexpr int kTop = 20;     // frame's top edge
    static constexpr int kBottom = 20;  // gap below the frame's bottom edge
    static constexpr int kLabelCount = 4;
    // Values beyond this magnitude are held at it: a damaged record must not throw
    // the scale (or an integer conversion) off.
    static constexpr double kLimit = 1e9;

    // Non-finite values become 0; the others are held within +-kLimit. The scale
    // applies this to every value it reads.
    static double Clean(double value);
    static std::vector<double> Sanitize(std::vector<double> values);

    // The scale of a series; an empty one scales as all zeros.
    explicit GraphScale(const std::vector<double>& values);

    double Min() const { return min_; }
    double Max() const { return max_; }
    double Range() const { return max_ - min_; }
    double Step() const { return Range() * 0.25; }
    // The value of axis label `index` (0 top .. 3).
    double LabelValue(int index) const { return max_ - index * Step(); }

    // The texts of the four axis labels, top to bottom. Step rates are whole numbers
    // (truncated, no grouping); other types are locale numbers with at most
    // `maxDecimals` fraction digits. An empty series (nothing recorded yet) has four
    // empty labels; an all-zero one reads 0 on every line.
    QStringList LabelTexts(int type, int maxDecimals) const;
    static QString FormatLabel(double value, int type, int maxDecimals);

    // The y of the top line and the three grid lines on a canvas `height` high, where
    // the axis labels belong.
    static std::vector<int> LabelLines(int height);
    // Where each value is plotted on a canvas of `size`; empty for fewer than two
    // values. x runs from 41 to (width - 11); y from (height - 20) up to 20.
    std::vector<QPoint> Points(const std::vector<double>& values, const QSize& size) const;

private:
    double min_ = 0.0;
    double max_ = 0.0;
    bool empty_ = true;
};
