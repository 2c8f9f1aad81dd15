#include "ReplayCursor.h"

#include <gtest/gtest.h>

#include <QThread>
#include <atomic>
#include <memory>
#include <vector>

#include "CsvReplaySource.h"
#include "SampleLog.h"
#include "TestData.h"

namespace {

constexpr qint64 kMs = 1'000'000;

// A recording of (milliseconds, x) pairs; y and z stay fixed.
AccelerationRecording recordingOf(const std::vector<std::pair<qint64, float>>& samples) {
    AccelerationRecording r;
    for (const auto& [ms, x] : samples) r.Append(ms * kMs, {x, 0.0f, 1.0f});
    return r;
}

// The cases of tests/data/replay-ticks.tsv: each fresh tick's time, its sample's time and x.
TEST(ReplayCursorTest, EachTickTakesTheLatestSampleAtOrBeforeIt) {
    for (const QByteArrayList& c : testdata::Table("replay-ticks.tsv")) {
        std::vector<std::pair<qint64, float>> samples;
        for (const QByteArray& s : c.value(1).split(' ')) {
            if (s.contains(':')) samples.push_back({s.split(':')[0].toLongLong(), s.split(':')[1].toFloat()});
        }
        const AccelerationRecording recording = recordingOf(samples);  // the cursor keeps a reference
        ReplayCursor cursor(recording);
        ReplayTick t;
        QByteArrayList got;
        while (cursor.NextSample(t)) {
            got << QByteArray::number(t.tickNs / kMs) + '/' + QByteArray::number(t.sampleTimeNs / kMs) +
                       '/' + QByteArray::number(t.sample.x);
        }
        EXPECT_EQ(got.join(' '), c.value(2)) << c[0].constData();
    }
}

TEST(ReplayCursorTest, TicksRunUpToAndIncludingTheLastSample) {
    // The 90 ms tick reuses the 60 ms sample and delivers nothing; the last sample
    // falls between ticks and is never reached.
    const auto r = recordingOf({{1000, 1}, {1060, 2}, {1100, 3}});
    ReplayCursor cursor(r);
    ReplayTick tick;
    std::vector<std::pair<qint64, bool>> ticks;
    while (cursor.NextTick(tick)) ticks.push_back({tick.tickNs / kMs, tick.fresh});
    EXPECT_EQ(ticks, (std::vector<std::pair<qint64, bool>>{
                         {0, true}, {30, false}, {60, true}, {90, false}}));
    cursor.Rewind();  // starts over
    ASSERT_TRUE(cursor.NextSample(tick));
    EXPECT_EQ(std::pair(tick.tickNs, tick.sample.x), std::pair(qint64{0}, 1.0f));
}

TEST(CsvReplaySourceTest, FeedDeliversEveryFreshTickWithItsTimes) {
    auto r = std::make_shared<AccelerationRecording>(
        recordingOf({{0, 1}, {20, 1}, {40, 2}, {70, 3}, {100, 3}}));
    const CsvReplaySource replay(r);
    SampleLog collector;
    std::vector<qint64> tickMs;
    EXPECT_EQ(
        replay.Feed(collector, [&](const ReplayTick& t) { tickMs.push_back(t.tickNs / kMs); }), 3);
    EXPECT_EQ(collector.Xs(), (std::vector<float>{1, 2, 3}));
    EXPECT_EQ(tickMs, (std::vector<qint64>{0, 60, 90}));
}

// Played in real time the source delivers the same samples on its own thread and says when
// it is done; looping, it starts over until stopped, and nothing arrives once Stop returned.
TEST(CsvReplaySourceTest, RealTimePlayDeliversTheSameSamplesOnTheSensorThreadOrLoops) {
    auto r = std::make_shared<AccelerationRecording>();
    for (int i = 0; i < 8; ++i) r->Append(i * 30 * kMs, {static_cast<float>(i % 3), 0.0f, 1.0f});
    CsvReplaySource replay(r);
    SampleLog fast;
    replay.Feed(fast);
    std::atomic<bool> finished{false};
    QObject::connect(&replay, &CsvReplaySource::Finished, [&] { finished = true; });
    ASSERT_TRUE(replay.IsAvailable());
    for (const bool looping : {false, true}) {
        auto ownedLive = std::make_unique<SampleLog>();  // outlives the source's thread
        SampleLog& live = *ownedLive;
        finished = false;
        replay.SetLooping(looping);
        replay.Start(&live);
        ASSERT_TRUE(looping ? live.WaitFor(20) : SpinUntil([&] { return finished.load(); }));
        replay.Stop();
        EXPECT_FALSE(replay.IsRunning());
        const std::vector<float> xs = live.Xs();
        if (!looping) {
            EXPECT_EQ(xs, fast.Xs());
        }
        for (std::size_t i = 0; i < xs.size(); ++i) EXPECT_EQ(xs[i], fast.Xs()[i % 8]) << i;
        EXPECT_TRUE(live.OffThread());
        QThread::msleep(looping ? 100 : 0);
        EXPECT_EQ(live.Count(), xs.size()) << "a sample arrived after Stop";
    }
}

TEST(CsvReplaySourceTest, BadFileGivesNoSourceAndTheReadersMessage) {
    const auto dir = testdata::MakeTempDir();
    const QString path = dir->filePath(QStringLiteral("bad.csv"));
    ASSERT_TRUE(testdata::WriteFile(path, "Time (s),Acceleration x (g)\n0,1\n"));
    QString error;
    EXPECT_EQ(CsvReplaySource::FromFile(path, &error), nullptr);
    EXPECT_TRUE(error.contains(QStringLiteral("bad.csv: line 1: no column for acceleration y")))
        << error.toStdString();
    EXPECT_FALSE(CsvReplaySource(std::make_shared<AccelerationRecording>()).IsAvailable());
}

}  // namespace
