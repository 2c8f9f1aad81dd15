// The adaptive detector: nothing counted when the phone is not walking, every step of a
// clean gait counted, and the hand-over between detectors while counting.
#include <gtest/gtest.h>

#include <QDir>
#include <QMap>
#include <cmath>
#include <memory>

#include "AccelerationCsvReader.h"
#include "AccelerationRecording.h"
#include "AccelerometerSource.h"
#include "AdaptiveStepDetector.h"
#include "Body.h"
#include "GaitClassifier.h"
#include "QuorPedometer.h"
#include "RecordingStepCounter.h"
#include "StepReceiver.h"
#include "TestData.h"

namespace {

constexpr double kPi = 3.14159265358979323846;

// A walk sampled every 30 ms: `lead` seconds lying still, then `steps` footfalls at
// `cadence` per second (a swell of `amplitude` g with a second harmonic, as a footfall
// has; the last `missing` of every `every` do not show), then two seconds still. The phone
// is tilted, so gravity is spread over x, y, z.
template <typename Feed>
void cleanGait(double cadence, double amplitude, int steps, double lead, Feed feed,
               int missing = 0, int every = 4) {
    const double walk = steps / cadence;
    for (double t = 0.0; t < lead + walk + 2.0; t += 0.030) {
        double m = 1.0;
        if (t >= lead && t < lead + walk && int(cadence * (t - lead)) % every < every - missing) {
            const double phase = 2 * kPi * cadence * (t - lead);
            m += amplitude * (0.5 - 0.5 * std::cos(phase) + 0.3 * std::sin(2 * phase));
        }
        feed(static_cast<float>(0.36 * m), static_cast<float>(0.48 * m),
             static_cast<float>(0.8 * m));
    }
}

// Every addStep call, whatever its gait, so that a step with a bad gait shows too.
struct Steps final : StepReceiver {
    void addStep(int gait) override { ++(gait >= 1 && gait <= 3 ? byGait[gait] : byGait[0]); }
    int Total() const { return byGait[0] + byGait[1] + byGait[2] + byGait[3]; }
    int byGait[4] = {};  // [0]: steps with no valid gait
};

// Sixty footfalls of a clean gait after three seconds still.
Steps countWith(DetectorKind kind, double cadence, double amplitude, int missing, int every = 4) {
    QuorPedometer detector(nullptr, kind);
    Steps counted;
    detector.statistics = &counted;
    detector.startUpdating();
    cleanGait(
        cadence, amplitude, 60, 3.0,
        [&](float x, float y, float z) { detector.OnDataReceived(x, y, z); }, missing, every);
    return counted;
}

TEST(AdaptiveStepDetectorTest, NotWalkingCountsAtMostFiveStepsAMinute) {
    Body::GetInstance().clear();
    const QDir folder(QStringLiteral(PEDOMETER_SOURCE_DIR "/tests/data/not-walking"));
    const QStringList cases = {"table.csv", "table-knock.csv", "car.csv", "typing.csv",
                               "pickup.csv"};
    for (const QString& name : cases) {
        AccelerationRecording recording;
        QString error;
        ASSERT_TRUE(AccelerationCsvReader::ReadFile(folder.filePath(name), &recording, &error))
            << error.toStdString();
        const int steps = RecordingStepCounter::Count(recording, DetectorKind::Adaptive).Steps();
        const double minutes = static_cast<double>(recording.DurationNs()) / 60e9;
        EXPECT_LE(steps, 5.0 * minutes) << name.toStdString();
    }
}

// Every footfall counts, slow or fast, gentle or hard, and takes the gait its cadence
// and swing make: walking up to 140 steps a minute, and a brisk but gentle gait, stay
// walks. The first footfalls of a slow walk come too late for the 1.5-second decision
// once three confirm the walk.
TEST(AdaptiveStepDetectorTest, CleanGaitIsCountedStepForStepWithItsGait) {
    Body::GetInstance().clear();
    for (const QByteArrayList& c : testdata::Table("clean-gaits.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        const Steps adaptive = countWith(DetectorKind::Adaptive, c[0].toDouble(), c[1].toDouble(),
                                         c.value(4).toInt(), c.value(5, "4").toInt());
        EXPECT_EQ(adaptive.Total(), c[2].toInt());
        EXPECT_EQ(adaptive.byGait[c[3].toInt()], c[2].toInt());
    }
}

// One jolt, here the zero a driver may read before its first conversion, is forgotten once
// no footfall came for six seconds: it does not hold the steps after it below its share.
TEST(AdaptiveStepDetectorTest, AJoltIsForgottenAfterSixSecondsWithoutAStep) {
    AdaptiveStepDetector detector;
    int steps = detector.OnSample(0, 0, 0);
    cleanGait(2.0, 0.5, 60, 3.0, [&](float x, float y, float z) { steps += detector.OnSample(x, y, z); });
    EXPECT_EQ(steps, 54);
}

// The gait decision's bounds: cadence (steps a minute) first, then the swing (g).
TEST(AdaptiveStepDetectorTest, GaitFollowsCadenceAndIntensity) {
    for (const QByteArrayList& c : testdata::Table("gait-bounds.tsv")) {
        EXPECT_EQ(GaitClassifier::Classify(c[0].toFloat(), c[1].toFloat()), c[2].toInt())
            << c.join(' ').toStdString();
    }
}

// Cadence and swing average the latest steps only (a ring of kSteps), from the second
// footfall after a restart; two footfalls on one tick have no cadence.
TEST(AdaptiveStepDetectorTest, GaitAveragesTheLatestStepsSinceARestart) {
    const struct {
        int64_t tick;  // -1: a restart
        float swing, cadence, intensity;
    } steps[] = {{0, 1, 0, 0},           {20, 2, 100, 2}, {40, 4, 100, 3},
                 {60, 1, 100, 7 / 3.0f}, {80, 1, 100, 2}, {100, 1, 100, 1.75f},
                 {-1, 0, 0, 0},          {200, 1, 0, 0},  {200, 3, 0, 3}};
    GaitClassifier gait;
    for (const auto& s : steps) {
        if (s.tick < 0) {
            gait.Restart();
            continue;
        }
        gait.OnStep(s.tick, s.swing);
        EXPECT_FLOAT_EQ(gait.Cadence(), s.cadence) << s.tick;
        EXPECT_FLOAT_EQ(gait.Intensity(), s.intensity) << s.tick;
    }
}

// Switching at any point of a step, either way and back again, counts what the first
// detector would have counted alone: no step is lost or counted twice.
TEST(AdaptiveStepDetectorTest, SwitchingWhileWalkingLosesAndDoublesNoStep) {
    Body::GetInstance().clear();
    for (const DetectorKind first : {DetectorKind::Classic, DetectorKind::Adaptive}) {
        const DetectorKind other =
            first == DetectorKind::Classic ? DetectorKind::Adaptive : DetectorKind::Classic;
        const int alone = countWith(first, 2.0, 0.6, 0).Total();
        ASSERT_GE(alone, 59);
        for (int at = 300; at < 300 + 17; ++at) {
            for (const int back : {0, 40, 400}) {  // never, within the hand-over, later
                QuorPedometer detector(nullptr, first);
                Steps tally;
                detector.statistics = &tally;
                detector.startUpdating();
                int sample = 0;
                cleanGait(2.0, 0.6, 60, 3.0, [&](float x, float y, float z) {
                    if (sample == at) detector.SelectDetector(other);
                    if (back > 0 && sample == at + back) detector.SelectDetector(first);
                    ++sample;
                    detector.OnDataReceived(x, y, z);
                });
                EXPECT_EQ(detector.GetActiveDetector(), back == 0 ? other : first);
                EXPECT_EQ(tally.Total(), alone) << "from " << static_cast<int>(first)
                                                << " at sample " << at << ", back after " << back;
            }
        }
    }
}

// Parameters outside their working range are brought into it (the ring buffers and
// step lists have fixed sizes) and reported, so the tuning tool can reject the set;
// values at the edge of the range stay and are not reported.
TEST(AdaptiveStepDetectorTest, ParametersOutsideTheirRangeAreClampedAndReported) {
    using P = AdaptiveStepDetector::Parameters;
    const QMap<QByteArray, int P::*> counts{{"smoothingSamples", &P::smoothingSamples},
                                            {"confirmSteps", &P::confirmSteps},
                                            {"minStepSamples", &P::minStepSamples},
                                            {"maxMergeSamples", &P::maxMergeSamples}};
    const QMap<QByteArray, float P::*> shares{
        {"relativeThreshold", &P::relativeThreshold}, {"mergeShare", &P::mergeShare},
        {"noiseFloor", &P::noiseFloor}, {"riseRate", &P::riseRate},
        {"baselineRate", &P::baselineRate}};
    for (const QByteArrayList& c : testdata::Table("adaptive-clamps.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        P p;
        if (counts.contains(c[0]))
            p.*counts[c[0]] = c[1].toInt();
        else
            p.*shares[c[0]] = c[1] == "nan" ? NAN : c[1].toFloat();
        EXPECT_EQ(AdaptiveStepDetector::Sanitise(p), c[1] == c[2]);
        EXPECT_FLOAT_EQ(counts.contains(c[0]) ? float(p.*counts[c[0]]) : p.*shares[c[0]],
                        c[2].toFloat());
    }
}

}  // namespace
