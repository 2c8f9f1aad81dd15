#pragma once

#include <QHash>

#include "SettingsScreen.h"
#include "SnsListener.h"

class ReportPopup;

// Signing in and out of each social network the sharing code offers
// (SnsGateway::Providers): one row per network with its state ("Signed in", "Not signed
// in", "Checking..." while the gateway answers). A tap on a network not signed in starts
// the sign-in in the browser; on one signed in it signs out, which forgets the stored
// token. Failures are shown in a message. The screen is the gateway's listener while it
// lives. Opened by the report's sign-in message ("settings-social-login") and the social
// accounts screen. GUI thread only.
class SettingsSocialLogin : public SettingsScreen, public SnsListener {
    Q_OBJECT
public:
    // Network i reports ID_FIRST_PROVIDER + i.
    static constexpr int ID_FIRST_PROVIDER = 200;
    static constexpr int ID_POPUP_OK = 190;

    enum class State { Checking, SignedIn, SignedOut, SigningIn };

    explicit SettingsSocialLogin(QWidget* parent = nullptr);
    ~SettingsSocialLogin() override;
    bool Initialize();
    void OnInitializing() override;
    void FormWillAppear() override;
    void OnActionPerformed(const QWidget& source, int actionId) override;

    State GetState(const QString& provider) const { return states_.value(provider); }
    ReportPopup* GetPopup() const { return popup_; }

    void OnSnsAuthenticated(const QString& provider, const SnsAuthResult& result,
                            const QString& errorMessage) override;
    void OnSnsLoggedInStatusReceived(int requestId, const QString& provider, bool isLoggedIn,
                                     bool ok, const QString& errorCode,
                                     const QString& errorMessage) override;
    void OnMySnsStatusTextUpdated(int, const QString&, bool, const QString&,
                                  const QString&) override {}

protected:
    QString TitleText() const override;
    void Fill(SettingsPanel& panel) override;

private:
    void Check(const QString& provider);
    void ShowMessage(const QString& text);

    QStringList providers_;
    QHash<QString, State> states_;
    ReportPopup* popup_ = nullptr;
};
