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

AccelerationRecording Read(const QString& walks, const QByteArray& name) {
    QString path = QDir(walks).filePath("walker-" + name + ".csv");
    if (!QFile::exists(path)) path = QDir(walks).filePath("../walks-more/walker-" + name + ".csv");
    AccelerationRecording recording;
    QString error;
    EXPECT_TRUE(AccelerationCsvReader::ReadFile(path, &recording, &error)) << error.toStdString();
    return recording;
}

// Each detector's exact count (and the classic one's gait split) on each walk of
// tests/data/walk-counts.tsv, so that any change of its behaviour shows; the classic
// detector's counts stay within 15 % of the counts taken by hand, and the adaptive one's
// totals with the walks resampled to the rates phone sensors offer are known too, nearly
// every step classed as a walk.
TEST(RecordedWalksTest, EachDetectorCountsEachWalkAsBefore) {
    PEDOMETER_WALKS_DIR(walks);
    QFile index(QDir(walks).filePath(QStringLiteral("ground_truth.csv")));
    ASSERT_TRUE(index.open(QIODevice::ReadOnly | QIODevice::Text));
    QHash<QByteArray, int> truthOf;
    while (!index.atEnd()) {
        const QByteArrayList row = index.readLine().trimmed().split(',');
        if (row.size() == 6) truthOf[row[0]] = row[5].toInt();
    }
    const struct {
        double hz;  // 0: as recorded
        int steps, walk;
    } rates[] = {{0, 13722, 13721}, {50, 13713, 13712}, {25, 13707, 13682}, {12.5, 13701, 13699}};
    int steps[4] = {}, walk[4] = {}, counted = 0, truth = 0;
    Body::GetInstance().clear();  // the default profile
    for (const QByteArrayList& row : testdata::Table("walk-counts.tsv")) {
        const AccelerationRecording recording = Read(walks, row[0]);
        EXPECT_EQ(RecordingStepCounter::Count(recording, DetectorKind::Adaptive).Steps(),
                  row[1].toInt())
            << row[0].constData();
        for (int r = 0; r < 4; ++r) {
            const RecordingStepCounter::Result result =
                RecordingStepCounter::Count(recording.Resampled(rates[r].hz), DetectorKind::Adaptive);
            steps[r] += result.Steps();
            walk[r] += result.walk;
        }
        if (row.size() < 5) continue;
        const auto classic = RecordingStepCounter::Count(recording, DetectorKind::Classic);
        EXPECT_EQ(QByteArrayList({QByteArray::number(classic.walk), QByteArray::number(classic.jog),
                                  QByteArray::number(classic.run)}),
                  row.mid(2))
            << row[0].constData();
        counted += classic.Steps();
        truth += truthOf.value("walker-" + row[0] + ".csv");
    }
    EXPECT_LT(std::abs(counted - truth) * 100, truth * 15) << counted << " of " << truth;
    for (int r = 0; r < 4; ++r) {
        EXPECT_EQ(steps[r], rates[r].steps) << rates[r].hz << " Hz";
        EXPECT_EQ(walk[r], rates[r].walk) << rates[r].hz << " Hz";
        EXPECT_GE(walk[r] * 100, steps[r] * 97) << rates[r].hz << " Hz";
    }
}

}  // namespace
