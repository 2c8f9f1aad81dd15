// pedometer-cli history and seed-history, run as the user runs them.
#include "Body.h"
#include "Cli.h"
#include "DayCorrection.h"
#include "StorageTestSupport.h"

using storagetest::StorageTest;

namespace {

CliRun Cli(const QStringList& args) { return RunCli(args); }

class HistoryCommandTest : public StorageTest {
protected:
    void SetUp() override {
        StorageTest::SetUp();
        Clock::UseSystemTime();  // the tools run on the real clock
    }
};

TEST_F(HistoryCommandTest, SeededHistoryIsPrintedDayByDay) {
    const CliRun seeded = Cli({"seed-history", "--years", "1", "--seed", "5", "--data-dir", home_});
    ASSERT_EQ(seeded.status, 0) << seeded.err.toStdString();
    EXPECT_TRUE(seeded.out.contains(" laps, ")) << seeded.out.toStdString();

    // The same folder again is refused and left as it was.
    const int laps = QueryInt(StatisticsPath(), "SELECT count(*) FROM Lap");
    const CliRun again = Cli({"seed-history", "--years", "1", "--data-dir", home_});
    EXPECT_EQ(again.status, 2);
    EXPECT_TRUE(again.err.contains("already holds history")) << again.err.toStdString();
    EXPECT_EQ(QueryInt(StatisticsPath(), "SELECT count(*) FROM Lap"), laps);

    // Pick the busiest day and compare the printout with the database.
    const std::string busiest =
        QueryText(StatisticsPath(),
                  "SELECT substr(techDate,1,10) FROM Lap GROUP BY techDate ORDER BY count(*) DESC, "
                  "techDate LIMIT 1");
    const QString day = QString::fromStdString(busiest);
    std::vector<std::unique_ptr<DAOLap>> correction;
    correction.push_back(DayCorrection::Added(
        QDateTime(QDate::fromString(day, Qt::ISODate), QTime(23, 0)), 500, 1, Body::GetInstance()));
    ASSERT_TRUE(manager().ImportHistory(correction, {}));
    manager().Reopen();
    const CliRun history = Cli({"history", day, "--data-dir", home_});
    ASSERT_EQ(history.status, 0) << history.err.toStdString();
    const QStringList lines = history.out.split('\n', Qt::SkipEmptyParts);
    const auto dayLaps = manager().GetLapsForDate(QDate::fromString(day, Qt::ISODate).startOfDay());
    ASSERT_EQ(lines.size(), int(dayLaps.size()) + 3) << history.out.toStdString();
    EXPECT_TRUE(lines[0].startsWith(day + QStringLiteral(": %1 laps").arg(dayLaps.size())));
    EXPECT_TRUE(lines[lines.size() - 2].contains(" by hand ")) << history.out.toStdString();
    int steps = 0;
    for (const auto& lap : dayLaps) {
        for (const auto& minute : lap->minutes) steps += minute->steps;
    }
    const QStringList total = lines.last().split(' ', Qt::SkipEmptyParts);
    ASSERT_GE(total.size(), 2);
    EXPECT_EQ(total[0], "Total");
    EXPECT_EQ(total[1].toInt(), steps);
}

// The cases of tests/data/history-bad-input.tsv.
TEST_F(HistoryCommandTest, BadInputIsRefusedWithAReason) {
    for (const QByteArrayList& row : testdata::Table("history-bad-input.tsv")) {
        QStringList args;
        for (qsizetype i = 1; i < row.size(); ++i) args << QString::fromUtf8(row[i]);
        const CliRun run = Cli(args + QStringList{"--data-dir", home_});
        EXPECT_EQ(run.status, 2) << row.join(' ').constData();
        EXPECT_FALSE(run.err.isEmpty());
        EXPECT_TRUE(run.err.contains(QString::fromUtf8(row[0]))) << run.err.toStdString();
    }
}

TEST_F(HistoryCommandTest, AnUnusableDatabaseIsExplainedAndKept) {
    // history only reads: a missing database is reported, not created.
    const CliRun missing = Cli({"history", "--data-dir", home_});
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(missing.err.contains("does not exist")) << missing.err.toStdString();
    EXPECT_FALSE(QFile::exists(HomeFile("Statistics.db3")));

    const QByteArray garbage("not a database at all, just some text\n");
    ASSERT_TRUE(testdata::WriteFile(HomeFile("Statistics.db3"), garbage.repeated(100)));
    for (const QStringList& args :
         {QStringList{"history"}, QStringList{"seed-history", "--years", "1"}}) {
        const CliRun run = Cli(args + QStringList{"--data-dir", home_});
        EXPECT_EQ(run.status, 1) << args.join(' ').toStdString();
        EXPECT_TRUE(run.err.contains("Statistics.db3")) << run.err.toStdString();
    }
    QFile file(HomeFile("Statistics.db3"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), garbage.repeated(100));
}

}  // namespace
