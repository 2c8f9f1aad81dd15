#include "FreshProfile.h"

#include "AppPaths.h"
#include "Body.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "VirtualTime.h"

FreshProfile::FreshProfile(const QDateTime& now)
    : configHome_(qgetenv("XDG_CONFIG_HOME")) {
    // The user's own configuration (the login autostart entry) stays untouched.
    qputenv("XDG_CONFIG_HOME", (dir_.path() + QStringLiteral("/config")).toUtf8());
    AppPaths::SetHome(dir_.path());
    PedometerDBManager::GetInstance().Reopen();
    Body::GetInstance().clear();
    PedometerOptions::GetInstance().RestoreDefaults();
    VirtualTime::Enable(now);
}

FreshProfile::~FreshProfile() {
    if (configHome_.isEmpty()) {
        qunsetenv("XDG_CONFIG_HOME");
    } else {
        qputenv("XDG_CONFIG_HOME", configHome_);
    }
    VirtualTime::Disable();
    PedometerDBManager::GetInstance().Reopen();
}
