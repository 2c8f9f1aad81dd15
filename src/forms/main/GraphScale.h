#pragma once

#include <QPoint>
#include <QSize>
#include <QString>
#include <QStringList>
#include <vector>

#include "ChartAxis.h"

// How the main screen graph fits a series into its frame, without drawing anything.
//
// The scale runs from zero to a round top at or above the highest value, in steps of 1,
// 2 or 5 times a power of ten (ChartAxis), at most four of them: its labels read 150,
// 100, 50 rather than 133, 99.75, 66.5, and a slow minute does not look like a
// standstill. The frame runs from x 40 to (width - 10) and from y 20 to (height - 20).
// Each step above zero has a label on its line, the top one on the frame's top line;
// zero is the bottom line, which has no label (the hint sits under it).
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

    // Whether anything lies above zero: there is nothing to draw otherwise.
    bool HasData() const { return hasData_; }
    double Max() const { return axis_.Top(); }
    double Step() const { return axis_.Step(); }
    // The number of labelled lines, 1 to kLabelCount.
    int Steps() const { return axis_.Steps(); }
    // The value of axis label `index` (0 top .. Steps() - 1).
    double LabelValue(int index) const { return Max() - index * Step(); }

    // The texts of the kLabelCount axis labels, top to bottom; those past Steps() are
    // empty, and all are without data. Step rates are whole numbers (truncated, no
    // grouping); other types are locale numbers with at most `maxDecimals` fraction
    // digits.
    QStringList LabelTexts(int type, int maxDecimals) const;
    static QString FormatLabel(double value, int type, int maxDecimals);

    // The y of label `index`'s line on a canvas `height` high.
    int LabelLine(int index, int height) const;
    // Where each value is plotted on a canvas of `size`; empty for fewer than two
    // values. x runs from 41 to (width - 11); y from (height - 20) for zero up to 20
    // for the top.
    std::vector<QPoint> Points(const std::vector<double>& values, const QSize& size) const;

private:
    int YOf(double value, int height) const;

    ChartAxis axis_;
    bool hasData_ = false;
};
