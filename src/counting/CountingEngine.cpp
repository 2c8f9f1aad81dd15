#include "CountingEngine.h"

#include "AccelerometerSource.h"
#include "QuorPedometer.h"
#include "UpdaterThread.h"

CountingEngine::CountingEngine() {
    statistics_.mainForm = &listeners_;
}

CountingEngine::~CountingEngine() = default;

void CountingEngine::UseSensorSource(std::unique_ptr<AccelerometerSource> source) {
    statistics_.UseSensorSource(std::move(source));
}

void CountingEngine::SetIntervalObserver(
    std::function<void(int lapId, const DAOLapSeconds&)> observer) {
    statistics_.SetIntervalObserver(std::move(observer));
}

void CountingEngine::Initialize() {
    if (initialized_) return;
    statistics_.Initialize();
    initialized_ = true;
}

bool CountingEngine::StoreAndStop(int ms) {
    if (!initialized_) return true;
    statistics_.HandOverAndStop();
    return statistics_.GetUpdaterThread()->WaitUntilIdleFor(ms);
}

QuorPedometer& CountingEngine::Detector() const {
    return *statistics_.Detector();
}
