#include "MeterReadings.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace {

DAOLapSeconds interval(int steps, double metres, double noise = 0.0) {
    DAOLapSeconds s;
    s.steps = steps;
    s.distance = metres;
    s.caloriesNoise = noise;
    return s;
}

QStringList Texts(const MeterReadings& r) {
    return {r.distance, r.calories, r.time, r.speed, r.averageSpeed};
}

DAOLapMinutes minute(double metres, double kcal) {
    DAOLapMinutes m;
    m.distance = metres;
    m.calories = kcal;
    return m;
}

TEST(MeterReadingsTest, EmptyLapShowsZeros) {
    const MeterReadings r = MeterReadings::Compute({}, {}, false, false, 0);
    EXPECT_EQ(Texts(r), QStringList({"0.000", "0.0", "00:00", "0.0", "0.0"}));
    EXPECT_EQ(r.graph, std::vector<double>(60, 0.0));
}

TEST(MeterReadingsTest, TotalsSpeedsAndPaces) {
    // Two minutes: 1234.6 m and 10.25 kcal in all, 30 intervals (150 s).
    const std::vector<DAOLapMinutes> minutes{minute(1000.0, 8.0), minute(234.6, 2.25)};
    std::vector<DAOLapSeconds> seconds(29, interval(8, 41.0));
    seconds.push_back(interval(9, 10.0));  // last interval: 10 m in 5 s = 7.2 km/h
    MeterReadings r = MeterReadings::Compute(minutes, seconds, false, false, 0);
    // The average: 1234.6 m in 150 s.
    EXPECT_EQ(Texts(r), QStringList({"1.235", "10.3", "02:30", "7.2", "29.6"}));

    // As a pace, 60 / 7.2 min per km; in miles.
    EXPECT_EQ(MeterReadings::Compute(minutes, seconds, false, true, 0).speed, "8.3");
    r = MeterReadings::Compute(minutes, seconds, true, false, 0);
    EXPECT_EQ(QStringList({r.distance, r.speed}), QStringList({"0.767", "4.5"}));
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
