#include "SettingsForm.h"

#include "ScreenDirectory.h"
#include "SettingsPanel.h"
#include "SoundsManager.h"

const std::vector<SettingsForm::Entry>& SettingsForm::Entries() {
    static const std::vector<Entry> kEntries = {
        {"more__ My profile", "settings-profile"},
        {"more__ Accelerometer sensitivity", "settings-sensitivity"},
        {"settings__ Units and display", "settings-display"},
        {"more__ Sounds", "settings-sounds"},
        {"more__ Body targets", "settings-goals"},
        {"more__ Social accounts", "settings-accounts"},
        {"settings__ Export and backup", "settings-data"},
        {"more__ Reset", "settings-reset"},
    };
    return kEntries;
}

SettingsForm::SettingsForm(QWidget* parent) : SettingsScreen(parent) {}

bool SettingsForm::Initialize() {
    setObjectName(QStringLiteral("SettingsForm"));
    return true;
}

QString SettingsForm::TitleText() const {
    return Text("more__ Settings");
}

void SettingsForm::Fill(SettingsPanel& panel) {
    int id = ID_FIRST_ENTRY;
    for (const Entry& entry : Entries()) panel.AddRowButton(Text(entry.textKey), id++, this);
}

void SettingsForm::OnActionPerformed(const QWidget& source, int actionId) {
    const int index = actionId - ID_FIRST_ENTRY;
    if (index < 0 || index >= int(Entries().size())) {
        SettingsScreen::OnActionPerformed(source, actionId);
        return;
    }
    SoundsManager::GetInstance().ClickSound();
    Open(QString::fromUtf8(Entries()[size_t(index)].screen));
}

PEDOMETER_SCREEN("settings", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* form = new SettingsForm;
    form->Initialize();
    return form;
});
