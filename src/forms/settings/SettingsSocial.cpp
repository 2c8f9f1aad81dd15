#include "SettingsSocial.h"

#include <QLineEdit>

#include "DAOSocial.h"
#include "EmailSender.h"
#include "PedometerDBManager.h"
#include "ReportPopup.h"
#include "ScreenDirectory.h"
#include "SettingsPanel.h"
#include "SoundsManager.h"

bool SettingsSocial::IsPlausibleAddress(const QString& address) {
    return EmailSender::IsPlainAddress(address);
}

SettingsSocial::SettingsSocial(QWidget* parent) : SettingsScreen(parent) {}

bool SettingsSocial::Initialize() {
    setObjectName(QStringLiteral("SettingsSocial"));
    return true;
}

void SettingsSocial::OnInitializing() {
    SettingsScreen::OnInitializing();
    popup_ = new ReportPopup(this);
    popup_->Initialize(ID_POPUP_OK, Text("settings__ OK"), this);
}

QString SettingsSocial::TitleText() const {
    return Text("more__ Social accounts");
}

void SettingsSocial::Fill(SettingsPanel& panel) {
    // A field being edited keeps its text when the screen reappears.
    const QString typedExport = exportField_ ? exportField_->text() : QString();
    const QString typedShare = shareField_ ? shareField_->text() : QString();
    const bool refilling = exportField_ != nullptr;
    const std::unique_ptr<DAOSocial> social = PedometerDBManager::GetInstance().GetDAOSocialN();
    exportField_ = panel.AddTextField(Text("more__ Export e-mail:"),
                                      refilling ? typedExport : social->export_);
    shareField_ =
        panel.AddTextField(Text("more__ Share e-mail:"), refilling ? typedShare : social->share);
    for (QLineEdit* field : {exportField_.data(), shareField_.data()}) {
        field->setInputMethodHints(Qt::ImhEmailCharactersOnly | Qt::ImhNoAutoUppercase);
        field->setMaxLength(254);
        connect(field, &QLineEdit::editingFinished, this, [this] { SaveAddresses(); });
    }
    panel.AddRowButton(Text("settings__ Save addresses"), ID_SAVE, this);
    panel.AddNote(Text("settings__ Exports and shared reports are sent to these addresses."), 60);
    panel.AddHeader(Text("settings__ Social networks"));
    panel.AddRowButton(Text("settings__ Sign in and out"), ID_NETWORKS, this);
}

bool SettingsSocial::SaveAddresses() {
    if (!exportField_ || !shareField_) return false;
    const QString exportTo = exportField_->text().trimmed();
    const QString shareTo = shareField_->text().trimmed();
    for (const QString& address : {exportTo, shareTo}) {
        if (!address.isEmpty() && !IsPlausibleAddress(address)) {
            if (!popup_->isVisible()) {
                popup_->Show(
                    Text("settings__ This is not an e-mail address, so it was not saved: %@")
                        .replace(QStringLiteral("%@"), address));
            }
            return false;
        }
    }
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    std::unique_ptr<DAOSocial> social = db.GetDAOSocialN();
    if (social->export_ == exportTo && social->share == shareTo) return true;
    social->export_ = exportTo;
    social->share = shareTo;
    db.SetSocial(*social);
    return true;
}

void SettingsSocial::OnActionPerformed(const QWidget& source, int actionId) {
    switch (actionId) {
        case ID_SAVE:
            SoundsManager::GetInstance().ClickSound();
            if (SaveAddresses()) popup_->Show(Text("settings__ Addresses saved."));
            return;
        case ID_NETWORKS:
            SoundsManager::GetInstance().ClickSound();
            Open(QStringLiteral("settings-social-login"));
            return;
        case ID_POPUP_OK:
            SoundsManager::GetInstance().ClickSound();
            popup_->hide();
            return;
        default:
            SettingsScreen::OnActionPerformed(source, actionId);
    }
}

PEDOMETER_SCREEN("settings-accounts", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* form = new SettingsSocial;
    form->Initialize();
    return form;
});
