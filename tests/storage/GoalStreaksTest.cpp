#include "GoalStreaks.h"

#include <gtest/gtest.h>

#include "DAOTarget.h"

namespace {

const QDate kFirst(2024, 3, 11);  // the span starts here; its last day is today

struct GoalChange {
    int day;  // days after kFirst
    int kind;
    double target;
};

struct StreakCase {
    const char* what;
    std::vector<int> steps;  // per day from kFirst; -1: no laps that day
    std::vector<GoalChange> goals;
    int currentDays, currentFirst, longestDays, longestFirst, longestLast;  // days after kFirst
};

TEST(GoalStreaksTest, RunsFollowTheGoalOfEachDay) {
    constexpr int S = DAOTarget::STEPS;
    const StreakCase cases[] = {
        {"every day reached", {6000, 7000, 5000}, {{0, S, 5000}}, 3, 0, 3, 0, 2},
        {"a day without laps breaks", {6000, 6000, -1, 6000}, {{0, S, 5000}}, 1, 3, 2, 0, 1},
        {"a day short breaks", {6000, 6000, 4999, 6000, 6000, 6000}, {{0, S, 5000}}, 3, 3, 3, 3, 5},
        {"today not yet reached keeps the run", {6000, 6000, 100}, {{0, S, 5000}}, 2, 0, 2, 0, 1},
        {"a day without goal neither breaks nor extends",
         {6000, 0, 6000},
         {{0, S, 5000}, {1, DAOTarget::OFF, 0}, {2, S, 5000}},
         2, 0, 2, 0, 2},
        {"goal raised mid-streak and missed", {6000, 6000, 6000, 9000},
         {{0, S, 5000}, {2, S, 8000}}, 1, 3, 2, 0, 1},
        {"goal changed kind mid-streak and reached", {6000, 6000, 3000},
         {{0, S, 5000}, {2, DAOTarget::ACTIVITY, 0}}, 3, 0, 3, 0, 2},
        {"days before the first goal count for nothing", {6000, 6000, 6000}, {{2, S, 5000}},
         1, 2, 1, 2, 2},
        {"no goal ever", {6000, 6000}, {}, 0, -1, 0, -1, -1},
    };
    for (const StreakCase& c : cases) {
        SCOPED_TRACE(c.what);
        std::vector<DAODayTotals> totals;
        for (int i = 0; i < int(c.steps.size()); ++i) {
            if (c.steps[i] < 0) continue;
            DAODayTotals day;
            day.day = kFirst.addDays(i);
            day.steps = c.steps[i];
            day.seconds = c.steps[i] / 100 * 60;  // an activity goal of 0 minutes is always met
            totals.push_back(day);
        }
        std::vector<DatedGoal> goals;
        for (const GoalChange& g : c.goals) goals.push_back({kFirst.addDays(g.day), {g.kind, g.target}});
        const QDate today = kFirst.addDays(qint64(c.steps.size()) - 1);
        const GoalStreaks streaks(kFirst, today, totals, goals, today);
        const auto first = [](int day) { return day < 0 ? QDate() : kFirst.addDays(day); };
        EXPECT_EQ(streaks.Current().days, c.currentDays);
        EXPECT_EQ(streaks.Current().first, first(c.currentFirst));
        EXPECT_EQ(streaks.Longest().days, c.longestDays);
        EXPECT_EQ(streaks.Longest().first, first(c.longestFirst));
        EXPECT_EQ(streaks.Longest().last, first(c.longestLast));
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
