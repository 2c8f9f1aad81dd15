#include "GoalStreaks.h"

#include <gtest/gtest.h>

#include <tuple>

#include "DAOTarget.h"
#include "TestData.h"

namespace {

const QDate kFirst(2024, 3, 11);  // the span starts here; its last day is today

// The cases of tests/data/goal-streaks.tsv.
TEST(GoalStreaksTest, RunsFollowTheGoalOfEachDay) {
    for (const QByteArrayList& c : testdata::Table("goal-streaks.tsv")) {
        SCOPED_TRACE(c[0].constData());
        const QByteArrayList steps = c[1].split(' ');
        std::vector<DAODayTotals> totals;
        for (int i = 0; i < steps.size(); ++i) {
            if (steps[i].toInt() < 0) continue;
            DAODayTotals day;
            day.day = kFirst.addDays(i);
            day.steps = steps[i].toInt();
            day.seconds = day.steps / 100 * 60;  // an activity goal of 0 minutes is always met
            totals.push_back(day);
        }
        std::vector<DatedGoal> goals;
        for (const QByteArray& g : c[2].split(' ')) {
            const QByteArrayList p = g.split(':');
            if (p.size() == 3) goals.push_back({kFirst.addDays(p[0].toInt()), {p[1].toInt(), p[2].toDouble()}});
        }
        const QDate today = kFirst.addDays(steps.size() - 1);
        const GoalStreaks streaks(kFirst, today, totals, goals, today);
        const auto day = [](const QDate& d) { return d.isValid() ? kFirst.daysTo(d) : -1; };
        const auto &current = streaks.Current(), &longest = streaks.Longest();
        EXPECT_EQ(QString::asprintf("%d %lld %d %lld %lld", current.days, day(current.first),
                                    longest.days, day(longest.first), day(longest.last)),
                  QString::fromUtf8(c[3]));
    }
}

// The cases of tests/data/goal-kinds.tsv.
TEST(GoalStreaksTest, EachKindIsJudgedInItsOwnUnit) {
    DAODayTotals day;
    std::tie(day.distance, day.calories, day.seconds, day.steps) =
        std::tuple(2500.0, 120.0, 59 * 60 + 59, 3000);
    for (const QByteArrayList& c : testdata::Table("goal-kinds.tsv")) {
        const DailyGoal goal{c[0].toInt(), c[1].toDouble()};
        EXPECT_EQ(goal.ReachedBy(day), c[2] == "yes") << c.join(' ').constData();
    }
}

}  // namespace
