#include "PlatformSettings.h"

#include <atomic>

namespace {
std::atomic<bool> silentMode{false};
std::atomic<bool> profileSilent{false};
}  // namespace

bool PlatformSettings::IsSilentMode() {
    return silentMode.load() || profileSilent.load();
}

void PlatformSettings::SetProfileSilent(bool silent) {
    profileSilent.store(silent);
}

void PlatformSettings::SetSilentMode(bool silent) {
    silentMode.store(silent);
}
