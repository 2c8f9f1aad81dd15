#include "IioStepCounterSource.h"

#include <QFileInfo>
#include <QtGlobal>
#include <chrono>
#include <condition_variable>
#include <mutex>

#include "AccelerometerListener.h"
#include "IioStepCounter.h"

namespace {
constexpr int kStopWaitMs = 100;
}

// Shared by the source and its thread, so a thread stuck in a read can finish alone.
struct IioStepCounterSource::State {
    std::mutex mutex;
    std::condition_variable changed;
    bool stopped = false;  // no delivery after this
    bool readNow = false;  // a resume: read at once
    bool finished = false;
    AccelerometerListener* listener = nullptr;
};

IioStepCounterSource::IioStepCounterSource(QString devicesRoot) : root_(std::move(devicesRoot)) {}

IioStepCounterSource::~IioStepCounterSource() {
    Stop();
}

bool IioStepCounterSource::IsAvailable() const {
    return QFileInfo(root_).isDir();
}

void IioStepCounterSource::Start(AccelerometerListener* listener) {
    if (listener == nullptr || IsRunning()) return;
    state_ = std::make_shared<State>();
    state_->listener = listener;
    thread_ = std::thread([state = state_, root = root_] {
        std::unique_ptr<IioStepCounter> counter;
        QString said;
        std::unique_lock lock(state->mutex);
        while (!state->stopped) {
            lock.unlock();
            if (!counter) {
                const QString device = IioStepCounter::FindDevice(root);
                QString why;
                if (!device.isEmpty()) counter = std::make_unique<IioStepCounter>(device);
                if (counter && !counter->Enable(&why)) {
                    if (why != said) qWarning("The step counter cannot be used: %s", qPrintable(why));
                    said = why;
                    counter.reset();
                }
            }
            const int steps = counter ? counter->Read() : 0;
            if (steps < 0) counter.reset();  // gone: looked for again at the next read
            lock.lock();
            if (steps > 0 && !state->stopped) state->listener->OnStepsCounted(steps);
            state->changed.wait_for(lock, std::chrono::milliseconds(kReadIntervalMs),
                                    [&] { return state->stopped || state->readNow; });
            state->readNow = false;
        }
        state->finished = true;
        state->changed.notify_all();
    });
}

void IioStepCounterSource::Stop() {
    if (!state_) return;
    std::unique_lock lock(state_->mutex);
    state_->stopped = true;
    state_->changed.notify_all();
    const bool finished = state_->changed.wait_for(lock, std::chrono::milliseconds(kStopWaitMs),
                                                   [this] { return state_->finished; });
    lock.unlock();
    if (finished)
        thread_.join();
    else
        thread_.detach();  // still in a read; it delivers nothing more and ends by itself
    state_.reset();
}

void IioStepCounterSource::ReopenAfterResume() {
    if (!state_) return;
    std::lock_guard lock(state_->mutex);
    state_->readNow = true;
    state_->changed.notify_all();
}
