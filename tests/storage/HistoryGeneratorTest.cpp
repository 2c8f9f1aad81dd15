#include "HistoryGenerator.h"

#include <cmath>
#include <map>

#include "Body.h"
#include "StorageTestSupport.h"

using storagetest::Moment;

namespace {

TEST(HistoryGeneratorTest, TheSameSeedGivesTheSameHistory) {
    Body::GetInstance().clear();
    const QDateTime now = Moment(14, 21, 0);
    HistoryGenerator::History a = HistoryGenerator(7).Generate(1, now);
    HistoryGenerator::History b = HistoryGenerator(7).Generate(1, now);
    HistoryGenerator::History c = HistoryGenerator(8).Generate(1, now);
    ASSERT_EQ(a.laps.size(), b.laps.size());
    for (size_t i = 0; i < a.laps.size(); ++i) {
        EXPECT_EQ(a.laps[i]->startDate, b.laps[i]->startDate);
        ASSERT_EQ(a.laps[i]->minutes.size(), b.laps[i]->minutes.size());
        EXPECT_EQ(a.laps[i]->minutes.back()->steps, b.laps[i]->minutes.back()->steps);
    }
    ASSERT_EQ(a.bodyLogs.size(), b.bodyLogs.size());
    EXPECT_EQ(a.bodyLogs.back().weight, b.bodyLogs.back().weight);
    EXPECT_NE(a.laps.front()->startDate, c.laps.front()->startDate);
}

TEST(HistoryGeneratorTest, HistoryLooksLikeRealRecordings) {
    Body& body = Body::GetInstance();
    body.clear();
    const QDateTime now = Moment(14, 12, 0);
    const HistoryGenerator::History history = HistoryGenerator(1).Generate(2, now);

    // About three laps a day of about 36 minutes.
    const double days = history.laps.front()->startDate.daysTo(now) + 1;
    EXPECT_NEAR(history.laps.size() / days, 3.0, 0.3);
    std::map<QDate, int> perDay;
    size_t minutes = 0;
    const DAOLap* previous = nullptr;
    for (const auto& lap : history.laps) {
        ++perDay[lap->startDate.date()];
        minutes += lap->minutes.size();
        ASSERT_TRUE(lap->endDate.has_value());
        EXPECT_LE(*lap->endDate, now);
        EXPECT_EQ(lap->techDate, lap->startDate.date().startOfDay());
        if (previous) {
            EXPECT_GE(lap->startDate, *previous->endDate) << "laps overlap";
        }
        previous = lap.get();
        for (const auto& minute : lap->minutes) {
            ASSERT_GT(minute->secondsCompleted, 0);
            ASSERT_LE(minute->secondsCompleted, 60);
            // Steps are whole: the cadence lies between these two.
            const double perMinute = 60.0 / minute->secondsCompleted;
            EXPECT_GT((minute->steps + 1) * perMinute, 95.0);
            EXPECT_LE(minute->steps * perMinute, 185.0);
            const double stepLength = minute->distance / minute->steps;
            const auto near = [&](double expected) {
                return std::abs(stepLength - expected) < 1e-9;
            };
            EXPECT_TRUE(near(body.getWalkStepSize()) || near(body.getJogStepSize()) ||
                        near(body.getRunStepSize()));
            const double speed = minute->distance / minute->secondsCompleted * 3.6;
            EXPECT_DOUBLE_EQ(minute->calories, body.calculateCalories(float(speed)) *
                                                   minute->secondsCompleted / 60.0);
        }
    }
    for (const auto& [day, laps] : perDay) EXPECT_LE(laps, 5) << day.toString().toStdString();
    EXPECT_NEAR(double(minutes) / history.laps.size(), 36.5, 3.0);

    // Only the newest lap has intervals, and they add up to its minutes.
    const DAOLap& last = *history.laps.back();
    int minuteSteps = 0, intervalSteps = 0, activeSeconds = 0;
    for (const auto& minute : last.minutes)
        minuteSteps += minute->steps, activeSeconds += minute->secondsCompleted;
    for (const auto& second : last.seconds) intervalSteps += second->steps;
    EXPECT_EQ(intervalSteps, minuteSteps);
    EXPECT_EQ(last.seconds.back()->currentSecond, activeSeconds);
    EXPECT_TRUE(history.laps.front()->seconds.empty());

    // Body logs every three to five days.
    ASSERT_GT(history.bodyLogs.size(), 2u);
    for (size_t i = 1; i < history.bodyLogs.size(); ++i) {
        const qint64 gap = history.bodyLogs[i - 1].logDate.daysTo(history.bodyLogs[i].logDate);
        EXPECT_GE(gap, 3);
        EXPECT_LE(gap, 5);
        EXPECT_GT(history.bodyLogs[i].weight, 60.0);
    }
}

}  // namespace
