#include "StepDetectorFactory.h"

#include <mutex>
#include <optional>

#include "PedometerDBManager.h"

namespace {
std::mutex& choiceMutex() {
    static std::mutex mutex;
    return mutex;
}

std::optional<DetectorKind>& currentChoice() {
    static std::optional<DetectorKind> choice;
    return choice;
}
}  // namespace

void StepDetectorFactory::SetChoice(DetectorKind kind) {
    std::lock_guard lock(choiceMutex());
    currentChoice() = kind;
}

void StepDetectorFactory::ClearChoice() {
    std::lock_guard lock(choiceMutex());
    currentChoice().reset();
}

DetectorKind StepDetectorFactory::Configured() {
    {
        std::lock_guard lock(choiceMutex());
        if (currentChoice()) return *currentChoice();
    }
    DetectorKind kind = kDefaultDetector;
    // An unset preference, or a stored name this version does not know, leaves the
    // default detector counting.
    Parse(PedometerDBManager::GetInstance().GetPreference(QStringLiteral("detector")), &kind);
    return kind;
}

bool StepDetectorFactory::Parse(const QString& name, DetectorKind* kind) {
    if (name == QLatin1String("classic")) {
        *kind = DetectorKind::Classic;
        return true;
    }
    if (name == QLatin1String("adaptive")) {
        *kind = DetectorKind::Adaptive;
        return true;
    }
    return false;
}
