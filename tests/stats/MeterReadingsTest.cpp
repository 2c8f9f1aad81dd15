#include "MeterReadings.h"

#include <gtest/gtest.h>

namespace {

DAOLapSeconds interval(int steps, double metres, double noise = 0.0) {
    DAOLapSeconds s;
    s.steps = steps;
    s.distance = metres;
    s.caloriesNoise = noise;
    return s;
}

DAOLapMinutes minute(double metres, double kcal) {
    DAOLapMinutes m;
    m.distance = metres;
    m.calories = kcal;
    return m;
}

TEST(MeterReadingsTest, EmptyLapShowsZeros) {
    const MeterReadings r = MeterReadings::Compute({}, {}, false, false, 0);
    EXPECT_EQ(r.distance, QStringLiteral("0.000"));
    EXPECT_EQ(r.calories, QStringLiteral("0.0"));
    EXPECT_EQ(r.time, QStringLiteral("00:00"));
    EXPECT_EQ(r.speed, QStringLiteral("0.0"));
    EXPECT_EQ(r.averageSpeed, QStringLiteral("0.0"));
    ASSERT_EQ(r.graph.size(), 60u);
    for (double v : r.graph) EXPECT_EQ(v, 0.0);
}

TEST(MeterReadingsTest, TotalsSpeedsAndPaces) {
    // Two minutes: 1234.6 m and 10.25 kcal in all, 30 intervals (150 s).
    const std::vector<DAOLapMinutes> minutes{minute(1000.0, 8.0), minute(234.6, 2.25)};
    std::vector<DAOLapSeconds> seconds(29, interval(8, 41.0));
    seconds.push_back(interval(9, 10.0));  // last interval: 10 m in 5 s = 7.2 km/h
    MeterReadings r = MeterReadings::Compute(minutes, seconds, false, false, 0);
    EXPECT_EQ(r.distance, QStringLiteral("1.235"));
    EXPECT_EQ(r.calories, QStringLiteral("10.3"));
    EXPECT_EQ(r.time, QStringLiteral("02:30"));
    EXPECT_EQ(r.speed, QStringLiteral("7.2"));
    EXPECT_EQ(r.averageSpeed, QStringLiteral("29.6"));  // 1234.6 m in 150 s

    r = MeterReadings::Compute(minutes, seconds, false, true, 0);
    EXPECT_EQ(r.speed, QStringLiteral("8.3"));  // 60 / 7.2 min per km

    r = MeterReadings::Compute(minutes, seconds, true, false, 0);
    EXPECT_EQ(r.distance, QStringLiteral("0.767"));
    EXPECT_EQ(r.speed, QStringLiteral("4.5"));
}

TEST(MeterReadingsTest, GraphTakesTheLastSixtyIntervalsWithLeadingZeros) {
    std::vector<DAOLapSeconds> seconds;
    for (int i = 1; i <= 3; ++i) seconds.push_back(interval(i, i * 2.5, i * 1.5));
    MeterReadings r = MeterReadings::Compute({}, seconds, false, false, 0);
    EXPECT_EQ(r.graph[56], 0.0);
    EXPECT_EQ(r.graph[57], 12.0);
    EXPECT_EQ(r.graph[59], 36.0);
    r = MeterReadings::Compute({}, seconds, false, false, 1);
    EXPECT_EQ(r.graph[59], 4.5);
    r = MeterReadings::Compute({}, seconds, false, false, 2);
    EXPECT_DOUBLE_EQ(r.graph[58], 3.6);  // 5 m in 5 s
    r = MeterReadings::Compute({}, seconds, false, false, 3);
    EXPECT_DOUBLE_EQ(r.graph[58], 60.0 / 3.6);
    EXPECT_EQ(r.graph[0], 0.0);  // standing or before the lap: pace 0

    seconds.assign(75, interval(1, 1.0));
    seconds[15] = interval(5, 1.0);  // the oldest of the last 60
    r = MeterReadings::Compute({}, seconds, false, false, 0);
    EXPECT_EQ(r.graph[0], 60.0);
    EXPECT_EQ(r.graph[1], 12.0);
}

}  // namespace
