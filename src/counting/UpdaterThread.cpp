#include "UpdaterThread.h"

#include <algorithm>

#include <QRandomGenerator>

#include "Body.h"
#include "Converter.h"
#include "DAOLap.h"
#include "MainFormListener.h"
#include "Metronome.h"
#include "PedometerDBManager.h"
#include "Sygnal.h"

namespace {
constexpr int kIntervalSeconds = 5;
}

UpdaterThread::~UpdaterThread() {
    Stop();
}

void UpdaterThread::Initialize(QuorPedometer* detectorIn, MainFormListener* form) {
    detector = detectorIn;
    mainForm = form;
}

void UpdaterThread::Start() {
    if (thread_.joinable()) return;
    {
        std::lock_guard lock(mutex);
        stopping_ = false;
        running_ = true;
    }
    thread_ = std::thread([this] { Run(); });
}

void UpdaterThread::Stop() {
    if (!thread_.joinable()) return;
    {
        std::lock_guard lock(mutex);
        stopping_ = true;
    }
    wake_.notify_all();
    thread_.join();
}

void UpdaterThread::Post(HandOver handOver) {
    {
        std::lock_guard lock(mutex);
        queue_.push_back(std::move(handOver));
    }
    wake_.notify_one();
}

void UpdaterThread::WaitUntilIdle() {
    std::unique_lock lock(mutex);
    idle_.wait(lock, [this] { return (queue_.empty() && !busy_) || !running_; });
}

bool UpdaterThread::WaitUntilIdleFor(int ms) {
    std::unique_lock lock(mutex);
    return idle_.wait_for(lock, std::chrono::milliseconds(ms),
                          [this] { return (queue_.empty() && !busy_) || !running_; });
}

int UpdaterThread::HandledCount() const {
    std::lock_guard lock(mutex);
    return handled_;
}

void UpdaterThread::Run() {
    std::unique_lock lock(mutex);
    for (;;) {
        wake_.wait(lock, [this] { return !queue_.empty() || stopping_; });
        if (queue_.empty()) break;  // stopping, and everything queued is stored
        HandOver next = std::move(queue_.front());
        queue_.pop_front();
        busy_ = true;
        lock.unlock();

        lapSteps = next.lapSteps;
        intervalSteps = next.intervalSteps;
        intervalDistance = next.intervalDistance;
        lap = std::move(next.lap);
        if (lap) UpdatingFnc();
        lap.reset();

        lock.lock();
        busy_ = false;
        ++handled_;
        idle_.notify_all();
    }
    running_ = false;
    idle_.notify_all();
}

void UpdaterThread::UpdatingFnc() {
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    Metronome::GetInstance().SetData(intervalSteps, intervalDistance);

    // The five-second record's calories: the interval's rate per minute, and the
    // graph's value, that rate raised by a random 0.1 % to 10 %.
    const Body& body = Body::GetInstance();
    const double rate = body.calculateCalories(
        static_cast<float>(Converter::GetAverageSpeedKMH(intervalDistance, kIntervalSeconds)));
    const int noise = QRandomGenerator::global()->bounded(1, 101);

    {
        // The lap's lists and records change only under its lock, so the GUI thread
        // may clear the lap at any moment without pulling a record from under us.
        std::lock_guard records(lap->recordsMutex);
        if (lap->minutes.empty()) {
            auto first = std::make_unique<DAOLapMinutes>();
            first->lapId = lap->id;
            first->lapMinute = static_cast<int>(lap->minutes.size()) + 1;
            lap->minutes.push_back(std::move(first));
            db.CreateNewLapMinute(*lap->minutes.back());
        }
        DAOLapMinutes& minute = *lap->minutes.back();
        minute.distance += intervalDistance;
        minute.secondsCompleted += kIntervalSeconds;
        minute.steps += intervalSteps;
        // A minute's calories follow its average speed so far; they are not summed. A slower
        // interval (the short one handed over at STOP, say) can move that average into a
        // lower intensity band, but what was burnt stays burnt: they never fall.
        const double minuteRate = body.calculateCalories(static_cast<float>(
            Converter::GetAverageSpeedKMH(minute.distance, minute.secondsCompleted)));
        minute.calories = std::max(minute.calories, minuteRate * minute.secondsCompleted / 60.0);

        auto second = std::make_unique<DAOLapSeconds>();
        second->lapId = lap->id;
        second->currentSecond = (static_cast<int>(lap->seconds.size()) + 1) * kIntervalSeconds;
        second->steps = intervalSteps;
        second->distance = intervalDistance;
        second->caloriesNoise += rate * (noise / 1000.0 + 1.0);
        second->calories = rate / 12.0;

        bool stored = false;
        if (minute.secondsCompleted % 60 != 0) {
            stored = db.UpdateSmall(minute, *second);
        } else {
            auto next = std::make_unique<DAOLapMinutes>();
            next->lapId = lap->id;
            lap->minutes.push_back(std::move(next));
            DAOLapMinutes& nextMinute = *lap->minutes.back();
            nextMinute.lapMinute = static_cast<int>(lap->minutes.size());
            // `minute` is still valid: the records are owned through unique_ptrs.
            stored = db.UpdateFull(minute, *second, nextMinute);
        }
        // Only stored intervals are reported; a failed write shows in the storage status.
        if (stored && intervalObserver_) intervalObserver_(lap->id, *second);
        lap->seconds.push_back(std::move(second));
    }

    const bool goalReached = Sygnal::AddValues(rate / 12.0, kIntervalSeconds, intervalDistance, intervalSteps);
    if (mainForm != nullptr) {
        if (goalReached) mainForm->SygnalFired();
        mainForm->UpdateData(lap.get());
    }
}
