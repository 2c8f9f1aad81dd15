#include "SettingsDisplay.h"

#include "LoginAutostart.h"
#include "ScreenDirectory.h"

SettingsDisplay::SettingsDisplay(QWidget* parent) : SettingsSwitchScreen(parent) {}

bool SettingsDisplay::Initialize() {
    setObjectName(QStringLiteral("SettingsDisplay"));
    // Stored true means imperial; the row names the system in use.
    AddSwitch({"settings__ Units",
               [] { return PedometerOptions::GetInstance().measurementSystem.load(); },
               [] {
                   auto& imperial = PedometerOptions::GetInstance().measurementSystem;
                   imperial = !imperial.load();
               },
               Text("settings__ Imperial"), Text("more__ Metric")});
    AddFlag("more__ Show pace instead of speed:", &PedometerOptions::paceInsteadOfSpeed);
    AddFlag("more__ Show BMI on Body screen:", &PedometerOptions::showBmi);
    // The countdown is a number of seconds: a value below 1 becomes 5, anything else 0.
    AddSwitch({"meter__ Do 5 seconds countdown",
               [] { return PedometerOptions::GetInstance().countDownTime.load() > 0; },
               [] {
                   auto& seconds = PedometerOptions::GetInstance().countDownTime;
                   seconds = seconds.load() < 1 ? 5 : 0;
               },
               {},
               {}});
    AddFlag("more__ Autostart on manual lock:", &PedometerOptions::startOnBlock);
    // The autostart entry itself is the setting.
    AddSwitch({"more__ Count from login:", [] { return LoginAutostart::IsOn(); },
               [] {
                   QString error;
                   if (!LoginAutostart::SetOn(!LoginAutostart::IsOn(), &error))
                       qWarning("%s", qPrintable(error));
               },
               {},
               {}});
    return true;
}

QString SettingsDisplay::TitleText() const {
    return Text("settings__ Units and display");
}

PEDOMETER_SCREEN("settings-display", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* form = new SettingsDisplay;
    form->Initialize();
    return form;
});
