// The application's command line: LaunchOptions::Parse reads every option into its field
// and refuses what it cannot carry out with a message; main() turns that into a status.
#include "LaunchOptions.h"

#include <gtest/gtest.h>

#include <QProcess>

#include "TestData.h"

namespace {

using Outcome = LaunchOptions::Outcome;

TEST(CommandLineTest, OptionsAreReadOrRefusedWithTheReason) {
    const struct {
        QStringList args;
        Outcome outcome;
        const char* says;                            // in the message; null for Run
        bool (*holds)(const LaunchOptions&);  // what a Run must have read
    } cases[] = {
        {{}, Outcome::Run, nullptr,
         [](const LaunchOptions& o) {
             return o.screen == "main" && !o.sensor && !o.detector && o.quitAfterSeconds == -1;
         }},
        {{"--sensor", "iio", "--detector", "adaptive", "--keep-counting-screen-off", "off"},
         Outcome::Run, nullptr,
         [](const LaunchOptions& o) {
             return o.sensor == "iio" && o.detector == DetectorKind::Adaptive &&
                    o.keepCountingScreenOff == false;
         }},
        {{"--open", "history-lap", "--lap", "7", "--day", "2026-06-01", "--from", "2026-05-01",
          "--to", "2026-05-31"},
         Outcome::Run, nullptr,
         [](const LaunchOptions& o) {
             return o.screen == "history-lap" && o.request.lapId == 7 &&
                    o.request.day == QDate(2026, 6, 1) && o.request.from == QDate(2026, 5, 1) &&
                    o.request.to == QDate(2026, 5, 31);
         }},
        {{"--replay", "w.csv", "--loop", "--quit-after-replay", "--quit-after", "0", "--hvga",
          "--silent", "--autostart", "--background", "--record", "r.csv", "--screenshot", "s.png", "--locale",
          "de_DE", "--data-dir", "/d"},
         Outcome::Run, nullptr,
         [](const LaunchOptions& o) {
             return o.replayFile == "w.csv" && o.loop && o.quitAfterReplay &&
                    o.quitAfterSeconds == 0 && o.hvga && o.silent && o.autostart && o.background &&
                    o.recordFile == "r.csv" && o.screenshotFile == "s.png" &&
                    o.locale->language() == QLocale::German && o.dataDir == "/d";
         }},
        {{"--help"}, Outcome::Print, "Menu, F1", nullptr},
        {{"--version"}, Outcome::Print, "pedometer ", nullptr},
        {{"--list-screens"}, Outcome::Print, "history-day\n", nullptr},
        {{"--no-such-option"}, Outcome::Fail, "no-such-option", nullptr},
        {{"file.csv"}, Outcome::Fail, "not \"file.csv\"", nullptr},
        {{"--sensor", "gps"}, Outcome::Fail, "--sensor must be", nullptr},
        {{"--detector", "neural"}, Outcome::Fail, "--detector must be", nullptr},
        {{"--locale", "xx_YY"}, Outcome::Fail, "\"xx_YY\" is not a locale name", nullptr},
        {{"--quit-after", "soon"}, Outcome::Fail, "--quit-after needs", nullptr},
        {{"--quit-after", "-1"}, Outcome::Fail, "--quit-after needs", nullptr},
        {{"--quit-after-replay"}, Outcome::Fail, "--quit-after-replay needs --replay", nullptr},
        {{"--open", "nowhere"}, Outcome::Fail, "no screen is called \"nowhere\"", nullptr},
        {{"--day", "2026-13-01"}, Outcome::Fail, "--day needs a date", nullptr},
        {{"--from", "May"}, Outcome::Fail, "--from needs a date", nullptr},
        {{"--to", ""}, Outcome::Fail, "--to needs a date", nullptr},
        {{"--lap", "0"}, Outcome::Fail, "--lap needs a lap number", nullptr},
        {{"--lap", "x"}, Outcome::Fail, "--lap needs a lap number", nullptr},
        {{"--keep-counting-screen-off", "maybe"}, Outcome::Fail, "must be on or off", nullptr},
        {{"--size", "200x100"}, Outcome::Fail, "--size needs WIDTHxHEIGHT", nullptr},
        {{"--size", "400x700", "--check-layout"}, Outcome::Run, nullptr,
         [](const LaunchOptions& o) { return o.size == QSize(400, 700) && o.checkLayout; }},
    };
    for (const auto& c : cases) {
        const std::string name = c.args.join(' ').toStdString();
        LaunchOptions options;
        QString message;
        EXPECT_EQ(LaunchOptions::Parse(QStringList{"pedometer"} + c.args, &options, &message),
                  c.outcome)
            << name << ": " << message.toStdString();
        if (c.says != nullptr) {
            EXPECT_TRUE(message.contains(QLatin1String(c.says))) << name << ": "
                                                                  << message.toStdString();
        }
        if (c.holds != nullptr) {
            EXPECT_TRUE(c.holds(options)) << name;
        }
    }
}

// main() turns the outcomes into statuses; a failure found only while running (the
// screenshot cannot be saved) still fails the run.
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
        {{"--locale", "xx_YY"}, 2, "\"xx_YY\" is not a locale name"},
        {{"--help"}, 0, "Menu, F1"},
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
