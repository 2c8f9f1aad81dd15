#pragma once

#include "SettingsSwitchScreen.h"

// The sound switches: button clicks, countdown ticks, the pacer beat, the step sound and
// the start sound. Writes the settings record at once. Opened by "settings-sounds" and
// the settings menu. GUI thread only.
class SettingsSounds : public SettingsSwitchScreen {
    Q_OBJECT
public:
    explicit SettingsSounds(QWidget* parent = nullptr);
    bool Initialize();

protected:
    QString TitleText() const override;
};
