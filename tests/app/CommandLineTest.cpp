// The application's command line: LaunchOptions::Parse reads every option into its field
// and refuses what it cannot carry out with a message; main() turns that into a status.
#include "LaunchOptions.h"

#include <gtest/gtest.h>

#include <QProcess>

#include "TestData.h"

namespace {

using Outcome = LaunchOptions::Outcome;

// Command lines that run, with what they must have read; those that print or are refused
// are in tests/data/launch-options.tsv.
TEST(CommandLineTest, OptionsAreReadOrRefusedWithTheReason) {
    const struct {
        QStringList args;
        bool (*holds)(const LaunchOptions&);  // what a run must have read
    } cases[] = {
        {{},
         [](const LaunchOptions& o) {
             return o.screen == "main" && !o.sensor && !o.detector && o.quitAfterSeconds == -1;
         }},
        {{"--sensor", "iio", "--detector", "adaptive", "--keep-counting-screen-off", "off"},
         [](const LaunchOptions& o) {
             return o.sensor == "iio" && o.detector == DetectorKind::Adaptive &&
                    o.keepCountingScreenOff == false;
         }},
        {{"--open", "history-lap", "--lap", "7", "--day", "2026-06-01", "--from", "2026-05-01",
          "--to", "2026-05-31"},
         [](const LaunchOptions& o) {
             return o.screen == "history-lap" && o.request.lapId == 7 &&
                    o.request.day == QDate(2026, 6, 1) && o.request.from == QDate(2026, 5, 1) &&
                    o.request.to == QDate(2026, 5, 31);
         }},
        {{"--replay", "w.csv", "--loop", "--quit-after-replay", "--quit-after", "0", "--hvga",
          "--silent", "--autostart", "--background", "--record", "r.csv", "--screenshot", "s.png", "--locale",
          "de_DE", "--data-dir", "/d"},
         [](const LaunchOptions& o) {
             return o.replayFile == "w.csv" && o.loop && o.quitAfterReplay &&
                    o.quitAfterSeconds == 0 && o.hvga && o.silent && o.autostart && o.background &&
                    o.recordFile == "r.csv" && o.screenshotFile == "s.png" &&
                    o.locale->language() == QLocale::German && o.dataDir == "/d";
         }},
        {{"--size", "400x700", "--check-layout"},
         [](const LaunchOptions& o) { return o.size == QSize(400, 700) && o.checkLayout; }},
    };
    for (const QByteArrayList& row : testdata::Table("launch-options.tsv")) {
        LaunchOptions options;
        QString message;
        const QStringList args = QString::fromUtf8(row.mid(2).join('\t')).split('\t');
        EXPECT_EQ(LaunchOptions::Parse(QStringList{"pedometer"} + args, &options, &message),
                  row[0] == "print" ? Outcome::Print : Outcome::Fail)
            << row.mid(2).join(' ').constData();
        EXPECT_TRUE(message.contains(QString::fromUtf8(row[1]))) << message.toStdString();
        // Before the display opens the same answer is given, unless Qt's own options may
        // be among the arguments: then the second reading decides.
        const QStringList line = QStringList{"pedometer"} + args;
        EXPECT_EQ(LaunchOptions::ParseBeforeQt(line, &message),
                  row[0] == "print" ? Outcome::Print : Outcome::Fail);
        EXPECT_EQ(LaunchOptions::ParseBeforeQt(line + QStringList{"-style", "fusion"}, &message),
                  Outcome::Run);
    }
    for (const auto& c : cases) {
        LaunchOptions options;
        QString message;
        EXPECT_EQ(LaunchOptions::Parse(QStringList{"pedometer"} + c.args, &options, &message),
                  Outcome::Run)
            << message.toStdString();
        EXPECT_TRUE(c.holds(options)) << c.args.join(' ').toStdString();
    }
}

// main() turns the outcomes into statuses; a failure found while assembling (a recording
// that cannot be read) or running (the screenshot cannot be saved) fails the run.
TEST(CommandLineTest, TheApplicationLeavesWithTheOutcomesStatus) {
    const auto dir = testdata::MakeTempDir();
    const struct {
        QStringList args;
        int status;
        const char* says;  // on standard output or error
    } cases[] = {
        {{"--screenshot", dir->path() + "/missing/shot.png", "--quit-after", "0"},
         1,
         "cannot save the screenshot"},
        {{"--replay", dir->path() + "/missing.csv"}, 2, "missing.csv"},
        {{"--help"}, 0, "Menu, F1"},
        {{"--check-layout"}, 0, "layout main 480x860: "},
    };
    for (const auto& c : cases) {
        QProcess app;
        app.setProcessChannelMode(QProcess::MergedChannels);
        app.start(QStringLiteral(PEDOMETER_APP_PATH),
                  QStringList{"--data-dir", dir->path(), "--sensor", "none"} + c.args);
        ASSERT_TRUE(app.waitForFinished(30000)) << c.says;
        const QString output = QString::fromUtf8(app.readAll());
        EXPECT_EQ(app.exitCode(), c.status) << c.says << "\n" << output.toStdString();
        EXPECT_TRUE(output.contains(QLatin1String(c.says))) << output.toStdString();
    }
}

}  // namespace
