#include "ScreenOffCounting.h"

#include <atomic>

#include "PedometerDBManager.h"

namespace {
// -1 no override, 0 off, 1 on.
std::atomic<int> overridden{-1};
}  // namespace

bool ScreenOffCounting::IsOn() {
    const int choice = overridden.load();
    if (choice >= 0) return choice == 1;
    return PedometerDBManager::GetInstance().GetPreference(
               QLatin1String(kPreference), QStringLiteral("1")) != QLatin1String("0");
}

bool ScreenOffCounting::Store(bool on) {
    return PedometerDBManager::GetInstance().SetPreference(
        QLatin1String(kPreference), on ? QStringLiteral("1") : QStringLiteral("0"));
}

void ScreenOffCounting::SetOverride(std::optional<bool> on) {
    overridden.store(on ? (*on ? 1 : 0) : -1);
}

bool ScreenOffCounting::Parse(const QString& text, bool* on) {
    if (text != QLatin1String("on") && text != QLatin1String("off")) return false;
    *on = text == QLatin1String("on");
    return true;
}
