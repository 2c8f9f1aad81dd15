#include "RecordingAccelerometerSource.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <vector>

#include "AccelerationCsvReader.h"
#include "AccelerationRecording.h"
#include "SampleLog.h"

namespace {

// Delivers a fixed list of samples synchronously when started.
class ScriptedSource : public AccelerometerSource {
public:
    explicit ScriptedSource(std::vector<AccelerationSample> samples)
        : samples_(std::move(samples)) {}
    bool IsAvailable() const override { return true; }
    void Start(AccelerometerListener* listener) override {
        running_ = true;
        for (const auto& s : samples_) listener->OnDataReceived(s.x, s.y, s.z);
    }
    void Stop() override { running_ = false; }
    bool IsRunning() const override { return running_; }

private:
    std::vector<AccelerationSample> samples_;
    bool running_ = false;
};

TEST(RecordingAccelerometerSourceTest, PassesSamplesOnAndRecordsThemForReplay) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("walk.csv"));
    const std::vector<AccelerationSample> samples{
        {0.1f, 0.2f, 0.98f}, {-0.3f, 0.25f, 1.125f}, {1e-7f, -2.5f, 0.333333f}};
    SampleLog collector;
    {
        RecordingAccelerometerSource source(std::make_unique<ScriptedSource>(samples), path);
        QString error;
        ASSERT_TRUE(source.Open(&error)) << error.toStdString();
        source.Start(&collector);
        source.Stop();
    }
    EXPECT_EQ(collector.Samples(), samples);

    AccelerationRecording recording;
    QString error;
    ASSERT_TRUE(AccelerationCsvReader::ReadFile(path, &recording, &error)) << error.toStdString();
    ASSERT_EQ(recording.Size(), samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) EXPECT_EQ(recording.Sample(i), samples[i]);
}

}  // namespace
