#include "SettingsSwitchScreen.h"

#include "PedometerDBManager.h"
#include "SettingsPanel.h"
#include "SoundsManager.h"

SettingsSwitchScreen::SettingsSwitchScreen(QWidget* parent) : SettingsScreen(parent) {}

void SettingsSwitchScreen::AddFlag(const char* textKey, std::atomic<bool> PedometerOptions::*flag) {
    AddSwitch({textKey,
               [flag] { return (PedometerOptions::GetInstance().*flag).load(); },
               [flag] {
                   std::atomic<bool>& value = PedometerOptions::GetInstance().*flag;
                   value = !value.load();
               },
               {},
               {}});
}

void SettingsSwitchScreen::Fill(SettingsPanel& panel) {
    int id = ID_FIRST_SWITCH;
    for (const Switch& item : switches_) {
        const bool on = item.isOn();
        QString value = on ? item.onText : item.offText;
        if (value.isEmpty()) value = OnOff(on);
        panel.AddValueRow(Text(item.textKey), value, id++, this);
    }
}

void SettingsSwitchScreen::OnActionPerformed(const QWidget& source, int actionId) {
    const int index = actionId - ID_FIRST_SWITCH;
    if (index < 0 || index >= int(switches_.size())) {
        SettingsScreen::OnActionPerformed(source, actionId);
        return;
    }
    SoundsManager::GetInstance().ClickSound();
    switches_[size_t(index)].flip();
    PedometerDBManager::GetInstance().SaveOptions();
    Refill();
}
