#include "CsvReplaySource.h"

#include "AccelerationCsvReader.h"
#include "AccelerometerListener.h"

CsvReplaySource::CsvReplaySource(std::shared_ptr<const AccelerationRecording> recording,
                                 QObject* parent)
    : QObject(parent),
      recording_(recording ? std::move(recording)
                           : std::make_shared<const AccelerationRecording>()) {}

CsvReplaySource::~CsvReplaySource() {
    Stop();
}

std::unique_ptr<CsvReplaySource> CsvReplaySource::FromFile(const QString& path, QString* error) {
    auto recording = std::make_shared<AccelerationRecording>();
    if (!AccelerationCsvReader::ReadFile(path, recording.get(), error)) return nullptr;
    return std::make_unique<CsvReplaySource>(std::move(recording));
}

qint64 CsvReplaySource::Feed(AccelerometerListener& listener,
                             const TickObserver& beforeEach) const {
    ReplayCursor cursor(*recording_);
    ReplayTick tick;
    qint64 delivered = 0;
    while (cursor.NextTick(tick)) {
        if (!tick.fresh) {
            listener.OnTickWithoutSample();
            continue;
        }
        if (beforeEach) beforeEach(tick);
        listener.OnDataReceived(tick.sample.x, tick.sample.y, tick.sample.z);
        ++delivered;
    }
    return delivered;
}

bool CsvReplaySource::OpenDevice() {
    cursor_.emplace(*recording_);
    return true;
}

CsvReplaySource::PollResult CsvReplaySource::Poll(AccelerationSample& sample) {
    ReplayTick tick;
    if (!cursor_->NextTick(tick)) {
        if (!looping_) return PollResult::Finished;
        cursor_->Rewind();
        if (!cursor_->NextTick(tick)) return PollResult::Finished;
    }
    sample = tick.sample;
    return PollResult::Sample;
}

void CsvReplaySource::OnFinished() {
    Q_EMIT Finished();
}
