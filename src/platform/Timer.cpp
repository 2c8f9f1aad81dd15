#include "Timer.h"

#include <QTimer>

#include "VirtualTime.h"

Timer::Timer(std::function<void()> onExpired) : onExpired_(std::move(onExpired)) {}

Timer::~Timer() {
    Cancel();
    delete qtimer_;
}

void Timer::Start(int ms) {
    Cancel();
    if (VirtualTime::IsEnabled()) {
        VirtualTime::Schedule(this, ms);
        return;
    }
    if (qtimer_ == nullptr) {
        qtimer_ = new QTimer();
        qtimer_->setSingleShot(true);
        qtimer_->setTimerType(Qt::PreciseTimer);
        QObject::connect(qtimer_, &QTimer::timeout, [this] { Fire(); });
    }
    qtimer_->start(ms);
}

void Timer::Cancel() {
    if (virtualPending_) VirtualTime::Unschedule(this);
    if (qtimer_ != nullptr) qtimer_->stop();
}

bool Timer::IsActive() const {
    return virtualPending_ || (qtimer_ != nullptr && qtimer_->isActive());
}

void Timer::Fire() {
    if (onExpired_) onExpired_();
}
