#pragma once

#include <QPointer>

#include "PedometerForm.h"

class SettingsPanel;

// What the settings screens share: the background, a title, Back, and one scrolling
// SettingsPanel under the title that the screen fills in Fill(). The panel is filled
// again every time the screen appears (first push, and every return from a screen it
// opened), so a row always shows the value stored now. Screens push others by name
// (Open). GUI thread only.
class SettingsScreen : public PedometerForm {
    Q_OBJECT
public:
    explicit SettingsScreen(QWidget* parent = nullptr);

    void OnInitializing() override;
    void FormWillAppear() override;

    SettingsPanel* GetPanel() const { return panel_; }

    // Localised text by key, and "On"/"Off".
    static QString Text(const char* key);
    static QString OnOff(bool on);

protected:
    virtual QString TitleText() const = 0;
    virtual void Fill(SettingsPanel& panel) = 0;
    // Empties the panel and fills it again (after a change that alters several rows).
    void Refill();
    // Pushes the named screen on top of this one; a refusal is logged.
    void Open(const QString& name);

private:
    SettingsPanel* panel_ = nullptr;
};
