#include "DatabaseConnection.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QThread>
#include <random>
#include <set>
#include <utility>

#include "StorageTestSupport.h"

using storagetest::Moment;
using storagetest::StorageTest;

namespace {

using DatabaseConnectionTest = StorageTest;

// --- Seeding --------------------------------------------------------------------

TEST_F(DatabaseConnectionTest, FirstUseCopiesBothSeedsIntoAPrivateFolder) {
    EXPECT_FALSE(QFileInfo::exists(home_));
    EXPECT_TRUE(manager().IsOptionsUsable());
    EXPECT_TRUE(manager().IsStatisticsUsable());

    EXPECT_EQ(QFile::permissions(home_) & 0x7077,
              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    for (const char* name : {"Options.db3", "Statistics.db3"}) {
        const QString file = HomeFile(name);
        EXPECT_EQ(QFile::permissions(file) & 0x7077, QFile::ReadOwner | QFile::WriteOwner) << name;
        EXPECT_EQ(QueryText(QFile::encodeName(file).toStdString(), "PRAGMA journal_mode"), "wal");
    }
    EXPECT_EQ(QueryInt(StatisticsPath(), "SELECT count(*) FROM TargetValues"), 1);
    EXPECT_EQ(QueryInt(OptionsPath(), "SELECT count(*) FROM BODY"), 1);
    // Opening a file of the current layout and reading it writes nothing.
    manager().Reopen();
    EXPECT_TRUE(manager().GetAllDays().empty());
    EXPECT_EQ(QFileInfo(HomeFile("Statistics.db3-wal")).size(), 0);
}

// --- Files that cannot be used ----------------------------------------------------

// Every operation on an unusable statistics database gives its default and changes
// nothing; none of them may throw or crash.
void ExpectStatisticsDefaults(PedometerDBManager& m) {
    EXPECT_EQ(m.CreateNewLap()->id, -1);
    m.FinishLap(1);
    m.DeleteLap(1);
    DAOLapMinutes minute;
    DAOLapSeconds second;
    m.CreateNewLapMinute(minute);
    m.UpdateSmall(minute, second);
    m.UpdateFull(minute, second, minute);
    EXPECT_EQ(m.GetTodayLastLap(), nullptr);
    EXPECT_TRUE(m.GetLapsForDate(Moment()).empty());
    EXPECT_TRUE(m.GetLapsForPeriod(Moment(1), Moment()).empty());
    EXPECT_TRUE(m.GetAllDays().empty());
    m.ResetLogs(Moment(1), Moment());
    EXPECT_EQ(m.GetTodayDistance(), 0.0);
    EXPECT_EQ(m.GetTodayCalories(), 0.0);
    EXPECT_EQ(m.GetTodayActivity(), 0);
    EXPECT_EQ(m.GetTodaySygnal().calories, 0.0);
    EXPECT_EQ(m.GetTodayBodyLog().weight, 0.0);
    m.SetTodayWeight(80.0);
    EXPECT_TRUE(m.GetBodyLogs().empty());
    EXPECT_EQ(m.GetLastLogDate(), Moment(14, 0, 0));
    DAOTarget target;
    target.calories = 123;
    m.LoadTargets(target);
    EXPECT_EQ(target.calories, 123);
    m.SaveTagets(target);
}

TEST_F(DatabaseConnectionTest, DamageFoundLaterStopsTheConnectionWithoutTouchingTheFile) {
    // Enough history for many pages, then scribble over everything after the schema.
    std::vector<std::unique_ptr<DAOLap>> laps;
    for (int i = 0; i < 300; ++i) laps.push_back(storagetest::MakeLap(Moment(1).addSecs(3600LL * i), 20));
    ASSERT_TRUE(manager().ImportHistory(laps, {}));
    manager().Reopen();  // closing checkpoints the log into the file
    ASSERT_TRUE(manager().StatisticsStatus().open);  // opened, and checked before the damage
    const QString path = HomeFile("Statistics.db3");
    QByteArray bytes = testdata::ReadFile(path);
    ASSERT_GT(bytes.size(), 16 * 4096);
    for (qsizetype i = 2 * 4096; i < bytes.size(); ++i) bytes[i] = char(0xA5 ^ (i * 31));
    ASSERT_TRUE(testdata::WriteFile(path, bytes));

    EXPECT_TRUE(manager().GetLapsForPeriod(Moment(1), Moment(30)).empty());
    const DatabaseStatus status = manager().StatisticsStatus();
    EXPECT_FALSE(status.open);
    EXPECT_TRUE(status.error.contains("is damaged: ")) << status.error.toStdString();
    ExpectStatisticsDefaults(manager());
    EXPECT_EQ(testdata::ReadFile(path), bytes);
}

// The check runs beside the first reads, so the file is large enough for it to take a
// while, and the damage sits in the body log's pages, away from what a new lap writes.
// The window's notice does not wait for it; damage it finds is reported without a write,
// and a write that comes before its verdict waits for it and is refused.
TEST_F(DatabaseConnectionTest, TheBackgroundCheckReportsDamageAndHoldsBackEarlyWrites) {
    std::vector<std::unique_ptr<DAOLap>> noLaps;
    std::vector<DAOBodyLog> logs(40000);
    for (size_t i = 0; i < logs.size(); ++i) logs[i].logDate = Moment(1).addDays(qint64(i));
    ASSERT_TRUE(manager().ImportHistory(noLaps, logs));
    manager().Reopen();
    const QString path = HomeFile("Statistics.db3");
    QByteArray bytes = testdata::ReadFile(path);
    ASSERT_GT(bytes.size(), 256 * 4096);
    for (qsizetype i = bytes.size() - 3000; i < bytes.size() - 2600; ++i) bytes[i] = char(0xFF);
    ASSERT_TRUE(testdata::WriteFile(path, bytes));

    manager().StatisticsConnection().StatusSoFar();  // opens the file: the check starts
    DatabaseStatus problem = manager().SavingProblem();
    EXPECT_TRUE(problem.error.isEmpty()) << "the notice waited for the check";
    for (int i = 0; i < 500 && problem.error.isEmpty(); ++i) {
        QThread::msleep(10);
        problem = manager().SavingProblem();  // what the window's notice shows
    }
    EXPECT_TRUE(problem.error.contains("is damaged")) << problem.error.toStdString();
    manager().Reopen();
    EXPECT_FALSE(manager().StatisticsStatus().open);  // waits for the new check's verdict
    manager().Reopen();
    EXPECT_FALSE(manager().CreateNewLap()->id > 0);  // long before the new check ends
    manager().Reopen();
    EXPECT_EQ(testdata::ReadFile(path), bytes);
}

TEST_F(DatabaseConnectionTest, AMissingSeedOrAnImpossibleDataFolderLeavesTheConnectionUnusable) {
    auto emptyResources = testdata::MakeTempDir();
    const QString resources = AppPaths::Res();
    AppPaths::SetRes(emptyResources->path());
    const DatabaseStatus status = manager().OptionsStatus();
    AppPaths::SetRes(resources);

    EXPECT_FALSE(status.usable());
    EXPECT_TRUE(status.error.contains("is missing")) << status.error.toStdString();
    PedometerOptions options;
    options.countDownTime = 3;
    manager().LoadOptions(options);
    manager().SaveOptions(options);
    EXPECT_EQ(options.countDownTime, 3);
    EXPECT_TRUE(manager().GetDAOSocialN()->share.isEmpty());
    EXPECT_FALSE(QFileInfo::exists(HomeFile("Options.db3")));  // not even now the seed is back

    // Reopening recovers, even where a killed run left its copy.
    const QString left =
        HomeFile(QStringLiteral("Options.db3.seed-%1").arg(QCoreApplication::applicationPid()));
    ASSERT_TRUE(testdata::WriteFile(left, "left by a killed run"));
    manager().Reopen();
    EXPECT_TRUE(manager().IsOptionsUsable());

    // A path below a regular file cannot become a data folder, not even for root.
    ASSERT_TRUE(testdata::WriteFile(folder_->path() + "/plain-file", "x"));
    AppPaths::SetHome(folder_->path() + "/plain-file/data");
    manager().Reopen();
    EXPECT_FALSE(manager().StatisticsStatus().error.isEmpty());
    ExpectStatisticsDefaults(manager());
}

// Opening without write access: reads work, changes have no effect, nothing about
// the file changes. This is what a read-only file or folder gives an ordinary user;
// root can write anyway, so the manager's read-only opening stands in for it.
TEST_F(DatabaseConnectionTest, AReadOnlyDatabaseCanBeReadButNotChanged) {
    Clock::SetNow(Moment(14, 9, 0));
    manager().CreateNewLap();
    // A writer still at work keeps the lap in its write-ahead log, where readers see it.
    const auto writer = Open(StatisticsPath());
    writer->exec("SELECT count(*) FROM Lap");
    manager().Reopen();
    Clock::SetNow(Moment());
    const QByteArray before = testdata::ReadFile(HomeFile("Statistics.db3"));

    manager().SetReadOnly(true);
    manager().Reopen();
    const DatabaseStatus status = manager().StatisticsStatus();
    EXPECT_TRUE(status.open);
    EXPECT_FALSE(status.writable);
    EXPECT_TRUE(status.error.contains("read-only")) << status.error.toStdString();

    EXPECT_EQ(manager().GetLapsForDate(Moment(14, 0, 0)).size(), 1u);
    EXPECT_EQ(manager().CreateNewLap()->id, -1);
    manager().GetTodaySygnal();
    manager().SaveTagets(DAOTarget{});
    manager().ResetLogs(Moment(1), Moment(30));
    EXPECT_EQ(manager().GetLapsForDate(Moment(14, 0, 0)).size(), 1u);
    manager().Reopen();
    EXPECT_EQ(testdata::ReadFile(HomeFile("Statistics.db3")), before);
}

TEST_F(DatabaseConnectionTest, AReadOnlyFolderAndFileAsAnOrdinaryUser) {
    if (::geteuid() == 0) GTEST_SKIP() << "root writes through file permissions";
    manager().CreateNewLap();
    manager().Reopen();
    const QByteArray before = testdata::ReadFile(HomeFile("Statistics.db3"));
    QFile::setPermissions(HomeFile("Statistics.db3"), QFile::ReadOwner);
    QFile::setPermissions(home_, QFile::ReadOwner | QFile::ExeOwner);

    const DatabaseStatus status = manager().StatisticsStatus();
    EXPECT_FALSE(status.usable());
    EXPECT_FALSE(status.error.isEmpty());
    EXPECT_EQ(manager().CreateNewLap()->id, -1);
    manager().Reopen();
    EXPECT_EQ(testdata::ReadFile(HomeFile("Statistics.db3")), before);
    // A missing file cannot be seeded into a read-only folder.
    EXPECT_FALSE(manager().IsOptionsUsable());

    QFile::setPermissions(home_, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QFile::setPermissions(HomeFile("Statistics.db3"), QFile::ReadOwner | QFile::WriteOwner);
}

// --- A writer killed at random moments ---------------------------------------------

// Runs only as the child of the test below: writes five-second intervals into the
// data folder it is given and reports each committed interval on stdout.
TEST(DatabaseDurabilityTest, DISABLED_WriterChild) {
    const QString dir = qEnvironmentVariable("PEDOMETER_WRITER_DIR");
    if (dir.isEmpty()) GTEST_SKIP() << "started only by KilledWriterLosesNoCommittedInterval";
    AppPaths::SetHome(dir);
    PedometerDBManager& m = PedometerDBManager::GetInstance();
    m.Reopen();
    auto lap = m.CreateNewLap();
    ASSERT_GT(lap->id, 0);
    DAOLapMinutes minute;
    minute.lapId = lap->id;
    m.CreateNewLapMinute(minute);
    for (int second = 5; second <= 5 * 200000; second += 5) {
        DAOLapSeconds interval;
        std::tie(interval.lapId, interval.currentSecond, interval.steps, interval.distance) =
            std::tuple(lap->id, second, 9, 6.3);
        minute.steps += 9;
        minute.distance += 6.3;
        minute.secondsCompleted += 5;
        if (second % 60 == 0) {
            DAOLapMinutes next;
            next.lapId = lap->id;
            next.lapMinute = minute.lapMinute + 1;
            m.UpdateFull(minute, interval, next);
            minute = next;
        } else {
            m.UpdateSmall(minute, interval);
        }
        if (!m.StatisticsStatus().lastFailure.isEmpty()) break;
        // One write() per line: the report arrives whole or not at all.
        const std::string line =
            "committed " + std::to_string(lap->id) + " " + std::to_string(second) + "\n";
        if (::write(STDOUT_FILENO, line.data(), line.size()) < 0) break;
    }
}

TEST_F(DatabaseConnectionTest, KilledWriterLosesNoCommittedInterval) {
    ASSERT_TRUE(QDir().mkpath(home_));
    std::mt19937 random(20240314);
    std::set<std::pair<int, int>> committed;
    const QRegularExpression report(QStringLiteral("committed (\\d+) (\\d+)"));

    for (int round = 0; round < 5; ++round) {
        QProcess child;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("PEDOMETER_WRITER_DIR"), home_);
        child.setProcessEnvironment(environment);
        child.start(QCoreApplication::applicationFilePath(),
                    {QStringLiteral("--gtest_also_run_disabled_tests"),
                     QStringLiteral("--gtest_filter=DatabaseDurabilityTest.DISABLED_WriterChild")});
        ASSERT_TRUE(child.waitForStarted(10000));

        // Let it commit for a while, then kill it in the middle of its work.
        QByteArray output;
        while (!output.contains("committed") && child.state() == QProcess::Running) {
            child.waitForReadyRead(100);
            output += child.readAllStandardOutput();
        }
        QThread::msleep(std::uniform_int_distribution<int>(10, 250)(random));
        child.kill();
        ASSERT_TRUE(child.waitForFinished(10000));
        output += child.readAllStandardOutput();
        EXPECT_EQ(child.exitStatus(), QProcess::CrashExit) << "the writer ended on its own";

        const std::size_t before = committed.size();
        for (auto match = report.globalMatch(QString::fromLatin1(output)); match.hasNext();) {
            const auto m = match.next();
            committed.emplace(m.captured(1).toInt(), m.captured(2).toInt());
        }
        EXPECT_GT(committed.size(), before) << "round " << round;

        auto db = Open(StatisticsPath());
        EXPECT_EQ(db->execAndGet("PRAGMA integrity_check").getString(), "ok");
        SQLite::Statement stored(*db, "SELECT lapId,currentSecond FROM LastFiveMinutes");
        std::set<std::pair<int, int>> found;
        while (stored.executeStep())
            found.emplace(stored.getColumn(0).getInt(), stored.getColumn(1).getInt());
        for (const auto& interval : committed) {
            ASSERT_TRUE(found.count(interval))
                << "lap " << interval.first << " second " << interval.second << " lost";
        }
        // The minutes agree with the intervals: a transaction is all or nothing.
        EXPECT_EQ(db->execAndGet("SELECT (SELECT max(currentSecond) FROM LastFiveMinutes WHERE "
                                 "lapId=last.id) - (SELECT sum(secondsCompleted) FROM LapMinutes "
                                 "WHERE lapId=last.id) FROM (SELECT max(id) AS id FROM Lap) last")
                      .getInt(),
                  0);
    }
}

}  // namespace

TEST_F(DatabaseConnectionTest, FilesAreCheckedTightenedAndUpgradedAtEveryOpening) {
    for (const QByteArrayList& state : testdata::Table("found-databases.tsv")) {
        SCOPED_TRACE(state[0].toStdString());
        const bool usable = state[3] == "1";
        AppPaths::SetHome(home_ = folder_->filePath(QString::fromUtf8(state[0])));
        manager().Reopen();
        for (int i = 0; i < 30; ++i) manager().CreateNewLap();
        manager().Reopen();
        const QString file = HomeFile("Statistics.db3");
        if (state[1] == "loosen") {
            ::chmod(QFile::encodeName(home_).constData(), 01777);
            QFile::setPermissions(file, QFileDevice::Permissions(0x6644));
        } else if (state[1] == "sql") {
            Exec(QFile::encodeName(file).toStdString(), state[2].toStdString());
        } else if (state[1] == "write") {
            ASSERT_TRUE(testdata::WriteFile(file, state[2].repeated(100)));
        } else if (state[1] == "scribble") {
            QByteArray bytes = testdata::ReadFile(file);
            for (qsizetype i = 4096; i < 4096 + 400; ++i) bytes[i] = char(0xFF);
            ASSERT_TRUE(testdata::WriteFile(file, bytes));
        } else {
            ASSERT_TRUE(QFile::rename(file, file + ".elsewhere"));
            ASSERT_TRUE(QFile::link(file + ".elsewhere", file));
        }
        const QByteArray before = testdata::ReadFile(file);

        EXPECT_EQ(manager().CreateNewLap()->id > 0, usable);
        const DatabaseStatus status = manager().StatisticsStatus();
        EXPECT_EQ(status.usable(), usable);
        EXPECT_TRUE(status.error.contains(QString::fromUtf8(state.value(4))))
            << status.error.toStdString();
        if (!usable) {
            manager().Reopen();
            EXPECT_EQ(testdata::ReadFile(file), before);
            continue;
        }
        // A folder the app did not make keeps its mode; the file loses only what others had.
        struct stat folder {};
        ASSERT_EQ(::stat(QFile::encodeName(home_).constData(), &folder), 0);
        EXPECT_EQ(folder.st_mode & 07777, home_.endsWith("file") ? 01777u : 0700u);
        EXPECT_EQ(QFile::permissions(file) & 0x7777, QFileDevice::Permissions(0x6600));
        EXPECT_EQ(QueryInt(StatisticsPath(), "PRAGMA user_version"), 4);
        EXPECT_EQ(QueryInt(StatisticsPath(),
                           "SELECT count(*) FROM sqlite_master WHERE name='LapStartDate'"),
                  1);
    }
}
