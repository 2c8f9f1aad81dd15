// The application's command line: requests it cannot carry out end with a message and a
// non-zero status instead of being ignored.
#include <gtest/gtest.h>

#include <QProcess>

#include "TestData.h"

namespace {

TEST(CommandLineTest, ImpossibleRequestsSayWhatIsWrongAndFail) {
    const auto dir = testdata::MakeTempDir();
    const struct {
        QStringList args;
        int status;
        const char* says;  // on standard output or error
    } cases[] = {
        {{"--screenshot", dir->path() + "/missing/shot.png", "--quit-after", "0"},
         1,
         "cannot save the screenshot"},
        {{"--quit-after-replay", "--quit-after", "0"}, 2, "--quit-after-replay needs --replay"},
        {{"--locale", "xx_YY", "--quit-after", "0"}, 2, "\"xx_YY\" is not a locale name"},
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
