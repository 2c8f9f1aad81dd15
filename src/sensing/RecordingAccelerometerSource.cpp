#include "RecordingAccelerometerSource.h"

#include <QDebug>

RecordingAccelerometerSource::RecordingAccelerometerSource(
    std::unique_ptr<AccelerometerSource> inner, QString path)
    : inner_(std::move(inner)), path_(std::move(path)) {}

RecordingAccelerometerSource::~RecordingAccelerometerSource() {
    Stop();
    QString error;
    if (recorder_.IsOpen() && !recorder_.Close(&error)) qWarning().noquote() << error;
}

bool RecordingAccelerometerSource::Open(QString* error) {
    return recorder_.Open(path_, error);
}

void RecordingAccelerometerSource::Start(AccelerometerListener* listener) {
    if (inner_->IsRunning()) return;
    listener_ = listener;
    if (!clock_.isValid()) clock_.start();
    inner_->Start(this);
}

// Stop returns only when no delivery is in progress, so the recorder may be flushed
// from the GUI thread afterwards.
void RecordingAccelerometerSource::Stop() {
    inner_->Stop();
}

void RecordingAccelerometerSource::OnDataReceived(float x, float y, float z) {
    if (recorder_.IsOpen()) recorder_.Append(clock_.nsecsElapsed(), x, y, z);
    if (listener_ != nullptr) listener_->OnDataReceived(x, y, z);
}

// A tick without a new reading is not written (the file holds what the sensor gave).
void RecordingAccelerometerSource::OnTickWithoutSample() {
    if (listener_ != nullptr) listener_->OnTickWithoutSample();
}
