#pragma once

#include <vector>

#include "SettingsScreen.h"

// The settings menu ("more__ Settings" in the main screen's menu): one row per settings
// screen, each opened by name. The rows come from one table in SettingsForm.cpp; a new
// settings screen (data export, backup) registers its name and adds a row there.
// Reads and writes nothing itself. GUI thread only.
class SettingsForm : public SettingsScreen {
    Q_OBJECT
public:
    // Row i reports ID_FIRST_ENTRY + i.
    static constexpr int ID_FIRST_ENTRY = 200;

    struct Entry {
        const char* textKey;
        const char* screen;
    };
    static const std::vector<Entry>& Entries();

    explicit SettingsForm(QWidget* parent = nullptr);
    bool Initialize();
    void OnActionPerformed(const QWidget& source, int actionId) override;

protected:
    QString TitleText() const override;
    void Fill(SettingsPanel& panel) override;
};
