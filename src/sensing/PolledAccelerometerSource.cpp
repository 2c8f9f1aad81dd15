#include "PolledAccelerometerSource.h"

#include <QEventLoop>
#include <QTimer>

#include "AccelerometerListener.h"

PolledAccelerometerSource::PolledAccelerometerSource() = default;

PolledAccelerometerSource::~PolledAccelerometerSource() {
    // Subclasses stop first; this only catches a thread that already ended on its own.
    Stop();
}

void PolledAccelerometerSource::Start(AccelerometerListener* listener) {
    if (listener == nullptr || IsRunning()) return;
    Stop();  // joins a thread that finished by itself
    stopRequested_.store(false);
    running_.store(true);
    thread_ = std::thread([this, listener] {
        RunOnSensorThread(listener);
        running_.store(false);
    });
}

void PolledAccelerometerSource::Stop() {
    if (!thread_.joinable()) return;
    stopRequested_.store(true);
    thread_.join();
}

void PolledAccelerometerSource::RunOnSensorThread(AccelerometerListener* listener) {
    if (!OpenDevice()) return;
    QEventLoop loop;
    bool delivered = false;
    AccelerationSample last;
    bool finished = false;
    const auto pollOnce = [&] {
        if (stopRequested_.load()) {
            loop.quit();
            return;
        }
        AccelerationSample sample;
        switch (Poll(sample)) {
            case PollResult::Finished:
                finished = true;
                loop.quit();
                return;
            case PollResult::NoSample:
                if (delivered) listener->OnTickWithoutSample();
                return;
            case PollResult::Sample:
                if (delivered && sample == last) {
                    listener->OnTickWithoutSample();
                    return;
                }
                delivered = true;
                last = sample;
                listener->OnDataReceived(sample.x, sample.y, sample.z);
                return;
        }
    };

    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.setInterval(kIntervalMs);
    QObject::connect(&timer, &QTimer::timeout, &loop, pollOnce);
    pollOnce();
    if (!finished && !stopRequested_.load()) {
        timer.start();
        loop.exec();
        timer.stop();
    }
    CloseDevice();
    if (finished) OnFinished();
}
