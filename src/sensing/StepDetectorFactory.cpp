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
    DetectorKind kind = DetectorKind::Classic;
    // A stored name this version does not know leaves the classic detector counting.
    Parse(PedometerDBManager::GetInstance().GetPreference(QStringLiteral("detector"),
                                                          QStringLiteral("classic")),
          &kind);
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
