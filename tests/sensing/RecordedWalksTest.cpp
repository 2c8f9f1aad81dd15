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

// The classic detector's exact count and gait split on each walk, so that any change of its
// behaviour shows; together they stay within 15 % of the counts taken by hand.
TEST(RecordedWalksTest, ClassicDetectorCountsEachWalkAsBefore) {
    PEDOMETER_WALKS_DIR(walks);
    QFile index(QDir(walks).filePath(QStringLiteral("ground_truth.csv")));
    ASSERT_TRUE(index.open(QIODevice::ReadOnly | QIODevice::Text));
    QHash<QString, int> truthOf;
    while (!index.atEnd()) {
        const QStringList row = QString::fromUtf8(index.readLine()).trimmed().split(',');
        if (row.size() == 6) truthOf[row[0]] = row[5].toInt();
    }
    const struct {
        const char* walk;
        int walk_, jog, run;
    } cases[] = {
        {"a-backpocket-samsung-1", 175, 32, 6}, {"a-frontpocket-samsung-1", 202, 106, 12},
        {"a-inhand-samsung-1", 165, 110, 0},    {"b-armband-samsung-1", 124, 165, 0},
        {"b-neckpouch-samsung-1", 91, 188, 0},  {"b-purse-samsung-1", 70, 221, 0},
        {"c-inhand-nexus-1", 289, 1, 0},        {"c-inhand-pixel-3", 307, 0, 0},
        {"c-inhand-samsung-1", 63, 0, 0},       {"c-swingingarm-pixel-1", 204, 0, 0},
    };
    Body::GetInstance().clear();  // the default profile
    int counted = 0;
    int truth = 0;
    for (const auto& c : cases) {
        const QString name = QStringLiteral("walker-%1.csv").arg(QLatin1String(c.walk));
        AccelerationRecording recording;
        QString error;
        ASSERT_TRUE(AccelerationCsvReader::ReadFile(QDir(walks).filePath(name), &recording, &error))
            << error.toStdString();
        const RecordingStepCounter::Result result =
            RecordingStepCounter::Count(recording, DetectorKind::Classic);
        EXPECT_EQ(std::vector<int>({result.walk, result.jog, result.run}),
                  std::vector<int>({c.walk_, c.jog, c.run}))
            << c.walk;
        counted += result.Steps();
        truth += truthOf.value(name);
    }
    EXPECT_LT(std::abs(counted - truth) * 100, truth * 15) << counted << " of " << truth;
}

// The adaptive detector's count on every recorded walk, so that any change of its
// behaviour shows; and its totals with the walks resampled to the rates phone sensors
// offer, nearly every step classed as a walk.
TEST(RecordedWalksTest, AdaptiveDetectorCountsEachWalkAsBeforeAtEveryRate) {
    PEDOMETER_WALKS_DIR(walks);
    const struct {
        const char* walk;  // walker-NAME.csv, in walks/ or walks-more/
        int steps;
    } cases[] = {
        // clang-format off
        {"a-inhand-samsung-1", 275}, {"a-frontpocket-samsung-1", 313}, {"a-backpocket-samsung-1", 201},
        {"b-purse-samsung-1", 296}, {"b-neckpouch-samsung-1", 279}, {"b-armband-samsung-1", 292},
        {"c-inhand-pixel-3", 321}, {"c-swingingarm-pixel-1", 264}, {"c-inhand-nexus-1", 302},
        {"c-inhand-samsung-1", 251}, {"c-inhand-nexus-2", 302}, {"c-inhand-pixel-carpet-1", 198},
        {"c-inhand-pixel-carpet-2", 207}, {"c-inhand-pixel-carpet-3", 254}, {"c-inhand-pixel-carpet-4", 240},
        {"c-armband-pixel-1", 268}, {"c-armband-pixel-2", 262}, {"c-backpocket-pixel-1", 267},
        {"c-backpocket-pixel-2", 257}, {"c-frontpocket-pixel-1", 272}, {"c-frontpocket-pixel-2", 269},
        {"c-inhand-pixel-1", 290}, {"c-inhand-pixel-2", 264}, {"c-inhand-pixel-4", 319},
        {"c-neckpouch-pixel-1", 254}, {"c-neckpouch-pixel-2", 277}, {"c-purse-pixel-1", 370},
        {"c-purse-pixel-2", 371}, {"c-swingingarm-pixel-2", 257}, {"b-armband-samsung-2", 258},
        {"b-backpocket-samsung-1", 321}, {"b-backpocket-samsung-2", 294}, {"b-frontpocket-samsung-1", 274},
        {"b-frontpocket-samsung-2", 328}, {"b-inhand-samsung-1", 360}, {"b-inhand-samsung-2", 300},
        {"b-neckpouch-samsung-2", 283}, {"b-purse-samsung-2", 268}, {"a-armband-samsung-1", 313},
        {"a-armband-samsung-2", 303}, {"a-backpocket-samsung-2", 280}, {"a-frontpocket-samsung-2", 301},
        {"a-inhand-samsung-2", 328}, {"a-neckpouch-samsung-1", 304}, {"a-neckpouch-samsung-2", 309},
        {"a-purse-samsung-1", 305}, {"a-purse-samsung-2", 308}, {"c-inhand-samsung-2", 259},
        // clang-format on
    };
    const struct {
        double hz;  // 0: as recorded
        int steps, walk;
    } rates[] = {{0, 13688, 13684}, {50, 13702, 13701}, {25, 13678, 13674}, {12.5, 13634, 13627}};
    int steps[4] = {};
    int walk[4] = {};
    Body::GetInstance().clear();
    for (const auto& c : cases) {
        const QString name = QStringLiteral("walker-%1.csv").arg(QLatin1String(c.walk));
        QString path = QDir(walks).filePath(name);
        if (!QFile::exists(path))
            path = QDir(walks).filePath(QStringLiteral("../walks-more/") + name);
        AccelerationRecording recording;
        QString error;
        ASSERT_TRUE(AccelerationCsvReader::ReadFile(path, &recording, &error))
            << error.toStdString();
        EXPECT_EQ(RecordingStepCounter::Count(recording, DetectorKind::Adaptive).Steps(), c.steps)
            << c.walk;
        for (int r = 0; r < 4; ++r) {
            const RecordingStepCounter::Result result =
                RecordingStepCounter::Count(recording.Resampled(rates[r].hz), DetectorKind::Adaptive);
            steps[r] += result.Steps();
            walk[r] += result.walk;
        }
    }
    for (int r = 0; r < 4; ++r) {
        EXPECT_EQ(steps[r], rates[r].steps) << rates[r].hz << " Hz";
        EXPECT_EQ(walk[r], rates[r].walk) << rates[r].hz << " Hz";
        EXPECT_GE(walk[r] * 100, steps[r] * 97) << rates[r].hz << " Hz";
    }
}

}  // namespace
