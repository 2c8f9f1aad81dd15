#pragma once

#include <QObject>
#include <QString>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>

#include "AccelerationRecording.h"
#include "PolledAccelerometerSource.h"
#include "ReplayCursor.h"

// Plays a recorded trace back as if it came from the accelerometer, following the
// 30 ms tick rule of ReplayCursor.
//
// Two ways to play:
// - Feed() pushes the whole recording through a listener on the calling thread as fast
//   as it can take it, optionally telling an observer each sample's recording time
//   first (a headless replay moves its virtual clock there before the sample lands);
//   the ticks without a new sample reach the listener as OnTickWithoutSample.
// - Start() plays it at the recording's own pace on a sensor thread, like a live
//   sensor, once or in a loop; Finished() is emitted when a single pass is over.
class CsvReplaySource final : public QObject, public PolledAccelerometerSource {
    Q_OBJECT
public:
    using TickObserver = std::function<void(const ReplayTick& tick)>;

    explicit CsvReplaySource(std::shared_ptr<const AccelerationRecording> recording,
                             QObject* parent = nullptr);
    ~CsvReplaySource() override;

    // Reads a recording file; null with the reader's message on a malformed file.
    static std::unique_ptr<CsvReplaySource> FromFile(const QString& path, QString* error);

    const AccelerationRecording& Recording() const { return *recording_; }

    // Real-time play starts over at the end instead of finishing. Set before Start().
    void SetLooping(bool looping) { looping_ = looping; }
    bool IsLooping() const { return looping_; }

    // Plays everything at once on this thread; returns the samples delivered. Not while
    // started.
    qint64 Feed(AccelerometerListener& listener, const TickObserver& beforeEach = {}) const;

    bool IsAvailable() const override { return !recording_->IsEmpty(); }

Q_SIGNALS:
    // A single pass of real-time play reached the end (emitted on the sensor thread).
    void Finished();

protected:
    bool OpenDevice() override;
    PollResult Poll(AccelerationSample& sample) override;
    void OnFinished() override;

private:
    std::shared_ptr<const AccelerationRecording> recording_;
    bool looping_ = false;
    std::optional<ReplayCursor> cursor_;  // real-time play, sensor thread only
};
