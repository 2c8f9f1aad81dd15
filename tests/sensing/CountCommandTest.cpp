// pedometer-cli count and accuracy, run as the user runs them.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <cmath>
#include <csignal>
#include <cstring>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <SQLiteCpp/SQLiteCpp.h>

#include "AccelerationCsvReader.h"
#include "AccelerationRecorder.h"
#include "AccelerationRecording.h"
#include "Body.h"
#include "RecordingStepCounter.h"
#include "TestData.h"

namespace {

struct CliRun {
    int status = -1;
    QString out;
    QString err;
};

// Runs pedometer-cli in a German locale (decimal comma) and collects its output.
//
// Started with posix_spawn rather than QProcess: Qt starts children with a vfork-style
// clone that the thread sanitizer cannot follow, after which it misses this process's
// locking and reports races in the threaded tests that run later in the same program.
CliRun cli(const QStringList& args) {
    CliRun run;
    const auto dir = testdata::MakeTempDir();
    const QByteArray outPath = dir->filePath(QStringLiteral("out")).toLocal8Bit();
    const QByteArray errPath = dir->filePath(QStringLiteral("err")).toLocal8Bit();

    std::vector<QByteArray> argBytes{testdata::CliPath().toLocal8Bit()};
    for (const QString& a : args) argBytes.push_back(a.toLocal8Bit());
    std::vector<char*> argv;
    for (QByteArray& a : argBytes) argv.push_back(a.data());
    argv.push_back(nullptr);

    std::vector<QByteArray> envBytes;
    for (char** e = environ; *e != nullptr; ++e) {
        if (std::strncmp(*e, "LC_ALL=", 7) != 0 && std::strncmp(*e, "LANG=", 5) != 0) {
            envBytes.emplace_back(*e);
        }
    }
    envBytes.emplace_back("LC_ALL=de_DE.UTF-8");
    envBytes.emplace_back("LANG=de_DE.UTF-8");
    std::vector<char*> envp;
    for (QByteArray& e : envBytes) envp.push_back(e.data());
    envp.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, outPath.constData(), O_WRONLY | O_CREAT, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, errPath.constData(), O_WRONLY | O_CREAT, 0600);
    pid_t pid = 0;
    const int spawned = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), envp.data());
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0) return run;
    int status = 0;
    if (waitpid(pid, &status, 0) != pid) return run;
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    QFile out(QString::fromLocal8Bit(outPath));
    QFile err(QString::fromLocal8Bit(errPath));
    if (out.open(QIODevice::ReadOnly)) run.out = QString::fromUtf8(out.readAll());
    if (err.open(QIODevice::ReadOnly)) run.err = QString::fromUtf8(err.readAll());
    return run;
}

// A phone bouncing at two strides a second, in m/s^2 at 100 Hz, twenty seconds by default.
void writeWalk(const QString& path, double bounce, int samples = 2000) {
    AccelerationRecorder recorder(AccelerationRecorder::Unit::MetresPerSecondSquared);
    ASSERT_TRUE(recorder.Open(path, nullptr));
    for (int i = 0; i < samples; ++i) {
        const double t = i / 100.0;
        const double up = bounce * std::sin(2 * M_PI * 2.0 * t);
        recorder.Append(i * 10'000'000LL, 1.2f, static_cast<float>(9.5 + 9.8 * up), 0.8f);
    }
    ASSERT_TRUE(recorder.Close(nullptr));
}

class CountCommandTest : public ::testing::Test {
protected:
    void SetUp() override {
        dir_ = testdata::MakeTempDir();
        walk_ = dir_->filePath(QStringLiteral("walk.csv"));
        jog_ = dir_->filePath(QStringLiteral("jog.csv"));
        writeWalk(walk_, 0.25);
        writeWalk(jog_, 0.6);
    }

    static RecordingStepCounter::Result countHere(const QString& path) {
        Body::GetInstance().clear();
        AccelerationRecording recording;
        EXPECT_TRUE(AccelerationCsvReader::ReadFile(path, &recording, nullptr));
        return RecordingStepCounter::Count(recording);
    }

    std::unique_ptr<QTemporaryDir> dir_;
    QString walk_;
    QString jog_;
};

TEST_F(CountCommandTest, PrintsOneLinePerFileWithDistanceFromDefaultStepLengths) {
    const CliRun run = cli({QStringLiteral("count"), walk_, jog_});
    ASSERT_EQ(run.status, 0) << run.err.toStdString();
    const QStringList lines = run.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2);
    const QRegularExpression format(QStringLiteral(
        R"(^(\S+) steps=(\d+) walk=(\d+) jog=(\d+) run=(\d+) samples=(\d+) distance_m=(\d+\.\d\d)$)"));
    const QString files[] = {walk_, jog_};
    for (int i = 0; i < 2; ++i) {
        const QRegularExpressionMatch m = format.match(lines[i]);
        ASSERT_TRUE(m.hasMatch()) << lines[i].toStdString();
        EXPECT_EQ(m.captured(1), files[i]);
        const RecordingStepCounter::Result expected = countHere(files[i]);
        EXPECT_GT(expected.Steps(), 10);
        EXPECT_EQ(m.captured(2).toInt(), expected.Steps());
        EXPECT_EQ(m.captured(3).toInt(), expected.walk);
        EXPECT_EQ(m.captured(4).toInt(), expected.jog);
        EXPECT_EQ(m.captured(5).toInt(), expected.run);
        EXPECT_EQ(m.captured(6).toLongLong(), expected.samples);
        // Default profile: 172 cm, not a man; walk 0.71036 m, jog 1.5 and run 2 times that.
        const double metres = 0.71036 * (expected.walk + 1.5 * expected.jog + 2 * expected.run);
        EXPECT_NEAR(m.captured(7).toDouble(), metres, 0.005);
    }
}

TEST_F(CountCommandTest, JsonCarriesTheSameFigures) {
    const CliRun text = cli({QStringLiteral("count"), jog_});
    const CliRun json = cli({QStringLiteral("count"), QStringLiteral("--json"), jog_});
    ASSERT_EQ(json.status, 0) << json.err.toStdString();
    QJsonParseError error;
    const QJsonObject o = QJsonDocument::fromJson(json.out.toUtf8(), &error).object();
    ASSERT_EQ(error.error, QJsonParseError::NoError) << json.out.toStdString();
    EXPECT_EQ(o.value(QStringLiteral("file")).toString(), jog_);
    const QString expected =
        QStringLiteral("%1 steps=%2 walk=%3 jog=%4 run=%5 samples=%6 distance_m=%7\n")
            .arg(jog_)
            .arg(o.value(QStringLiteral("steps")).toInt())
            .arg(o.value(QStringLiteral("walk")).toInt())
            .arg(o.value(QStringLiteral("jog")).toInt())
            .arg(o.value(QStringLiteral("run")).toInt())
            .arg(o.value(QStringLiteral("samples")).toInt())
            .arg(o.value(QStringLiteral("distance_m")).toDouble(), 0, 'f', 2);
    EXPECT_EQ(text.out, expected);
}

TEST_F(CountCommandTest, SensitivityOptionsReachTheDetector) {
    const CliRun deaf = cli({QStringLiteral("count"), QStringLiteral("--detector=classic"),
                             QStringLiteral("--walk-coef"),
                             QStringLiteral("100"), QStringLiteral("--jog-coef=100"),
                             QStringLiteral("--run-coef"), QStringLiteral("100"), jog_});
    ASSERT_EQ(deaf.status, 0) << deaf.err.toStdString();
    EXPECT_TRUE(deaf.out.contains(QStringLiteral(" steps=0 "))) << deaf.out.toStdString();
}

TEST_F(CountCommandTest, BadInputExitsWithStatusTwoAndKeepsTheGoodFiles) {
    const QString bad = dir_->filePath(QStringLiteral("bad.csv"));
    ASSERT_TRUE(testdata::WriteFile(bad,
                                    "Time (s),Acceleration x (g),Acceleration y (g),"
                                    "Acceleration z (g)\n0,0,0,1\n0.1,0,x,1\n"));
    CliRun run = cli({QStringLiteral("count"), bad, walk_});
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(run.err.contains(bad + QStringLiteral(": line 3: \"x\" in column 3")))
        << run.err.toStdString();
    EXPECT_TRUE(run.out.startsWith(walk_ + QStringLiteral(" steps=")));

    for (const QStringList& args :
         {QStringList{QStringLiteral("count")},
          QStringList{QStringLiteral("count"), QStringLiteral("--walk-coef"), QStringLiteral("abc"),
                      walk_},
          QStringList{QStringLiteral("count"), QStringLiteral("--walk-coef=-1"), walk_},
          QStringList{QStringLiteral("count"), QStringLiteral("--frobnicate"), walk_},
          QStringList{QStringLiteral("count"), dir_->filePath(QStringLiteral("missing.csv"))}}) {
        run = cli(args);
        EXPECT_EQ(run.status, 2) << args.join(QLatin1Char(' ')).toStdString();
        EXPECT_FALSE(run.err.isEmpty());
    }
    run = cli({QStringLiteral("count"), QStringLiteral("--help")});
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(run.out.contains(QStringLiteral("distance_m")));
    EXPECT_TRUE(run.out.contains(QStringLiteral("--jog-coef")));
}

// A replay across midnight stores each interval at its own time: the distance alarm's
// progress restarts at midnight with only the intervals after it. The printed lap is the
// stored one, without the unfinished last two seconds.
TEST_F(CountCommandTest, ReplayStoresIntervalsAtTheirTimeAndPrintsTheStoredLap) {
    const QString walk = dir_->filePath(QStringLiteral("walk22.csv"));
    writeWalk(walk, 0.25, 2200);
    const QString data = dir_->filePath(QStringLiteral("data"));
    const QStringList replay{QStringLiteral("replay"), QStringLiteral("--data-dir"), data,
                             QStringLiteral("--start")};
    ASSERT_EQ(cli(replay + QStringList{QStringLiteral("2026-01-04 12:00:00"), walk}).status, 0);
    SQLite::Database(QDir(data).filePath("Options.db3").toStdString(), SQLite::OPEN_READWRITE)
        .exec("UPDATE SCREEN SET SYGNAL_TYPE=5");  // a distance alarm running

    const CliRun run = cli(replay + QStringList{QStringLiteral("2026-01-05 23:59:50"), walk});
    ASSERT_EQ(run.status, 0) << run.err.toStdString();
    SQLite::Database db(QDir(data).filePath("Statistics.db3").toStdString());
    const int steps = db.execAndGet("SELECT SUM(steps) FROM LapMinutes WHERE lapId=2").getInt();
    EXPECT_LT(steps, countHere(walk).Steps());
    EXPECT_TRUE(run.out.startsWith(QStringLiteral("lap=2 steps=%1 ").arg(steps)))
        << run.out.toStdString();
    SQLite::Statement alarm(db, "SELECT sygnalDate, distance FROM SygnalValues");
    ASSERT_TRUE(alarm.executeStep());
    EXPECT_EQ(alarm.getColumn(0).getString(), "2026-01-06 00:00:00");
    // The intervals ending at 00:00:00, :05 and :10 count for the new day.
    const double after = db.execAndGet(
        "SELECT SUM(distance) FROM LastFiveMinutes WHERE lapId=2 AND currentSecond>5");
    EXPECT_GT(after, 0.0);
    EXPECT_NEAR(alarm.getColumn(1).getDouble() * 1000, after, 1e-6);
}

// A nearly full disk, played by a file-size limit the child inherits: the writes that fail
// partway through are said, and the command fails instead of printing a lap it did not store.
TEST_F(CountCommandTest, ReplayThatCannotStoreEverythingSaysSoAndFails) {
    const QString walk = dir_->filePath(QStringLiteral("walk22.csv"));
    writeWalk(walk, 0.25, 2200);
    const QString data = dir_->filePath(QStringLiteral("data"));
    rlimit old{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old), 0);
    const rlimit nearlyFull{64 * 1024, old.rlim_max};
    const auto previous = std::signal(SIGXFSZ, SIG_IGN);  // a write fails instead of killing
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &nearlyFull), 0);
    const CliRun run = cli({QStringLiteral("replay"), QStringLiteral("--data-dir"), data, walk});
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, previous);
    EXPECT_NE(run.status, 0);
    EXPECT_TRUE(run.err.contains(QStringLiteral("not saved"))) << run.err.toStdString();
    EXPECT_FALSE(run.out.contains(QStringLiteral("lap="))) << run.out.toStdString();
}

TEST_F(CountCommandTest, AccuracyTabulatesCountsAgainstTheIndex) {
    const int walkSteps = countHere(walk_).Steps();
    const int jogSteps = countHere(jog_).Steps();
    const QString index = dir_->filePath(QStringLiteral("truth.csv"));
    // The walk's truth is twice its count (-50 %), the jog's its count (0 %): 25 % mean.
    const QByteArray text =
        QStringLiteral("phone,file,ground_truth_steps\nA,walk.csv,%1\nB,%2,%3\n")
            .arg(walkSteps * 2)
            .arg(jog_)
            .arg(jogSteps)
            .toUtf8();
    ASSERT_TRUE(testdata::WriteFile(index, text));
    const CliRun run = cli({QStringLiteral("accuracy"), index});
    ASSERT_EQ(run.status, 0) << run.err.toStdString();
    const QStringList lines = run.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 6) << run.out.toStdString();
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("file")));
    EXPECT_EQ(lines[1].simplified(),
              QStringLiteral("walk.csv %1 %2 -50.0").arg(walkSteps).arg(walkSteps * 2));
    EXPECT_EQ(lines[2].simplified(), QStringLiteral("%1 %2 %2 0.0").arg(jog_).arg(jogSteps));
    EXPECT_TRUE(lines[3].startsWith(QStringLiteral("total")));
    EXPECT_EQ(lines[4], QStringLiteral("mean absolute percentage error: 25.0 %"));
    EXPECT_EQ(lines[5], QStringLiteral("steps classed as walk: 100.0 %, jog: 0.0 %, run: 0.0 %"));
}

TEST_F(CountCommandTest, AccuracyRejectsABadIndex) {
    const QString index = dir_->filePath(QStringLiteral("truth.csv"));
    struct Case {
        QByteArray text;
        const char* expected;
    };
    const Case cases[] = {
        {"", "the index is empty"},
        {"file,steps\nwalk.csv,10\n", "line 1: the header needs the columns"},
        {"file,ground_truth_steps\n", "no recordings listed"},
        {"file,ground_truth_steps\nwalk.csv,many\n", "line 2: ground_truth_steps 'many'"},
        {"file,ground_truth_steps\nwalk.csv,0\n", "is not a positive whole number"},
        {"file,ground_truth_steps\nnowhere.csv,10\n", "nowhere.csv: cannot open"},
    };
    for (const Case& c : cases) {
        ASSERT_TRUE(testdata::WriteFile(index, c.text));
        const CliRun run = cli({QStringLiteral("accuracy"), index});
        EXPECT_EQ(run.status, 2) << c.text.constData();
        EXPECT_TRUE(run.err.contains(QString::fromUtf8(c.expected)))
            << "got: " << run.err.toStdString() << "\nwanted: " << c.expected;
    }
    EXPECT_EQ(cli({QStringLiteral("accuracy")}).status, 2);
    EXPECT_EQ(cli({QStringLiteral("accuracy"), dir_->filePath(QStringLiteral("none.csv"))}).status,
              2);
}

// calibrate: a length in range is stored in the data folder's profile; a distance that
// makes an impossible step is refused with the reason and stores nothing.
TEST_F(CountCommandTest, CalibrateStoresTheWalkStepOrSaysWhyNot) {
    const int steps = countHere(walk_).walk;
    ASSERT_GT(steps, 10);
    const QString data = dir_->filePath(QStringLiteral("data"));
    const auto calibrate = [&](const QString& metres) {
        return cli({QStringLiteral("calibrate"), walk_, QStringLiteral("--distance"), metres,
                    QStringLiteral("--data-dir"), data});
    };
    const struct {
        double metresPerStep;
        int status;
        const char* says;  // in German: the tool runs in de_DE
    } cases[] = {{0.2, 1, "unter 30 cm"}, {1.3, 1, "über 1,2 m"}, {0.75, 0, ""}};
    for (const auto& c : cases) {
        const CliRun run = calibrate(QString::number(c.metresPerStep * steps));
        EXPECT_EQ(run.status, c.status) << run.err.toStdString();
        EXPECT_TRUE(run.err.contains(QString::fromUtf8(c.says))) << run.err.toStdString();
        EXPECT_TRUE(run.out.contains(QStringLiteral("walk_steps=%1 step_length_m=%2")
                                         .arg(steps)
                                         .arg(c.metresPerStep, 0, 'f', 3)))
            << run.out.toStdString();
    }
    SQLite::Database options(QDir(data).filePath("Options.db3").toStdString());
    EXPECT_NEAR(options.execAndGet("SELECT WALK_SIZE FROM BODY").getDouble(), 0.75, 1e-9);
    EXPECT_EQ(calibrate(QStringLiteral("many")).status, 2);
}

}  // namespace
