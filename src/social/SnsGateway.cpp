#include "SnsGateway.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

#include "AppPlugins.h"
#include "AppResource.h"
#include "PedometerDBManager.h"
#include "SnsClientCredentials.h"
#include "SnsHost.h"
#include "SnsPlugin.h"

namespace {

const QString kTwitter = QStringLiteral("twitter");
const QString kFacebook = QStringLiteral("facebook");
const QString kMastodon = QStringLiteral("mastodon");

// A token is kept with the server it was issued by (the Mastodon instance), so that it
// is never shown to another server after the user moved to another instance.
QString TokenText(const SnsAuthResult& token, const QString& server) {
    return QString::fromUtf8(QJsonDocument(QJsonObject{{QStringLiteral("token"), token.tokenKey},
                                                       {QStringLiteral("secret"), token.tokenSecret},
                                                       {QStringLiteral("server"), server}})
                                 .toJson(QJsonDocument::Compact));
}

SnsAuthResult TokenFromText(const QString& text, const QString& server) {
    const QJsonObject json = QJsonDocument::fromJson(text.toUtf8()).object();
    if (json.value(QStringLiteral("server")).toString() != server) return {};
    return {json.value(QStringLiteral("token")).toString(),
            json.value(QStringLiteral("secret")).toString()};
}

// The application's preferences and texts, for the social code here and in the plug-in.
class AppSnsHost final : public SnsHost {
public:
    QString GetPreference(const QString& name) override {
        return PedometerDBManager::GetInstance().GetPreference(name);
    }
    void SetPreference(const QString& name, const QString& value) override {
        PedometerDBManager::GetInstance().SetPreference(name, value);
    }
    QString Text(const QString& key, const QStringList& values) override {
        return AppResource::GetInstance().GetString(key, values);
    }
};

QString Title(const QString& provider) {
    return provider.isEmpty() ? provider : provider.at(0).toUpper() + provider.mid(1);
}

}  // namespace

SnsGateway::SnsGateway() {
    static AppSnsHost host;
    SnsHost::Set(&host);
}

SnsGateway& SnsGateway::GetInstance() {
    static SnsGateway gateway;
    return gateway;
}

void SnsGateway::SetListener(SnsListener* listener) {
    listener_ = listener;
}

QString SnsGateway::MastodonInstance() {
    const QString instance = PedometerDBManager::GetInstance().GetPreference(
        QStringLiteral("mastodon-instance"));
    return SnsEndpoints::InstanceUrl(instance).isEmpty() ? QString() : instance.trimmed();
}

QString SnsGateway::TokenServer(const QString& provider) {
    return provider == kMastodon ? MastodonInstance() : QString();
}

QStringList SnsGateway::Providers() const {
    QStringList providers{kTwitter, kFacebook};
    if (!MastodonInstance().isEmpty()) providers << kMastodon;
    return providers;
}

QString SnsGateway::ClientKey(const QString& provider) {
    if (provider == kTwitter) return SnsClientCredentials::kTwitterKey;
    if (provider == kFacebook) return SnsClientCredentials::kFacebookId;
    return {};
}

QString SnsGateway::ClientSecret(const QString& provider) {
    if (provider == kTwitter) return SnsClientCredentials::kTwitterSecret;
    if (provider == kFacebook) return SnsClientCredentials::kFacebookSecret;
    return {};
}

QObject* SnsGateway::Owner() {
    if (owner_ == nullptr) owner_ = new QObject(QCoreApplication::instance());
    return owner_;
}

SnsPlugin* SnsGateway::Plugin() {
    // Networking, NetworkAuth and the keyring come with the plug-in, on first use.
    static SnsPlugin* plugin = [] {
        auto* loaded = AppPlugins::Get<SnsPlugin>(QStringLiteral("pedometer-social"));
        if (loaded != nullptr) loaded->UseHost(&SnsHost::Get());
        return loaded;
    }();
    return plugin;
}

SnsTokenStore* SnsGateway::Store() {
    if (store_ == nullptr && Plugin() != nullptr)
        store_ = Plugin()->MakeTokenStore(std::nullopt, Owner());
    return store_;
}

SnsProvider* SnsGateway::Provider(const QString& name) {
    SnsPlugin* plugin = Plugin();
    if (plugin == nullptr) return nullptr;  // no sharing without the plug-in
    SnsProvider* existing = providers_.value(name);
    if (name == kMastodon) {
        const QString instance = MastodonInstance();
        if (instance.isEmpty()) return nullptr;
        // The user may have moved to another instance since the provider was made.
        if (existing != nullptr && existing->property("instance").toString() != instance) {
            Drop(name);
            existing = nullptr;
        }
        if (existing == nullptr) {
            existing = plugin->MakeOAuth2(name, Title(name),
                                          endpoints_.value(name, SnsEndpoints::Mastodon(instance)),
                                          true, Owner());
            existing->setProperty("instance", instance);
        }
    } else if (existing == nullptr && name == kTwitter) {
        existing = plugin->MakeTwitter(endpoints_.value(name, SnsEndpoints::Twitter()), Owner());
    } else if (existing == nullptr && name == kFacebook) {
        existing = plugin->MakeOAuth2(name, Title(name),
                                      endpoints_.value(name, SnsEndpoints::Facebook()), false,
                                      Owner());
    }
    if (existing != nullptr) providers_.insert(name, existing);
    return existing;
}

void SnsGateway::Drop(const QString& name) {
    SnsProvider* provider = providers_.take(name);
    if (provider == nullptr) return;
    provider->CancelSignIn();
    provider->deleteLater();
}

void SnsGateway::Tell(SnsListener* listener, std::function<void(SnsListener&)> call) {
    if (listener == nullptr) return;
    QTimer::singleShot(0, Owner(), [this, listener, call = std::move(call)] {
        if (listener_ == listener) call(*listener);
    });
}

int SnsGateway::IsLoggedIn(const QString& name) {
    if (Provider(name) == nullptr) return -1;
    const int id = ++lastRequestId_;
    SnsListener* listener = listener_;
    auto answer = [this, listener, id, name](bool loggedIn, bool ok, const QString& code,
                                              const QString& message) {
        Tell(listener, [=](SnsListener& l) {
            l.OnSnsLoggedInStatusReceived(id, name, loggedIn, ok, code, message);
        });
    };
    Store()->Read(name, [this, name, answer](const QString& stored) {
        const SnsAuthResult token = TokenFromText(stored, TokenServer(name));
        SnsProvider* provider = Provider(name);
        if (token.tokenKey.isEmpty() || provider == nullptr) return answer(false, true, {}, {});
        provider->Verify(token, [answer](const SnsOutcome& outcome) {
            // A token the provider no longer accepts is "not logged in", not a failure:
            // the user signs in again.
            if (outcome.IsUnauthorized()) return answer(false, true, {}, {});
            answer(outcome.ok, outcome.ok, outcome.errorCode, outcome.errorMessage);
        });
    });
    return id;
}

bool SnsGateway::Authenticate(const QString& name, const QString& key, const QString& secret) {
    SnsProvider* provider = Provider(name);
    if (provider == nullptr) return false;
    SnsListener* listener = listener_;
    SnsProvider::Browser browser =
        browser_ ? browser_ : [](const QUrl& url) { return QDesktopServices::openUrl(url); };
    return provider->Authenticate(
        key, secret, browser,
        [this, listener, name](const SnsAuthResult& result, const QString& message) {
            Tell(listener, [=](SnsListener& l) { l.OnSnsAuthenticated(name, result, message); });
        });
}

void SnsGateway::AddAuthResult(const QString& name, const SnsAuthResult& result) {
    if (Provider(name) == nullptr || result.tokenKey.isEmpty()) return;
    Store()->Write(name, TokenText(result, TokenServer(name)));
}

int SnsGateway::UpdateMyStatusText(const QString& name, const QString& text) {
    if (Provider(name) == nullptr) return -1;
    const int id = ++lastRequestId_;
    SnsListener* listener = listener_;
    auto answer = [this, listener, id, name](const SnsOutcome& outcome) {
        Tell(listener, [=](SnsListener& l) {
            l.OnMySnsStatusTextUpdated(id, name, outcome.ok, outcome.errorCode, outcome.errorMessage);
        });
    };
    Store()->Read(name, [this, name, text, answer](const QString& stored) {
        const SnsAuthResult token = TokenFromText(stored, TokenServer(name));
        SnsProvider* provider = Provider(name);
        if (token.tokenKey.isEmpty() || provider == nullptr)
            return answer(SnsOutcome::Failure(
                QStringLiteral("401"),
                SnsOutcome::Text(QStringLiteral("sns__ Please sign in to %@ first."), {Title(name)})));
        provider->Post(token, text, answer);
    });
    return id;
}

void SnsGateway::SignOut(const QString& name) {
    if (SnsProvider* provider = providers_.value(name)) provider->CancelSignIn();
    SnsTokenStore* store = Store();
    if (store != nullptr && (name == kTwitter || name == kFacebook || name == kMastodon))
        store->Remove(name);
}

void SnsGateway::SetBrowser(SnsProvider::Browser browser) {
    browser_ = std::move(browser);
}

void SnsGateway::SetEndpoints(const QString& name, const SnsEndpoints& endpoints) {
    Drop(name);
    endpoints_.insert(name, endpoints);
}

void SnsGateway::Reset(SnsTokenStore::Backend backend) {
    for (const QString& name : providers_.keys()) Drop(name);
    endpoints_.clear();
    browser_ = {};
    listener_ = nullptr;
    if (store_ != nullptr) store_->deleteLater();
    store_ = Plugin() != nullptr ? Plugin()->MakeTokenStore(backend, Owner()) : nullptr;
}
