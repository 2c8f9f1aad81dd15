#pragma once

#include "SettingsSwitchScreen.h"

// Units and display: metric or imperial units, pace instead of speed, BMI on the body
// screen, the five-second countdown before counting starts and starting to count when
// the screen is locked by hand. Writes the settings record at once. Opened by
// "settings-display" and the settings menu. GUI thread only.
class SettingsDisplay : public SettingsSwitchScreen {
    Q_OBJECT
public:
    explicit SettingsDisplay(QWidget* parent = nullptr);
    bool Initialize();

protected:
    QString TitleText() const override;
};
