#include "ProcessSettings.h"

#include <QGuiApplication>

#include "AppFrame.h"
#include "AppPaths.h"
#include "AppResource.h"
#include "LaunchOptions.h"
#include "PlatformSettings.h"
#include "ScreenOffCounting.h"
#include "StatisticsManager.h"
#include "StepDetectorFactory.h"
#include "TivForm.h"
#include "TivUtils.h"

void ProcessSettings::Apply(const LaunchOptions& options) {
    if (options.locale) {
        QLocale::setDefault(*options.locale);
        AppResource::GetInstance().SetLanguage(options.locale->name().section('_', 0, 0));
    }
    if (options.hvga) TivUtils::SetScreenResolution(TivUtils::HVGA_WIDTH);
    AppFrame::SetStartSize(options.size.value_or(options.hvga ? AppFrame::ScreenSize()
                                                               : AppFrame::kDesktopSize));
    if (options.silent) PlatformSettings::SetSilentMode(true);
    if (!options.dataDir.isEmpty()) AppPaths::SetHome(options.dataDir);
    if (options.detector) StepDetectorFactory::SetChoice(*options.detector);
    if (options.keepCountingScreenOff) ScreenOffCounting::SetOverride(*options.keepCountingScreenOff);
    // Headless runs (tests, screenshots) leave the machine's power management alone.
    StatisticsManager::GuardSleepWhileCounting(QGuiApplication::platformName() !=
                                               QLatin1String("offscreen"));
}
