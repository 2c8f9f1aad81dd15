#include "SettingsSounds.h"

#include "ScreenDirectory.h"

SettingsSounds::SettingsSounds(QWidget* parent) : SettingsSwitchScreen(parent) {}

bool SettingsSounds::Initialize() {
    setObjectName(QStringLiteral("SettingsSounds"));
    AddFlag("more__ Button clicks:", &PedometerOptions::soundButtons);
    AddFlag("more__ Countdown ticks:", &PedometerOptions::soundCountdown);
    AddFlag("more__ Pacer sound:", &PedometerOptions::soundMetronome);
    AddFlag("settings__ Step sound:", &PedometerOptions::soundSteps);
    AddFlag("settings__ Start sound:", &PedometerOptions::soundStart);
    return true;
}

QString SettingsSounds::TitleText() const {
    return Text("more__ Sounds");
}

PEDOMETER_SCREEN("settings-sounds", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* form = new SettingsSounds;
    form->Initialize();
    return form;
});
