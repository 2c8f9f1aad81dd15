#include "GoalStreaks.h"

#include <gtest/gtest.h>

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

TEST(GoalStreaksTest, EachKindIsJudgedInItsOwnUnit) {
    DAODayTotals day;
    day.distance = 2500.0;
    day.calories = 120.0;
    day.seconds = 59 * 60 + 59;
    day.steps = 3000;
    const struct {
        DailyGoal goal;
        bool reached;
    } cases[] = {
        {{DAOTarget::DISTANCE, 2.5}, true},  {{DAOTarget::DISTANCE, 2.6}, false},
        {{DAOTarget::CALORIES, 120}, true},  {{DAOTarget::CALORIES, 121}, false},
        {{DAOTarget::ACTIVITY, 59}, true},   {{DAOTarget::ACTIVITY, 60}, false},
        {{DAOTarget::STEPS, 3000}, true},    {{DAOTarget::STEPS, 3001}, false},
        {{DAOTarget::OFF, 0}, false},        {{7, 0}, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.goal.ReachedBy(day), c.reached) << c.goal.kind << " " << c.goal.target;
    }
}

}  // namespace
