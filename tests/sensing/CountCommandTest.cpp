// pedometer-cli count and accuracy, run as the user runs them.
#include <gtest/gtest.h>

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <cmath>

#include <SQLiteCpp/SQLiteCpp.h>

#include "AccelerationCsvReader.h"
#include "AccelerationRecorder.h"
#include "AccelerationRecording.h"
#include "Body.h"
#include "Cli.h"
#include "RecordingStepCounter.h"
#include "TestData.h"

namespace {

// The tool runs in a German locale (decimal comma).
CliRun cli(const QStringList& args) { return RunCli(args, "de_DE.UTF-8"); }

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
        writeWalk(walk_, 0.25);
        writeWalk(jog_, 0.6);
    }

    static RecordingStepCounter::Result countHere(const QString& path) {
        Body::GetInstance().clear();
        AccelerationRecording recording;
        EXPECT_TRUE(AccelerationCsvReader::ReadFile(path, &recording, nullptr));
        return RecordingStepCounter::Count(recording);
    }
    QString File(const char* name) const { return dir_->filePath(name); }

    std::unique_ptr<QTemporaryDir> dir_ = testdata::MakeTempDir();
    QString walk_ = File("walk.csv"), jog_ = File("jog.csv"), data_ = File("data");
};

// The text line and the JSON object carry the same figures as counting here.
TEST_F(CountCommandTest, PrintsOneLinePerFileWithDistanceFromDefaultStepLengths) {
    const CliRun run = cli({"count", walk_, jog_});
    ASSERT_EQ(run.status, 0) << run.err.toStdString();
    const QStringList lines = run.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2);
    const QRegularExpression format(
        R"(^(\S+) steps=(\d+) walk=(\d+) jog=(\d+) run=(\d+) samples=(\d+) distance_m=(\d+\.\d\d)$)");
    const QString files[] = {walk_, jog_};
    for (int i = 0; i < 2; ++i) {
        const QRegularExpressionMatch m = format.match(lines[i]);
        ASSERT_TRUE(m.hasMatch()) << lines[i].toStdString();
        const RecordingStepCounter::Result expected = countHere(files[i]);
        EXPECT_GT(expected.Steps(), 10);
        EXPECT_EQ(m.capturedTexts().mid(1, 6),
                  QStringList({files[i], QString::number(expected.Steps()),
                               QString::number(expected.walk), QString::number(expected.jog),
                               QString::number(expected.run), QString::number(expected.samples)}));
        // Default profile: 172 cm, not a man; walk 0.71036 m, jog 1.5 and run 2 times that.
        const double metres = 0.71036 * (expected.walk + 1.5 * expected.jog + 2 * expected.run);
        EXPECT_NEAR(m.captured(7).toDouble(), metres, 0.005);
    }
    const CliRun json = cli({"count", "--json", jog_});
    ASSERT_EQ(json.status, 0) << json.err.toStdString();
    const QJsonObject o = QJsonDocument::fromJson(json.out.toUtf8()).object();
    EXPECT_EQ(o["file"].toString(), jog_);
    for (const char* key : {"steps", "walk", "jog", "run", "samples"})
        EXPECT_TRUE(lines[1].contains(QStringLiteral(" %1=%2 ").arg(key).arg(o[key].toInt()))) << key;
    EXPECT_TRUE(lines[1].endsWith(QString::number(o["distance_m"].toDouble(), 'f', 2)));
    // Sensitivities from the command line reach the detector.
    const CliRun deaf = cli({"count", "--detector=classic", "--walk-coef", "100",
                             "--jog-coef=100", "--run-coef", "100", jog_});
    EXPECT_TRUE(deaf.out.contains(" steps=0 ")) << deaf.out.toStdString();
}

// Bad input gives status 2 and the reason (the cases of tests/data/cli-bad-input.tsv); a
// bad file does not stop the good ones.
TEST_F(CountCommandTest, BadInputExitsWithStatusTwoAndSaysWhy) {
    const QString bad = File("bad.csv"), index = File("truth.csv");
    ASSERT_TRUE(testdata::WriteFile(bad,
                                    "Time (s),Acceleration x (g),Acceleration y (g),"
                                    "Acceleration z (g)\n0,0,0,1\n0.1,0,x,1\n"));
    CliRun run = cli({"count", bad, walk_});
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(run.err.contains(bad + ": line 3: \"x\" in column 3")) << run.err.toStdString();
    EXPECT_TRUE(run.out.startsWith(walk_ + " steps="));
    for (const QByteArrayList& row : testdata::Table("cli-bad-input.tsv")) {
        const QStringList args =
            QString::fromUtf8(row.mid(2).join('\t')).replace("{dir}", dir_->path()).split('\t');
        SCOPED_TRACE(args.join(' ').toStdString());
        if (!row[1].isEmpty()) {
            ASSERT_TRUE(testdata::WriteFile(index, row[1].trimmed()));
        }
        run = cli(args);
        EXPECT_EQ(run.status, 2);
        EXPECT_FALSE(run.err.isEmpty());
        EXPECT_TRUE(run.err.contains(QString::fromUtf8(row[0]))) << run.err.toStdString();
    }
    // Each command's help is made from its declared options.
    for (const QString& command : QStringLiteral("accuracy backup calibrate export export-body "
                                                 "history import replay restore seed-history "
                                                 "sweep count").split(' ')) {
        run = cli({command, "--help"});
        EXPECT_EQ(run.status, 0) << command.toStdString();
        EXPECT_TRUE(run.out.startsWith(QStringLiteral("Usage: pedometer-cli %1 ").arg(command)) &&
                    run.out.contains("\nExit status: 0 ")) << run.out.toStdString();
    }
    EXPECT_TRUE(run.out.contains("distance_m") && run.out.contains("--jog-coef"));
}

// A replay across midnight stores each interval at its own time: the distance alarm's
// progress restarts at midnight with only the intervals after it. The printed lap is the
// stored one, without the unfinished last two seconds. On a nearly full disk (a file-size
// limit) the writes that fail are said, and no lap is printed that was not stored.
TEST_F(CountCommandTest, ReplayStoresIntervalsAtTheirTimeAndPrintsTheStoredLap) {
    const QString walk = File("walk22.csv");
    writeWalk(walk, 0.25, 2200);
    const QStringList replay{"replay", "--data-dir", data_, "--start"};
    ASSERT_EQ(cli(replay + QStringList{"2026-01-04 12:00:00", walk}).status, 0);
    SQLite::Database(QDir(data_).filePath("Options.db3").toStdString(), SQLite::OPEN_READWRITE)
        .exec("UPDATE SCREEN SET SYGNAL_TYPE=5");  // a distance alarm running

    const CliRun run = cli(replay + QStringList{"2026-01-05 23:59:50", walk});
    ASSERT_EQ(run.status, 0) << run.err.toStdString();
    SQLite::Database db(QDir(data_).filePath("Statistics.db3").toStdString());
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

    const CliRun full = RunCli({"replay", "--data-dir", File("full"), walk}, "de_DE.UTF-8", 128);
    EXPECT_NE(full.status, 0);
    EXPECT_TRUE(full.err.contains("not saved")) << full.err.toStdString();
    EXPECT_FALSE(full.out.contains("lap=")) << full.out.toStdString();
}

TEST_F(CountCommandTest, AccuracyTabulatesCountsAgainstTheIndex) {
    const int walkSteps = countHere(walk_).Steps();
    const int jogSteps = countHere(jog_).Steps();
    const QString index = File("truth.csv");
    // The walk's truth is twice its count (-50 %), the jog's its count (0 %): 25 % mean.
    ASSERT_TRUE(testdata::WriteFile(index, QStringLiteral("phone,file,ground_truth_steps\n"
                                                          "A,walk.csv,%1\nB,%2,%3\n")
                                               .arg(walkSteps * 2)
                                               .arg(jog_)
                                               .arg(jogSteps)
                                               .toUtf8()));
    const CliRun run = cli({"accuracy", index});
    ASSERT_EQ(run.status, 0) << run.err.toStdString();
    const QStringList lines = run.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 6) << run.out.toStdString();
    EXPECT_TRUE(lines[0].startsWith("file") && lines[3].startsWith("total"));
    EXPECT_EQ(lines[1].simplified(),
              QStringLiteral("walk.csv %1 %2 -50.0").arg(walkSteps).arg(walkSteps * 2));
    EXPECT_EQ(lines[2].simplified(), QStringLiteral("%1 %2 %2 0.0").arg(jog_).arg(jogSteps));
    EXPECT_EQ(lines[4], "mean absolute percentage error: 25.0 %");
    EXPECT_EQ(lines[5], "steps classed as walk: 100.0 %, jog: 0.0 %, run: 0.0 %");
}

// calibrate: a length in range is stored in the data folder's profile; a distance that
// makes an impossible step is refused with the reason and stores nothing.
TEST_F(CountCommandTest, CalibrateStoresTheWalkStepOrSaysWhyNot) {
    const int steps = countHere(walk_).walk;
    ASSERT_GT(steps, 10);
    const struct {
        double metresPerStep;
        int status;
        const char* says;  // in German: the tool runs in de_DE
    } cases[] = {{0.2, 1, "unter 30 cm"}, {1.3, 1, "über 1,2 m"}, {0.75, 0, ""}};
    for (const auto& c : cases) {
        const CliRun run = cli({"calibrate", walk_, "--distance",
                                QString::number(c.metresPerStep * steps), "--data-dir", data_});
        EXPECT_EQ(run.status, c.status) << run.err.toStdString();
        EXPECT_TRUE(run.err.contains(QString::fromUtf8(c.says))) << run.err.toStdString();
        EXPECT_TRUE(run.out.contains(QStringLiteral("walk_steps=%1 step_length_m=%2")
                                         .arg(steps)
                                         .arg(c.metresPerStep, 0, 'f', 3)))
            << run.out.toStdString();
    }
    SQLite::Database options(QDir(data_).filePath("Options.db3").toStdString());
    EXPECT_NEAR(options.execAndGet("SELECT WALK_SIZE FROM BODY").getDouble(), 0.75, 1e-9);
}

}  // namespace
