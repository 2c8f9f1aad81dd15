// The figures of the period history, and the screens that need a record to show.
#include "PeriodSummary.h"

#include <gtest/gtest.h>

#include "DAOTarget.h"
#include "PeriodChart.h"
#include "TestData.h"

namespace {

DAODayTotals Row(const QDate& day, int steps, double metres, double kcal, int seconds) {
    DAODayTotals row;
    row.day = day;
    row.laps = 1;
    row.steps = steps;
    row.distance = metres;
    row.calories = kcal;
    row.seconds = seconds;
    return row;
}

TEST(PeriodSummaryTest, EveryDayHasABarAndTheFiguresCoverTheWholePeriod) {
    const QDate monday(2026, 6, 15);
    // Rows out of order, a lap without steps, and one outside the period, which is ignored.
    const PeriodSummary week(monday, monday.addDays(6),
                             {Row(monday.addDays(4), 8000, 6000.0, 300.0, 3600),
                              Row(monday.addDays(2), 0, 0.0, 0.0, 0),
                              Row(monday, 2000, 1609.344, 400.0, 1200),
                              Row(monday.addDays(7), 99999, 1e6, 1e4, 99999)},
                             true);
    ASSERT_EQ(week.DayCount(), 7);
    EXPECT_EQ(week.Day(1).day, monday.addDays(1));
    EXPECT_EQ(week.Value(1, PeriodSummary::STEPS), 0.0);
    EXPECT_EQ(week.ActiveDays(), 2);
    struct Case {
        int measure;
        double total, average, best;
        int bestDay;
    } cases[] = {
        {PeriodSummary::STEPS, 10000, 10000 / 7.0, 8000, 4},
        {PeriodSummary::DISTANCE, 7609.344 / 1609.344, 7609.344 / 1609.344 / 7, 6000 / 1609.344, 4},
        {PeriodSummary::CALORIES, 700, 100, 400, 0},  // the first day can be the best
        {PeriodSummary::TIME, 80, 80 / 7.0, 60, 4},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.measure);
        EXPECT_NEAR(week.Total(c.measure), c.total, 1e-9);
        EXPECT_NEAR(week.DailyAverage(c.measure), c.average, 1e-9);
        EXPECT_NEAR(week.Highest(c.measure), c.best, 1e-9);
        EXPECT_EQ(week.BestDay(c.measure), c.bestDay);
    }
    // Weeks start on the locale's first day.
    EXPECT_EQ(week.WeekStarts(Qt::Monday), std::vector<int>{0});
    EXPECT_EQ(week.WeekStarts(Qt::Sunday), std::vector<int>{6});

    const PeriodSummary empty(monday, monday.addDays(2), {}, false);
    EXPECT_EQ(empty.BestDay(PeriodSummary::STEPS), -1);
    EXPECT_EQ(empty.DailyAverage(PeriodSummary::STEPS), 0.0);
    EXPECT_EQ(PeriodSummary(monday, monday.addDays(-1), {}, false).DayCount(), 0);
}

TEST(PeriodSummaryTest, TheGoalLineBelongsToTheGoalsMeasureOnly) {
    const QDate day(2026, 6, 15);
    const PeriodSummary metric(day, day, {}, false);
    const PeriodSummary imperial(day, day, {}, true);
    DAOTarget goal;
    goal.distance = 8.0467;
    goal.calories = 350;
    goal.activityTime = 45;
    for (const QByteArrayList& c : testdata::Table("period-goal-lines.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        goal.targetActive = c[0].toInt();
        EXPECT_NEAR(metric.Goal(c[1].toInt(), goal), c[2].toDouble(), 1e-4);
        EXPECT_NEAR(imperial.Goal(c[1].toInt(), goal), c[3].toDouble(), 1e-4);
    }
}

TEST(PeriodChartTest, TheScaleEndsOnARoundNumberAboveTheBarsAndTheGoal) {
    const struct {
        double highest, goal, top;
    } cases[] = {{0, -1, 1}, {21700, -1, 30000}, {3.2, 5.0, 6}, {95, -1, 100}, {0.4, -1, 0.4}};
    for (const auto& c : cases) {
        EXPECT_DOUBLE_EQ(PeriodChart::Axis(c.highest, c.goal).Top(), c.top) << c.highest;
    }
}

}  // namespace
