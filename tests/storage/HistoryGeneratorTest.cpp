#include "HistoryGenerator.h"

#include <map>

#include "Body.h"
#include "StorageTestSupport.h"

using storagetest::Moment;

namespace {

// A day of history as text: each lap's start and minutes' steps, each body log's weight.
QString Fingerprint(int seed) {
    const HistoryGenerator::History h = HistoryGenerator(seed).Generate(1, Moment(14, 21, 0));
    QString text;
    for (const auto& lap : h.laps) {
        text += lap->startDate.toString(Qt::ISODate) + ':';
        for (const auto& minute : lap->minutes) text += QString::number(minute->steps) + ',';
    }
    for (const DAOBodyLog& log : h.bodyLogs) text += QString::number(log.weight) + ';';
    return text;
}

TEST(HistoryGeneratorTest, TheSameSeedGivesTheSameHistory) {
    Body::GetInstance().clear();
    EXPECT_EQ(Fingerprint(7), Fingerprint(7));
    EXPECT_NE(Fingerprint(7), Fingerprint(8));
}

TEST(HistoryGeneratorTest, HistoryLooksLikeRealRecordings) {
    Body::GetInstance().clear();
    const QDateTime now = Moment(14, 12, 40);  // a Thursday, after the lunch walks
    const HistoryGenerator::History history = HistoryGenerator(1).Generate(2, now);

    std::map<QDate, int> perDay;
    int weekendMinutes = 0, weekendLaps = 0, workdayMinutes = 0, workdayLaps = 0;
    const DAOLap* previous = nullptr;
    for (const auto& lap : history.laps) {
        ++perDay[lap->startDate.date()];
        const bool weekend = lap->startDate.date().dayOfWeek() >= 6;
        (weekend ? weekendMinutes : workdayMinutes) += int(lap->minutes.size());
        ++(weekend ? weekendLaps : workdayLaps);
        EXPECT_EQ(lap->techDate, lap->startDate.date().startOfDay());
        EXPECT_LT(lap->startDate, now);
        // Only today's last lap is open, and it ends no later than now.
        const bool last = lap.get() == history.laps.back().get();
        ASSERT_EQ(lap->endDate.has_value(), !last);
        if (previous) {
            EXPECT_GE(lap->startDate, *previous->endDate) << "laps overlap";
        }
        previous = lap.get();
        int seconds = 0;
        for (size_t i = 0; i < lap->minutes.size(); ++i) {
            const DAOLapMinutes& minute = *lap->minutes[i];
            ASSERT_EQ(minute.lapMinute, int(i) + 1);
            seconds += minute.secondsCompleted;
            // Whole minutes of counting, but the last one, as the recorder leaves them.
            if (i + 1 < lap->minutes.size()) {
                ASSERT_EQ(minute.secondsCompleted, 60);
            } else {
                ASSERT_LT(minute.secondsCompleted, 60);
                ASSERT_EQ(minute.secondsCompleted % 5, 0);
            }
            EXPECT_LE(minute.steps * 60.0, 185.0 * minute.secondsCompleted);  // steps a minute
        }
        if (lap->endDate) {
            EXPECT_EQ(lap->startDate.secsTo(*lap->endDate), seconds);
        } else {
            EXPECT_LE(lap->startDate.addSecs(seconds), now);
        }
    }
    // A real person's year: most days active, some idle, longer outings on weekends.
    const double days = QDate(2022, 3, 15).daysTo(now.date()) + 1;
    EXPECT_NEAR(perDay.size() / days, 0.9, 0.06);
    EXPECT_NEAR(history.laps.size() / days, 2.0, 0.4);
    EXPECT_GT(double(weekendMinutes) / weekendLaps, 1.5 * workdayMinutes / workdayLaps);
    EXPECT_EQ(history.laps.back()->startDate.date(), now.date());

    // Only the newest lap has intervals, and they add up to its minutes.
    const DAOLap& last = *history.laps.back();
    int minuteSteps = 0, intervalSteps = 0, countedSeconds = 0;
    for (const auto& minute : last.minutes)
        minuteSteps += minute->steps, countedSeconds += minute->secondsCompleted;
    for (const auto& second : last.seconds) intervalSteps += second->steps;
    EXPECT_EQ(intervalSteps, minuteSteps);
    EXPECT_EQ(last.seconds.back()->currentSecond, countedSeconds);
    EXPECT_EQ(int(last.seconds.size()), countedSeconds / 5);
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
