#include "PolledAccelerometerSource.h"

#include <QEventLoop>
#include <QThread>
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
    thread_.reset(QThread::create([this, listener] { RunOnSensorThread(listener); }));
    thread_->setObjectName(QStringLiteral("sensor"));
    thread_->start(QThread::HighPriority);
}

void PolledAccelerometerSource::Stop() {
    if (!thread_) return;
    // Ends the sensor thread's event loop, even if it has not entered it yet.
    thread_->quit();
    thread_->wait();
    thread_.reset();
}

bool PolledAccelerometerSource::IsRunning() const {
    return thread_ && thread_->isRunning();
}

void PolledAccelerometerSource::RunOnSensorThread(AccelerometerListener* listener) {
    if (!OpenDevice()) return;
    QEventLoop loop;
    bool delivered = false;
    AccelerationSample last;
    bool finished = false;
    const auto pollOnce = [&] {
        AccelerationSample sample;
        switch (Poll(sample)) {
            case PollResult::Finished:
                finished = true;
                loop.quit();
                return;
            case PollResult::NoSample:
                return;
            case PollResult::Sample:
                if (delivered && sample == last) return;
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
    if (!finished) {
        timer.start();
        loop.exec();
        timer.stop();
    }
    CloseDevice();
    if (finished) OnFinished();
}
