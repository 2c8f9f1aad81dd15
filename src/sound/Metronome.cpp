#include "Metronome.h"

#include <QCoreApplication>
#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>

#include "Body.h"
#include "Converter.h"
#include "PedometerOptions.h"
#include "SoundsManager.h"

namespace {

enum PacerMode { kOff = 0, kSpeed = 1, kPace = 2, kRate = 3 };

constexpr double kJogFromKmh = 7.4;
constexpr double kRunFromKmh = 9.66;
constexpr int kSpanSeconds = 5;
constexpr int kSpansPerMinute = 60 / kSpanSeconds;

// Interval formulas are evaluated in binary floating point, where a whole number of
// milliseconds such as 450 can come out as 449.99999999999994. The nudge, far below
// anything audible, lets truncation give the whole number the arithmetic stands for.
// (A negative interval, from a negative target, is silent whatever its value.)
int TruncateMs(double ms) {
    constexpr double kNudge = 1e-7;
    if (std::isnan(ms)) return 0;
    ms += kNudge;
    return static_cast<int>(
        std::clamp(ms, static_cast<double>(INT_MIN), static_cast<double>(INT_MAX)));
}

double StepLengthFor(double targetKmh) {
    const Body& body = Body::GetInstance();
    if (targetKmh < kJogFromKmh) return body.getWalkStepSize();
    if (targetKmh < kRunFromKmh) return body.getJogStepSize();
    return body.getRunStepSize();
}

void StopAtExit() {
    Metronome::GetInstance().Shutdown();
}

}  // namespace

Metronome& Metronome::GetInstance() {
    static Metronome instance;
    static const bool stopsAtExit = [] {
        // The beat thread calls into Qt, so it must end while Qt is still there.
        qAddPostRoutine(StopAtExit);
        return true;
    }();
    (void)stopsAtExit;
    return instance;
}

Metronome::Metronome() : timer([this] { OnTimerExpired(); }) {
    // The beat thread plays through the sounds manager, whose players belong to the
    // thread that makes it: make sure that is this one, not the beat thread.
    SoundsManager::GetInstance();
}

Metronome::~Metronome() {
    Shutdown();  // the timer, the last member, is cancelled as it goes first
}

void Metronome::Start() {
    std::lock_guard lock(mutex);
    enabled = true;
    steps = 0;
    distance = 0.0;
    UpdateLocked();
}

void Metronome::Stop() {
    std::lock_guard lock(mutex);
    enabled = false;
    CancelTimerLocked();
}

void Metronome::SetData(int spanSteps, double spanDistance) {
    std::lock_guard lock(mutex);
    steps = spanSteps;
    distance = spanDistance;
    UpdateLocked();
}

void Metronome::Update() {
    std::lock_guard lock(mutex);
    UpdateLocked();
}

void Metronome::UpdateLocked() {
    const PedometerOptions& options = PedometerOptions::GetInstance();
    const int mode = options.pacerType;
    if (!enabled || mode == kOff || (steps == 0 && options.pacerOffOnStanding)) {
        CancelTimerLocked();
        return;
    }

    // In pace mode too the step length follows the target speed, the value last set in
    // speed mode: the pace screen leaves it alone.
    const double targetSpeed = options.pacerSpeed;
    const double spanSpeed = Converter::GetAverageSpeedKMH(distance, kSpanSeconds);
    double current = 0.0;
    double target = 0.0;
    double tolerance = 0.0;
    switch (mode) {
        case kSpeed: {
            if (targetSpeed == 0.0) {
                CancelTimerLocked();
                return;
            }
            const double stepLength = StepLengthFor(targetSpeed);
            interval = TruncateMs(1000.0 * 60.0 / ((targetSpeed * 1000.0 / stepLength) / 60.0));
            current = spanSpeed;
            target = targetSpeed;
            tolerance = options.pacerDiffSpeed;
            break;
        }
        case kPace: {
            const double targetPace = options.pacerPace;
            if (targetPace == 0.0) {
                CancelTimerLocked();
                return;
            }
            const double stepLength = StepLengthFor(targetSpeed);
            interval = TruncateMs(1000.0 * 60.0 / ((1.0 / targetPace * 1000.0) / stepLength));
            // Minutes per kilometre; a span without distance is infinitely slow.
            current = spanSpeed > 0.0 ? 1.0 / (spanSpeed / 60.0)
                                      : std::numeric_limits<double>::infinity();
            target = targetPace;
            tolerance = options.pacerDiffPace;
            break;
        }
        case kRate: {
            const int targetRate = options.pacerFrequency;
            if (targetRate == 0) {
                CancelTimerLocked();
                return;
            }
            interval = TruncateMs(60.0 / targetRate * 1000.0);
            current = steps * kSpansPerMinute;
            target = targetRate;
            tolerance = options.pacerDiffFrequency;
            break;
        }
        default:
            return;
    }

    // With "only if differs", the band around the target is silent, both ends included.
    if (!options.pacerDiff || current > target + tolerance || current < target - tolerance) {
        StartTimerLocked();
    } else {
        CancelTimerLocked();
    }
}

void Metronome::StartTimer() {
    std::lock_guard lock(mutex);
    StartTimerLocked();
}

void Metronome::StartTimerLocked() {
    if (shutDown) return;
    if (!thread) {
        thread =
            std::make_unique<MetronomeThread>([] { SoundsManager::GetInstance().PacerSound(); });
        thread->Init(interval);
    }
    thread->SetRuntime(interval);
    running = true;
}

void Metronome::CancelTimer() {
    std::lock_guard lock(mutex);
    CancelTimerLocked();
}

void Metronome::CancelTimerLocked() {
    if (thread) thread->SetRuntime(0);
    running = false;
    interval = 0;
}

void Metronome::OnTimerExpired() {
    SoundsManager::GetInstance().PacerSound();
    std::lock_guard lock(mutex);
    if (interval > 0) timer.Start(interval);
}

void Metronome::Shutdown() {
    std::lock_guard lock(mutex);
    shutDown = true;
    running = false;
    interval = 0;
    if (thread) thread->Stop();
}

bool Metronome::IsEnabled() const {
    std::lock_guard lock(mutex);
    return enabled;
}

bool Metronome::IsRunning() const {
    std::lock_guard lock(mutex);
    return running;
}

int Metronome::GetInterval() const {
    std::lock_guard lock(mutex);
    return interval;
}

int Metronome::GetRuntime() const {
    std::lock_guard lock(mutex);
    return thread ? thread->GetRuntime() : 0;
}

bool Metronome::HasThread() const {
    std::lock_guard lock(mutex);
    return thread != nullptr;
}
