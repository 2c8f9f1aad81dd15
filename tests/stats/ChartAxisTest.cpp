#include "ChartAxis.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <cmath>

namespace {

// The value axis starts at zero and climbs in 1-2-5 steps to a round top.
TEST(ChartAxisTest, ValuesAreTickedFromZeroInOneTwoFiveSteps) {
    const struct {
        double largest;
        const char* ticks;
    } cases[] = {
        {7.13, "0 2 4 6 8"}, {24.95, "0 10 20 30"}, {8.0, "0 2 4 6 8"},
        {0.37, "0.0 0.1 0.2 0.3 0.4"}, {0.049, "0.00 0.02 0.04 0.06"},
        {1079498, "0 500,000 1,000,000 1,500,000"}, {0.0, "0 1"}, {-3.0, "0 1"}, {NAN, "0 1"},
    };
    for (const auto& c : cases) {
        const ChartAxis axis(c.largest);
        QStringList labels;
        for (const double tick : axis.Ticks()) labels << axis.Label(tick);
        EXPECT_EQ(labels.join(' ').toStdString(), c.ticks) << c.largest;
        EXPECT_LE(axis.Steps(), 4) << c.largest;
        if (c.largest > 0) EXPECT_GE(axis.Top(), c.largest);
    }
    EXPECT_DOUBLE_EQ(ChartAxis(8.0).Share(6.0), 0.75);
    EXPECT_DOUBLE_EQ(ChartAxis(8.0).Share(99.0), 1.0);
}

// Clock ticks fall on round minutes of the clock, at most as many as asked, and never
// crowd where two laps meet.
TEST(ChartAxisTest, TimesAreTickedAtRoundClockMinutes) {
    std::vector<QDateTime> times;
    const QDateTime morning(QDate(2026, 6, 15), QTime(8, 57));
    for (int i = 0; i < 40; ++i) times.push_back(morning.addSecs(60 * i));  // 08:57-09:36
    const QDateTime evening(QDate(2026, 6, 15), QTime(18, 9));
    for (int i = 0; i < 30; ++i) times.push_back(evening.addSecs(60 * i));  // 18:09-18:38
    QStringList texts;
    for (const auto& tick : ChartAxis::TimeTicks(times, 4)) texts << tick.text;
    EXPECT_EQ(texts, QStringList({"09:00", "09:30", "18:30"}));
    EXPECT_TRUE(ChartAxis::TimeTicks({}, 4).empty());
}

}  // namespace
