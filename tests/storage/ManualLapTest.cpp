// Laps entered by hand: their shape, how every total and file sees them, and the
// upgrade that marks them in files of the previous layout.
#include <QBuffer>
#include <QDir>
#include <numeric>

#include "ActivityCsv.h"
#include "Body.h"
#include "DayCorrection.h"
#include "StorageTestSupport.h"

using storagetest::Moment;
using storagetest::StorageTest;

namespace {

std::vector<int> StepsOf(const DAOLap& lap) {
    std::vector<int> steps;
    for (const auto& minute : lap.minutes) steps.push_back(minute->steps);
    return steps;
}

// The cases of tests/data/day-corrections.tsv: an added walk ends by midnight, a lap taken
// away never takes more than the counted lap had, and the metres follow the steps.
TEST(DayCorrectionTest, WalksStayOnTheirDayAndTakeAwaysNeverGoBelowAMinute) {
    const Body& body = Body::GetInstance();
    const auto counted = DayCorrection::Added(Moment(13, 8, 0), 250, 1, body);
    for (QByteArrayList c : testdata::Table("day-corrections.tsv")) {
        SCOPED_TRACE(c.join(' ').constData());
        while (c.size() < 6) c.append(QByteArray());
        const int steps = c[2].toInt(), gait = c[3].toInt();
        const QDate day(2024, 3, 13);
        const auto lap = c[0] == "added"
            ? DayCorrection::Added(QDateTime(day, QTime::fromString(c[1], "hh:mm")), steps, gait, body)
            : DayCorrection::TakenAway(*counted, steps);
        std::vector<int> expected;
        for (const QByteArray& minute : c[4].split(' '))
            if (!minute.isEmpty()) expected.push_back(minute.toInt());
        ASSERT_EQ(lap != nullptr, !expected.empty());
        if (!lap) continue;
        EXPECT_EQ(StepsOf(*lap), expected);
        EXPECT_EQ(lap->startDate, QDateTime(day, QTime::fromString(c[5], "hh:mm:ss")));
        EXPECT_LE(lap->endDate.value_or(Moment(14, 0, 0)), Moment(14, 0, 0));
        double distance = 0;
        for (const auto& minute : lap->minutes) distance += minute->distance;
        EXPECT_NEAR(distance, std::accumulate(expected.begin(), expected.end(), 0) * body.getStepSize(gait), 1e-9);
    }
}

using ManualLapTest = StorageTest;

QByteArray Export(ActivityCsv::Kind kind) {
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    PedometerDBManager::GetInstance().StatisticsConnection().Run(
        [&](SQLite::Database& db) { ActivityCsv::Export(db, kind, {}, {}, out); });
    return out.data();
}

TEST_F(ManualLapTest, DayPeriodExportAndImportAgreeAfterACorrectionAndRemovalTakesItsShare) {
    std::vector<std::unique_ptr<DAOLap>> laps;
    laps.push_back(DayCorrection::Added(Moment(13, 8, 0), 1000, 1, Body::GetInstance()));
    laps[0]->manual = false;  // as if counted
    laps.push_back(DayCorrection::Added(Moment(13, 18, 0), 2000, 2, Body::GetInstance()));
    laps.push_back(DayCorrection::TakenAway(*laps[0], 300));
    laps.push_back(DayCorrection::Added(Moment(14, 9, 0), 500, 1, Body::GetInstance()));
    ASSERT_TRUE(manager().ImportHistory(laps, {}));
    // Counting today goes on in the counted lap, never in one entered by hand.
    EXPECT_EQ(manager().GetTodayLastLap().get(), nullptr);

    // The days' steps, then a mark per lap of the 13th: 1 entered by hand, 0 counted.
    const auto totals = [&] {
        std::vector<int> seen;
        for (const DAODayTotals& day : manager().GetDayTotals(QDate(2024, 3, 12), QDate(2024, 3, 14)))
            seen.push_back(day.steps);
        for (const auto& lap : manager().GetLapsForDate(Moment(13, 0, 0))) seen.push_back(lap->manual);
        return seen;
    };
    const std::vector<int> expected = {2700, 500, 0, 1, 1};
    EXPECT_EQ(totals(), expected);
    EXPECT_TRUE(Export(ActivityCsv::Kind::Days).contains("\n2024-03-13,3,2700,"));
    const QByteArray minutes = Export(ActivityCsv::Kind::Minutes);

    AppPaths::SetHome(home_ + QStringLiteral("-imported"));
    manager().Reopen();
    QByteArray csv = minutes;
    QBuffer in(&csv);
    in.open(QIODevice::ReadOnly);
    ActivityCsv::ImportResult result;
    QString error;
    manager().StatisticsConnection().Run(
        [&](SQLite::Database& db) { ASSERT_TRUE(ActivityCsv::Import(db, in, &result, &error)); });
    EXPECT_EQ(result.lapsAdded, 4) << error.toStdString();
    EXPECT_EQ(totals(), expected);
    EXPECT_EQ(Export(ActivityCsv::Kind::Minutes), minutes);

    manager().DeleteLap(manager().GetLapsForDate(Moment(13, 0, 0)).front()->id);
    EXPECT_EQ(totals(), (std::vector<int>{2000, 500, 1}));
}

TEST_F(ManualLapTest, LayoutTwoKeepsEveryLapAndMarksThemCounted) {
    ASSERT_TRUE(QDir().mkpath(home_));
    QFile sql(QStringLiteral(PEDOMETER_SOURCE_DIR "/tests/data/layout-2/Statistics.sql"));
    ASSERT_TRUE(sql.open(QIODevice::ReadOnly));
    SQLite::Database(StatisticsPath(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE)
        .exec(sql.readAll().toStdString());
    manager().Reopen();
    const auto days = manager().GetDayTotals(QDate(2024, 3, 12), QDate(2024, 3, 14));
    ASSERT_EQ(days.size(), 2u);
    EXPECT_EQ(std::tuple(days[0].steps, days[1].steps), std::tuple(251, 251));
    EXPECT_EQ(QueryInt(StatisticsPath(), "PRAGMA user_version"), 4);
    EXPECT_EQ(QueryInt(StatisticsPath(), "SELECT count(*) FROM Lap WHERE manual=0"), 2);
}

}  // namespace
