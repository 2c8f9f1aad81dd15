// Laps entered by hand: their shape, how every total and file sees them, and the
// upgrade that marks them in files of the previous layout.
#include <QBuffer>
#include <QDir>

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

TEST(DayCorrectionTest, WalksStayOnTheirDayAndTakeAwaysNeverGoBelowAMinute) {
    const struct {
        int hour, minute, steps, gait;
        std::vector<int> expected;  // the minutes' steps; empty for no lap
        QTime start;
    } added[] = {
        {9, 0, 250, 1, {110, 110, 30}, QTime(9, 0)},
        {23, 59, 320, 3, {170, 150}, QTime(23, 58, 7)},  // moved to end by midnight
        {0, 0, 0, 1, {}, {}},
        {12, 0, 200000, 1, {}, {}},  // more than a day holds
    };
    for (const auto& c : added) {
        const auto lap = DayCorrection::Added(Moment(13, c.hour, c.minute), c.steps, c.gait,
                                              Body::GetInstance());
        ASSERT_EQ(lap != nullptr, !c.expected.empty()) << c.steps;
        if (!lap) continue;
        EXPECT_EQ(StepsOf(*lap), c.expected) << c.steps;
        EXPECT_EQ(lap->startDate.time(), c.start) << c.steps;
        EXPECT_LE(*lap->endDate, Moment(14, 0, 0)) << c.steps;
        EXPECT_DOUBLE_EQ(lap->minutes.back()->distance,
                         c.expected.back() * Body::GetInstance().getStepSize(c.gait));
    }

    const auto counted = DayCorrection::Added(Moment(13, 8, 0), 250, 1, Body::GetInstance());
    const double step = Body::GetInstance().getStepSize(1);
    const struct {
        int steps;
        std::vector<int> expected;
    } takeAways[] = {
        {75, {-33, -33, -9}}, {250, {-110, -110, -30}}, {500, {-110, -110, -30}},
        {1, {0, -1, 0}},      {0, {}},
    };
    for (const auto& c : takeAways) {
        const auto lap = DayCorrection::TakenAway(*counted, c.steps);
        ASSERT_EQ(lap != nullptr, !c.expected.empty()) << c.steps;
        if (!lap) continue;
        EXPECT_EQ(StepsOf(*lap), c.expected) << c.steps;
        EXPECT_EQ(lap->startDate, Moment(13, 8, 0, 1));
        double distance = 0;
        for (const auto& minute : lap->minutes) distance += minute->distance;
        EXPECT_NEAR(distance, -step * std::min(c.steps, 250), 1e-9) << c.steps;
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
