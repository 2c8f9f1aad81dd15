#pragma once

#include <QString>
#include <atomic>
#include <functional>
#include <vector>

#include "PedometerOptions.h"
#include "SettingsScreen.h"

// A settings screen made of switches over the settings record: each row shows its
// state and a tap flips it, after which the whole record is saved (SaveOptions) and the
// rows are redrawn. Subclasses list their switches in the constructor. GUI thread only.
class SettingsSwitchScreen : public SettingsScreen {
    Q_OBJECT
public:
    // Row i reports ID_FIRST_SWITCH + i.
    static constexpr int ID_FIRST_SWITCH = 200;

    struct Switch {
        const char* textKey;
        std::function<bool()> isOn;
        std::function<void()> flip;
        // The texts shown for on and off; "On"/"Off" when empty.
        QString onText;
        QString offText;
    };

    explicit SettingsSwitchScreen(QWidget* parent = nullptr);
    void OnActionPerformed(const QWidget& source, int actionId) override;
    const std::vector<Switch>& GetSwitches() const { return switches_; }

protected:
    void Fill(SettingsPanel& panel) override;
    void AddSwitch(Switch item) { switches_.push_back(std::move(item)); }
    // A switch over one flag of the settings record.
    void AddFlag(const char* textKey, std::atomic<bool> PedometerOptions::*flag);

private:
    std::vector<Switch> switches_;
};
