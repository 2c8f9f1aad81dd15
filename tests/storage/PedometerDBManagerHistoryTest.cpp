// The per-day sums of the period history.
#include <map>

#include "Body.h"
#include "HistoryGenerator.h"
#include "PedometerDBManager.h"
#include "StorageTestSupport.h"

using storagetest::Moment;
using storagetest::StorageTest;

namespace {

class DayTotalsTest : public StorageTest {
protected:
    // Stores a finished lap started at `start` with one minute of the given values.
    void LapAt(const QDateTime& start, int steps, double metres = 0.0, int seconds = 60) {
        std::vector<std::unique_ptr<DAOLap>> laps;
        laps.push_back(storagetest::MakeLap(start, 1, steps, metres, seconds));
        ASSERT_TRUE(manager().ImportHistory(laps, {}));
    }
};

TEST_F(DayTotalsTest, BothEndDaysAreWholeAndMidnightRowsGoToTheDayTheyOpen) {
    LapAt(Moment(12, 23, 59, 59), 1);     // the day before the range
    LapAt(Moment(13, 0, 0, 0), 10);       // first day, at its midnight
    LapAt(Moment(13, 18, 0, 0), 20, 15.5, 90);
    LapAt(Moment(15, 23, 59, 59), 300);   // last day, its last second
    LapAt(Moment(16, 0, 0, 0), 4000);     // the midnight after the range
    for (const QByteArrayList& c : testdata::Table("day-totals.tsv")) {
        SCOPED_TRACE(c.join(' ').constData());
        QStringList rows;
        for (const DAODayTotals& row : manager().GetDayTotals(
                 QDate::fromString(QString::fromUtf8(c[0]), Qt::ISODate),
                 QDate::fromString(QString::fromUtf8(c[1]), Qt::ISODate)))
            rows << QStringLiteral("%1:%2").arg(row.day.day()).arg(row.steps);
        EXPECT_EQ(rows.join(' '), QString::fromUtf8(c.value(2)));
    }
    const DAODayTotals first = manager().GetDayTotals(QDate(2024, 3, 13), QDate(2024, 3, 13))[0];
    EXPECT_EQ(std::tuple(first.laps, first.distance, first.calories, first.seconds),
              std::tuple(2, 15.5, 1.5, 150));
}

// The laps offered for calibrating a step length: newest first, only laps with steps.
TEST_F(DayTotalsTest, LatestLapStepsAreTheNewestLapsWithSteps) {
    LapAt(Moment(12, 9, 0, 0), 100);
    LapAt(Moment(13, 8, 0, 0), 0);
    LapAt(Moment(13, 7, 0, 0), 300);
    LapAt(Moment(14, 6, 0, 0), 200);
    QStringList laps;
    for (const auto& [start, steps] : manager().GetLatestLapSteps(2))
        laps << QStringLiteral("%1:%2").arg(start.date().day()).arg(steps);
    EXPECT_EQ(laps.join(' '), QStringLiteral("14:200 13:300"));
}

TEST_F(DayTotalsTest, SumsEqualTheMinutesTheySummarise) {
    EXPECT_TRUE(manager().GetDayTotals(QDate(2000, 1, 1), QDate(2100, 1, 1)).empty());
    Body::GetInstance().clear();
    HistoryGenerator::History history =
        HistoryGenerator(3).Generate(QDate(2024, 1, 1), QDate(2024, 3, 14), Moment(14, 20, 0));
    std::map<QDate, DAODayTotals> expected;
    for (const auto& lap : history.laps) {
        DAODayTotals& day = expected[lap->startDate.date()];
        ++day.laps;
        for (const auto& minute : lap->minutes) {
            day.steps += minute->steps;
            day.distance += minute->distance;
            day.calories += minute->calories;
            day.seconds += minute->secondsCompleted;
        }
    }
    ASSERT_TRUE(manager().ImportHistory(history.laps, {}));
    const std::vector<DAODayTotals> rows =
        manager().GetDayTotals(QDate(2024, 1, 1), QDate(2024, 3, 14));
    ASSERT_EQ(rows.size(), expected.size());
    for (const DAODayTotals& row : rows) {
        const DAODayTotals& want = expected[row.day];
        SCOPED_TRACE(row.day.toString(Qt::ISODate).toStdString());
        EXPECT_EQ(std::tuple(row.laps, row.steps, row.seconds),
                  std::tuple(want.laps, want.steps, want.seconds));
        EXPECT_NEAR(row.distance, want.distance, 1e-6);
        EXPECT_NEAR(row.calories, want.calories, 1e-6);
    }
}

}  // namespace
