#include "StatisticsManager.h"

#include "AccelerometerSource.h"
#include "Body.h"
#include "DAOLap.h"
#include "MainFormListener.h"
#include "Metronome.h"
#include "PedometerDBManager.h"
#include "QuorPedometer.h"
#include "ScreenOffCounting.h"
#include "SleepInhibitor.h"
#include "Timer.h"
#include "UpdaterThread.h"

namespace {
constexpr int kTickMs = 1000;
constexpr int kTicksPerInterval = 5;
std::atomic<bool> guardSleep{false};
}  // namespace

void StatisticsManager::GuardSleepWhileCounting(bool on) {
    guardSleep.store(on);
}

StatisticsManager::StatisticsManager() = default;

StatisticsManager::~StatisticsManager() {
    sleepInhibitor_.reset();
    if (engine_) engine_->stopUpdating();
    if (timer) timer->Cancel();
    // The detector goes first so no step arrives while the rest is taken down.
    engine_.reset();
    if (updaterThread) updaterThread->Stop();
    WillClearData();
    updaterThread.reset();
    timer.reset();
}

void StatisticsManager::UseSensorSource(std::unique_ptr<AccelerometerSource> source) {
    sensorSource_ = std::move(source);
}

void StatisticsManager::Initialize() {
    started = false;
    engine_ = sensorSource_ ? std::make_unique<QuorPedometer>(std::move(*sensorSource_))
                            : std::make_unique<QuorPedometer>();
    sensorSource_.reset();
    engine_->statistics = this;

    PedometerDBManager& db = PedometerDBManager::GetInstance();
    lapSteps = 0;
    std::unique_ptr<DAOLap> lap = db.GetTodayLastLap();
    // A lap with an end (finished, or imported) is never resumed: counting on into it
    // would put new minutes into a closed lap.
    if (!lap || lap->endDate) {
        lap = db.CreateNewLap();
        db.ClearLapSeconds();
    }
    currentLap = std::move(lap);
    int steps = 0;
    for (const auto& second : currentLap->seconds) steps += second->steps;
    lapSteps = steps;
    ForceMainScreenUpdate();

    intervalDistance = 0.0;
    intervalSteps = 0;
    secondTicks = 0;
    timer = std::make_unique<Timer>([this] { OnTimerExpired(); });
    updaterThread = std::make_unique<UpdaterThread>();
    updaterThread->Initialize(engine_.get(), mainForm);
    updaterThread->SetIntervalObserver(intervalObserver_);
    updaterThread->Start();

    if (guardSleep.load()) sleepInhibitor_ = SleepInhibitor::ForThisSystem();
    if (sleepInhibitor_) {
        sleepInhibitor_->SetBeforeSleep([this] { WriteBeforeSleep(); });
        sleepInhibitor_->SetAfterResume([this] { OnResumed(); });
    }
}

void StatisticsManager::start() {
    if (started) return;
    started = true;
    engine_->startUpdating();
    ForceMainScreenUpdate();
    timer->Start(kTickMs);
    Metronome::GetInstance().Start();
    if (sleepInhibitor_) sleepInhibitor_->Hold(ScreenOffCounting::IsOn());
}

void StatisticsManager::stop() {
    if (!started) return;
    started = false;
    timer->Cancel();
    engine_->stopUpdating();
    Metronome::GetInstance().Stop();
    if (sleepInhibitor_) sleepInhibitor_->Release();
}

void StatisticsManager::WriteBeforeSleep() {
    if (!started) return;
    if (secondTicks > 0 || intervalSteps.load() > 0) {
        UpdateUI();
        secondTicks = 0;
        timer->Start(kTickMs);
    }
    updaterThread->WaitUntilIdle();
}

void StatisticsManager::HandOverAndStop() {
    stop();
    if (updaterThread && (secondTicks > 0 || intervalSteps.load() > 0)) UpdateUI();
    secondTicks = 0;
}

void StatisticsManager::OnResumed() {
    if (AccelerometerSource* source = engine_->Source()) source->ReopenAfterResume();
}

void StatisticsManager::addStep(int gait) {
    const int steps = lapSteps.fetch_add(1) + 1;
    intervalSteps.fetch_add(1);
    if (mainForm != nullptr) mainForm->RequestStepsUpdate(steps);
    // A gait outside 1..3 still counts as a step but covers no distance.
    intervalDistance.fetch_add(Body::GetInstance().getStepSize(gait));
}

void StatisticsManager::OnTimerExpired() {
    ++secondTicks;
    if (secondTicks % kTicksPerInterval == 0) {
        UpdateUI();
        secondTicks = 0;
    }
    timer->Start(kTickMs);
}

void StatisticsManager::UpdateUI() {
    // Take the interval and restart it in one step each, so a step that lands now
    // goes to either this interval or the next, never to neither.
    const int steps = intervalSteps.exchange(0);
    const double distance = intervalDistance.exchange(0.0);
    if (currentLap) updaterThread->Post({lapSteps.load(), steps, distance, currentLap});
}

void StatisticsManager::StartNewLap() {
    // Let an interval already handed over land in the lap it belongs to.
    if (updaterThread) updaterThread->WaitUntilIdle();
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    db.ClearLapSeconds();
    if (currentLap) {
        db.FinishLap(currentLap->id);
        ClearLapRecords();
        currentLap.reset();
    }
    currentLap = db.CreateNewLap();
    secondTicks = 0;
    lapSteps = 0;
    intervalDistance = 0.0;
    intervalSteps = 0;
    ForceMainScreenUpdate();
}

void StatisticsManager::ClearCurrentLap() {
    if (updaterThread) updaterThread->WaitUntilIdle();
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    db.ClearLapSeconds();
    if (currentLap) {
        db.ClearLapMinutes(currentLap->id);
        ClearLapRecords();
    }
    lapSteps = 0;
    intervalSteps = 0;
    intervalDistance = 0.0;
    secondTicks = 0;
    ForceMainScreenUpdate();
}

void StatisticsManager::WillClearData() {
    if (currentLap) ClearLapRecords();
    currentLap.reset();
}

void StatisticsManager::ForceMainScreenUpdate() {
    if (mainForm == nullptr) return;
    mainForm->UpdateStepsCount(lapSteps.load());
    mainForm->UpdateData(currentLap.get());
}

void StatisticsManager::ClearLapRecords() {
    std::lock_guard lock(currentLap->recordsMutex);
    currentLap->minutes.clear();
    currentLap->seconds.clear();
}
