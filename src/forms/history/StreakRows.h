#pragma once

#include <QStringList>

#include "GoalStreaks.h"

// The two rows that tell the goal streaks on the reports and period screens:
// "Current streak: 5 days, 12.11.24 – 16.11.24" and the longest the same way, or
// "none yet". Days and dates in the default locale. No widgets.
class StreakRows {
public:
    static QStringList Rows(const GoalStreaks& streaks);
    // One streak's words after its caption.
    static QString Describe(const GoalStreaks::Streak& streak);
};
