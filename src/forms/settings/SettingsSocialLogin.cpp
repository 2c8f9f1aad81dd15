#include "SettingsSocialLogin.h"

#include "ReportPopup.h"
#include "ScreenDirectory.h"
#include "SettingsPanel.h"
#include "SnsGateway.h"
#include "SoundsManager.h"

namespace {
QString ProviderName(const QString& provider) {
    return provider.left(1).toUpper() + provider.mid(1);
}
}  // namespace

SettingsSocialLogin::SettingsSocialLogin(QWidget* parent) : SettingsScreen(parent) {}

SettingsSocialLogin::~SettingsSocialLogin() {
    SnsGateway::GetInstance().SetListener(nullptr);
}

bool SettingsSocialLogin::Initialize() {
    setObjectName(QStringLiteral("SettingsSocialLogin"));
    return true;
}

void SettingsSocialLogin::OnInitializing() {
    SettingsScreen::OnInitializing();
    popup_ = new ReportPopup(this);
    popup_->Initialize(ID_POPUP_OK, Text("settings__ OK"), this);
}

void SettingsSocialLogin::FormWillAppear() {
    SnsGateway& gateway = SnsGateway::GetInstance();
    gateway.SetListener(this);
    providers_ = gateway.Providers();
    for (const QString& provider : providers_) Check(provider);
    SettingsScreen::FormWillAppear();
}

QString SettingsSocialLogin::TitleText() const {
    return Text("settings__ Social networks");
}

void SettingsSocialLogin::Check(const QString& provider) {
    states_[provider] = State::Checking;
    if (SnsGateway::GetInstance().IsLoggedIn(provider) < 0) states_[provider] = State::SignedOut;
}

void SettingsSocialLogin::Fill(SettingsPanel& panel) {
    for (int i = 0; i < providers_.size(); ++i) {
        const char* key = "settings__ Checking...";
        switch (states_.value(providers_[i])) {
            case State::SignedIn:
                key = "settings__ Signed in";
                break;
            case State::SignedOut:
                key = "settings__ Not signed in";
                break;
            case State::SigningIn:
                key = "settings__ Signing in...";
                break;
            case State::Checking:
                break;
        }
        panel.AddValueRow(ProviderName(providers_[i]), Text(key), ID_FIRST_PROVIDER + i, this);
    }
    panel.AddNote(Text("settings__ Tap a network to sign in, or to sign out when signed in. "
                       "Signing in opens the web browser."),
                  80);
}

void SettingsSocialLogin::OnActionPerformed(const QWidget& source, int actionId) {
    const int index = actionId - ID_FIRST_PROVIDER;
    if (actionId == ID_POPUP_OK) {
        SoundsManager::GetInstance().ClickSound();
        popup_->hide();
        return;
    }
    if (index < 0 || index >= providers_.size()) {
        SettingsScreen::OnActionPerformed(source, actionId);
        return;
    }
    SoundsManager::GetInstance().ClickSound();
    const QString provider = providers_[index];
    SnsGateway& gateway = SnsGateway::GetInstance();
    switch (states_.value(provider)) {
        case State::SignedIn:
            gateway.SignOut(provider);
            states_[provider] = State::SignedOut;
            break;
        case State::SignedOut:
            if (gateway.Authenticate(provider, SnsGateway::ClientKey(provider),
                                     SnsGateway::ClientSecret(provider))) {
                states_[provider] = State::SigningIn;
            } else {
                ShowMessage(Text("sns__ Could not open the web browser to sign in."));
            }
            break;
        case State::SigningIn:
            // A second tap gives up the sign-in in progress.
            gateway.SignOut(provider);
            states_[provider] = State::SignedOut;
            break;
        case State::Checking:
            return;
    }
    Refill();
}

void SettingsSocialLogin::OnSnsAuthenticated(const QString& provider, const SnsAuthResult& result,
                                             const QString& errorMessage) {
    // OAuth 1.0a (Twitter) tokens come with a secret; OAuth 2 tokens stand alone.
    const bool complete = !result.tokenKey.isEmpty() &&
                          (provider != QLatin1String("twitter") || !result.tokenSecret.isEmpty());
    if (complete) {
        SnsGateway::GetInstance().AddAuthResult(provider, result);
        Check(provider);
    } else {
        states_[provider] = State::SignedOut;
        if (!errorMessage.isEmpty()) ShowMessage(errorMessage);
    }
    Refill();
}

void SettingsSocialLogin::OnSnsLoggedInStatusReceived(int, const QString& provider, bool isLoggedIn,
                                                      bool ok, const QString&,
                                                      const QString& errorMessage) {
    states_[provider] = ok && isLoggedIn ? State::SignedIn : State::SignedOut;
    if (!ok && !errorMessage.isEmpty()) ShowMessage(errorMessage);
    Refill();
}

void SettingsSocialLogin::ShowMessage(const QString& text) {
    if (popup_ != nullptr) popup_->Show(text);
}

PEDOMETER_SCREEN("settings-social-login", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* form = new SettingsSocialLogin;
    form->Initialize();
    return form;
});
