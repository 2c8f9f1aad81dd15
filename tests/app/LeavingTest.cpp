// Nothing counted is lost on the way out: a SIGTERM in the middle of a replay (as at a
// logout) stores the steps of the unfinished interval too, before the process leaves.
#include <gtest/gtest.h>

#include <QProcess>
#include <QRegularExpression>

#include "DAOLap.h"
#include "FreshProfile.h"
#include "PedometerDBManager.h"
#include "../platform/PrivateBus.h"

namespace {

TEST(LeavingTest, TerminatedMidReplayItStoresExactlyTheCountedSteps) {
    FreshProfile profile;  // the child's data folder; read here only after it ended
    QProcess app;
    app.start(QStringLiteral(PEDOMETER_APP_PATH),
              {"--data-dir", profile.Path(), "--silent", "--autostart", "--replay",
               QStringLiteral(PEDOMETER_SOURCE_DIR "/res/walks/demo-walk.csv")});
    ASSERT_TRUE(app.waitForStarted(10000));
    QByteArray output;
    // Some intervals stored and steps counted since: then half-way through an interval.
    ASSERT_TRUE(SpinUntil(
        [&] {
            output += app.readAllStandardOutput();
            return output.count("interval lap=") >= 2;
        },
        30000));
    SpinUntil([] { return false; }, 2500);
    app.terminate();  // SIGTERM
    ASSERT_TRUE(app.waitForFinished(10000));
    output += app.readAllStandardOutput();
    EXPECT_EQ(app.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(app.exitCode(), 0);

    const QRegularExpressionMatch counted =
        QRegularExpression(QStringLiteral("counted lap=(\\d+) steps=(\\d+)"))
            .match(QString::fromUtf8(output));
    ASSERT_TRUE(counted.hasMatch()) << output.toStdString();
    const std::unique_ptr<DAOLap> lap =
        PedometerDBManager::GetInstance().GetLap(counted.captured(1).toInt());
    ASSERT_TRUE(lap);
    int stored = 0;
    for (const auto& minute : lap->minutes) stored += minute->steps;
    EXPECT_GT(stored, 0);
    EXPECT_EQ(stored, counted.captured(2).toInt()) << output.toStdString();
}

}  // namespace
