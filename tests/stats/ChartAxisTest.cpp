#include "ChartAxis.h"
#include "TestData.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <cmath>

namespace {

// The value axis starts at zero and climbs in 1-2-5 steps to a round top.
TEST(ChartAxisTest, ValuesAreTickedFromZeroInOneTwoFiveSteps) {
    for (const QByteArrayList& c : testdata::Table("value-ticks.tsv")) {
        SCOPED_TRACE(c[0].toStdString());
        const double largest = c[0] == "nan" ? NAN : c[0].toDouble();
        const ChartAxis axis(largest);
        QStringList labels;
        for (const double tick : axis.Ticks()) labels << axis.Label(tick);
        EXPECT_EQ(labels.join(' ').toUtf8(), c[1]);
        EXPECT_LE(axis.Steps(), 4);
        if (largest > 0) {
            EXPECT_GE(axis.Top(), largest);
        }
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
