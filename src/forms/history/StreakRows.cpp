#include "StreakRows.h"

#include <QLocale>

#include "AppResource.h"

QString StreakRows::Describe(const GoalStreaks::Streak& streak) {
    if (streak.days <= 0) return AppResource::Text("history__ none yet");
    const QLocale locale;
    if (streak.days == 1) {
        return AppResource::Text("history__ 1 day") + QStringLiteral(", ") +
               locale.toString(streak.last, QLocale::ShortFormat);
    }
    return AppResource::Text("history__ %@ days")
               .replace(QStringLiteral("%@"), locale.toString(streak.days)) +
           QStringLiteral(", ") + locale.toString(streak.first, QLocale::ShortFormat) +
           QStringLiteral(" – ") + locale.toString(streak.last, QLocale::ShortFormat);
}

QStringList StreakRows::Rows(const GoalStreaks& streaks) {
    return {AppResource::Text("history__ Current streak: ") + Describe(streaks.Current()),
            AppResource::Text("history__ Longest streak: ") + Describe(streaks.Longest())};
}
