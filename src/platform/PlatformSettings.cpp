#include "PlatformSettings.h"

#include <atomic>

namespace {
std::atomic<bool> silentMode{false};
}  // namespace

bool PlatformSettings::IsSilentMode() {
    return silentMode.load();
}

void PlatformSettings::SetSilentMode(bool silent) {
    silentMode.store(silent);
}
