#pragma once

#include <QString>

// The plausible values of one typed number, in the unit the user types it in, and the
// words that explain them. Every entry field checks what was typed against one of
// these before anything is stored, so a value out of range is refused with the reason
// instead of being changed or dropped silently. Pure, usable on any thread.
class EntryRange {
public:
    enum class Verdict { VALID, EMPTY, NOT_A_NUMBER, TOO_SMALL, TOO_LARGE };

    struct Reading {
        Verdict verdict = Verdict::EMPTY;
        double value = 0.0;  // what was typed, when it is a number
    };

    // `min` and `max` in the shown unit, named in texts with `decimals` fraction digits
    // and followed by `unit` ("cm", "years"). The bounds are rounded to what the texts
    // show (the lower one up, the upper one down), so every value named is accepted.
    EntryRange(double min, double max, int decimals, const QString& unit);
    // A range given in centimetres, shown in inches when `inches`.
    static EntryRange Centimetres(double minCm, double maxCm, bool inches);
    // The goals' ranges (daily goal and goal alarm): at least 10 Cal, 5 minutes of
    // activity, 100 steps or a tenth of a kilometre or mile, and what the fields hold
    // at most.
    static EntryRange GoalCalories();
    static EntryRange GoalMinutes();
    static EntryRange GoalSteps();
    static EntryRange GoalDistance(bool miles);

    Verdict Check(double value) const;
    // A number typed as a whole part and, when `fractionScale` is not 0, a fraction
    // field counting 1/`fractionScale` (10: tenths, 1000: thousandths). Only digits
    // count as a number; both fields empty is EMPTY, one empty field counts as 0.
    Reading Read(const QString& whole, const QString& fraction = {}, int fractionScale = 0) const;

    // "From 30 to 250 cm": what the field takes, to show under it.
    QString Hint() const;
    // Why a verdict refuses the value; empty for VALID.
    QString Message(Verdict verdict) const;

    double Min() const { return min_; }
    double Max() const { return max_; }

private:
    QString Shown(double value) const;

    double min_;
    double max_;
    int decimals_;
    QString unit_;
};
