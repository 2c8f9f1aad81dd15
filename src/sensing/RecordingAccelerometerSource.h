#pragma once

#include <QElapsedTimer>
#include <QString>
#include <memory>

#include "AccelerationRecorder.h"
#include "AccelerometerListener.h"
#include "AccelerometerSource.h"

// Passes another source's samples on unchanged and writes each one to a recording
// file as it goes (the application's --record option). The file is the same CSV
// layout the replay reads, stamped with the time each sample arrived.
class RecordingAccelerometerSource final : public AccelerometerSource,
                                           private AccelerometerListener {
public:
    RecordingAccelerometerSource(std::unique_ptr<AccelerometerSource> inner, QString path);
    ~RecordingAccelerometerSource() override;

    // False with a message when the file cannot be created.
    bool Open(QString* error);

    bool IsAvailable() const override { return inner_->IsAvailable(); }
    void Start(AccelerometerListener* listener) override;
    void Stop() override;
    bool IsRunning() const override { return inner_->IsRunning(); }
    void ReopenAfterResume() override { inner_->ReopenAfterResume(); }

private:
    void OnDataReceived(float x, float y, float z) override;
    void OnTickWithoutSample() override;

    std::unique_ptr<AccelerometerSource> inner_;
    QString path_;
    AccelerationRecorder recorder_;  // sensor thread while running
    QElapsedTimer clock_;
    AccelerometerListener* listener_ = nullptr;
};
