#include "FreshProfile.h"

#include "AppPaths.h"
#include "Body.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "VirtualTime.h"

FreshProfile::FreshProfile(const QDateTime& now) {
    AppPaths::SetHome(dir_.path());
    PedometerDBManager::GetInstance().Reopen();
    Body::GetInstance().clear();
    PedometerOptions::GetInstance().RestoreDefaults();
    VirtualTime::Enable(now);
}

FreshProfile::~FreshProfile() {
    VirtualTime::Disable();
    PedometerDBManager::GetInstance().Reopen();
}
