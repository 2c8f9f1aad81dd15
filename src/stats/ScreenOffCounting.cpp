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
    const QString t = text.trimmed().toLower();
    if (t == QLatin1String("on") || t == QLatin1String("1") || t == QLatin1String("yes") ||
        t == QLatin1String("true")) {
        *on = true;
        return true;
    }
    if (t == QLatin1String("off") || t == QLatin1String("0") || t == QLatin1String("no") ||
        t == QLatin1String("false")) {
        *on = false;
        return true;
    }
    return false;
}
