// The step counter on real recordings of people walking, against their true counts.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "AccelerationCsvReader.h"
#include "AccelerationRecording.h"
#include "Body.h"
#include "RecordingStepCounter.h"
#include "TestData.h"

namespace {

TEST(RecordedWalksTest, TotalCountIsCloseToTheTruthAndRunStepsAreRare) {
    const QString walks = testdata::WalksDir();
    if (walks.isEmpty()) GTEST_SKIP() << "no walk recordings beside the checkout";
    QFile index(QDir(walks).filePath(QStringLiteral("ground_truth.csv")));
    ASSERT_TRUE(index.open(QIODevice::ReadOnly | QIODevice::Text));
    const QStringList header =
        QString::fromUtf8(index.readLine()).trimmed().split(QLatin1Char(','));
    const qsizetype fileColumn = header.indexOf(QStringLiteral("file"));
    const qsizetype truthColumn = header.indexOf(QStringLiteral("ground_truth_steps"));
    ASSERT_GE(fileColumn, 0);
    ASSERT_GE(truthColumn, 0);

    Body::GetInstance().clear();  // the default profile
    long long counted = 0;
    long long truth = 0;
    long long run = 0;
    int recordings = 0;
    while (!index.atEnd()) {
        const QStringList row =
            QString::fromUtf8(index.readLine()).trimmed().split(QLatin1Char(','));
        if (row.size() <= std::max(fileColumn, truthColumn)) continue;
        AccelerationRecording recording;
        QString error;
        ASSERT_TRUE(AccelerationCsvReader::ReadFile(QDir(walks).filePath(row[fileColumn]),
                                                    &recording, &error))
            << error.toStdString();
        const RecordingStepCounter::Result result = RecordingStepCounter::Count(recording);
        EXPECT_GT(result.Steps(), 0) << row[fileColumn].toStdString();
        counted += result.Steps();
        run += result.run;
        truth += row[truthColumn].toInt();
        ++recordings;
    }
    ASSERT_GT(recordings, 0);
    EXPECT_LT(run * 100, counted * 5) << run << " run steps of " << counted;
    EXPECT_LT(std::abs(counted - truth) * 100, truth * 15)
        << "counted " << counted << " steps, truth " << truth;
}

}  // namespace
