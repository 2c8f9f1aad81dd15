#pragma once

#include <QPointer>

#include "SettingsScreen.h"

class QLineEdit;
class ReportPopup;

// The e-mail addresses of the social record (DAOSocial): where exported CSV files and
// shared reports are sent. An address is saved when its field is left or Enter is
// pressed, and by the Save row; an empty field clears it, and text that is not a
// plausible address is kept in the field, not saved, and explained in a message. The
// last row opens the social network sign-in ("settings-social-login").
// Opened by the report's missing-address message, "settings-accounts" and the settings
// menu. GUI thread only.
class SettingsSocial : public SettingsScreen {
    Q_OBJECT
public:
    static constexpr int ID_SAVE = 200;
    static constexpr int ID_NETWORKS = 201;
    static constexpr int ID_POPUP_OK = 202;

    // One plain address (EmailSender::IsPlainAddress).
    static bool IsPlausibleAddress(const QString& address);

    explicit SettingsSocial(QWidget* parent = nullptr);
    bool Initialize();
    void OnInitializing() override;
    void OnActionPerformed(const QWidget& source, int actionId) override;

    QLineEdit* GetExportField() const { return exportField_; }
    QLineEdit* GetShareField() const { return shareField_; }
    ReportPopup* GetPopup() const { return popup_; }
    // Checks both fields and stores them; false (nothing stored) with a message when one
    // is not an address.
    bool SaveAddresses();

protected:
    QString TitleText() const override;
    void Fill(SettingsPanel& panel) override;

private:
    QPointer<QLineEdit> exportField_;
    QPointer<QLineEdit> shareField_;
    ReportPopup* popup_ = nullptr;
};
