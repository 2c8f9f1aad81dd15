#include "DeferredAccelerometerSource.h"

#include "NullAccelerometerSource.h"

DeferredAccelerometerSource::DeferredAccelerometerSource(Maker make) : make_(std::move(make)) {}

DeferredAccelerometerSource::~DeferredAccelerometerSource() = default;

AccelerometerSource& DeferredAccelerometerSource::Realize() const {
    std::lock_guard lock(mutex_);
    if (!source_) {
        source_ = make_ ? make_() : nullptr;
        if (!source_) source_ = std::make_unique<NullAccelerometerSource>();
        make_ = nullptr;
        if (windowShown_ >= 0) source_->SetWindowShown(windowShown_ == 1);
    }
    return *source_;
}

AccelerometerSource* DeferredAccelerometerSource::Made() const {
    std::lock_guard lock(mutex_);
    return source_.get();
}

bool DeferredAccelerometerSource::IsAvailable() const {
    return Realize().IsAvailable();
}

void DeferredAccelerometerSource::Start(AccelerometerListener* listener) {
    Realize().Start(listener);
}

void DeferredAccelerometerSource::Stop() {
    if (AccelerometerSource* source = Made()) source->Stop();
}

bool DeferredAccelerometerSource::IsRunning() const {
    const AccelerometerSource* source = Made();
    return source != nullptr && source->IsRunning();
}

void DeferredAccelerometerSource::ReopenAfterResume() {
    // A source not made yet opens its device fresh anyway.
    if (AccelerometerSource* source = Made()) source->ReopenAfterResume();
}

void DeferredAccelerometerSource::SetWindowShown(bool shown) {
    std::lock_guard lock(mutex_);
    if (source_) {
        source_->SetWindowShown(shown);
    } else {
        windowShown_ = shown ? 1 : 0;
    }
}
