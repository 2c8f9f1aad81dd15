#pragma once

#include <QDateTime>
#include <QString>
#include <vector>

// The axes of a history chart, without drawing anything. The value axis runs from zero
// to a round top at or above the largest value, ticked in steps of 1, 2 or 5 times a
// power of ten, so its labels read 0, 2, 4, 6 rather than 0, 1.78, 3.57, 5.35. The time
// axis is ticked at round clock times. Tests call it without a window.
class ChartAxis {
public:
    // The axis for a series whose largest value is `largest`, with at most `maxSteps`
    // steps from zero to the top. Nothing above zero (or not finite) gives 0 to 1.
    explicit ChartAxis(double largest, int maxSteps = 4);

    double Top() const { return step_ * steps_; }
    double Step() const { return step_; }
    int Steps() const { return steps_; }
    // The tick values from 0 up to Top(), Steps() + 1 of them.
    std::vector<double> Ticks() const;
    // A tick value in the locale's format with as many decimals as the step needs.
    QString Label(double value) const;
    // Where `value` lies from the bottom (0) to the top (1), held within both.
    double Share(double value) const;

    struct TimeTick {
        int index;     // the point it stands under
        QString text;  // the clock time, "14:30"
    };
    // Ticks for a series whose point i was measured at `times[i]` (minutes, with gaps
    // between laps): at the points that fall on a multiple of 1, 2, 5, 10, 15, 30, 60
    // or 120 minutes of the clock, the finest that gives at most `maxTicks`, and never
    // two ticks closer than half that interval in points.
    static std::vector<TimeTick> TimeTicks(const std::vector<QDateTime>& times, int maxTicks);

private:
    double step_ = 1.0;
    int steps_ = 1;
    int decimals_ = 0;
};
