#include "OAuth2Provider.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QOAuth2AuthorizationCodeFlow>

#include "SnsClientCredentials.h"
#include "SnsHost.h"
#include "SnsHttp.h"

OAuth2Provider::OAuth2Provider(const QString& name, const QString& title,
                               const SnsEndpoints& endpoints, bool registers, QObject* parent)
    : SnsProvider(parent),
      name_(name),
      endpoints_(endpoints),
      registers_(registers),
      http_(new SnsHttp(title, endpoints.requestTimeoutMs, this)) {}

OAuth2Provider::~OAuth2Provider() {
    delete signIn_.data();  // before the access manager its flow uses
}

QString OAuth2Provider::Server() const {
    return endpoints_.authorize.adjusted(QUrl::RemovePath).toString();
}

OAuth2Provider::Registration OAuth2Provider::StoredRegistration() const {
    const QJsonObject stored =
        QJsonDocument::fromJson(
            SnsHost::Get().GetPreference(name_ + QStringLiteral("-app")).toUtf8())
            .object();
    Registration r{stored.value(QStringLiteral("server")).toString(),
                   stored.value(QStringLiteral("redirect")).toString(),
                   stored.value(QStringLiteral("client_id")).toString(),
                   stored.value(QStringLiteral("client_secret")).toString()};
    if (r.server != Server() || r.clientId.isEmpty()) return {};
    return r;
}

bool OAuth2Provider::Authenticate(const QString& key, const QString& secret,
                                  const Browser& browser, AuthDone done) {
    CancelSignIn();
    if (endpoints_.authorize.isEmpty()) return false;
    auto* signIn = new SnsSignIn(http_, endpoints_, std::move(done), this);
    const Registration stored = registers_ ? StoredRegistration() : Registration{};
    if (!signIn->Listen(static_cast<quint16>(QUrl(stored.redirect).port(0)))) {
        delete signIn;
        return false;
    }
    signIn_ = signIn;
    if (!registers_)
        StartFlow(key.isEmpty() ? SnsClientCredentials::kFacebookId : key,
                  secret.isEmpty() ? SnsClientCredentials::kFacebookSecret : secret,
                  browser);
    else if (stored.redirect == signIn->Callback())
        StartFlow(stored.clientId, stored.clientSecret, browser);
    else
        Register(browser);
    return true;
}

void OAuth2Provider::Register(const Browser& browser) {
    const QString redirect = signIn_->Callback();
    http_->PostForm(
        endpoints_.registerApp,
        {{QStringLiteral("client_name"), QStringLiteral("Pedometer")},
         {QStringLiteral("redirect_uris"), redirect},
         {QStringLiteral("scopes"), endpoints_.scope}},
        {}, [this, signIn = signIn_, redirect, browser](const SnsOutcome& outcome) {
            if (signIn == nullptr || signIn != signIn_) return;  // abandoned meanwhile
            const QString id = outcome.json.value(QStringLiteral("client_id")).toString();
            const QString secret = outcome.json.value(QStringLiteral("client_secret")).toString();
            if (!outcome.ok) return signIn->Fail(outcome.errorMessage);
            if (id.isEmpty() || secret.isEmpty())
                return signIn->Fail(
                    SnsOutcome::Text(QStringLiteral("sns__ %@ sent an answer that could not be read."),
                                     {http_->ProviderTitle()}));
            const QJsonObject kept{{QStringLiteral("server"), Server()},
                                   {QStringLiteral("redirect"), redirect},
                                   {QStringLiteral("client_id"), id},
                                   {QStringLiteral("client_secret"), secret}};
            SnsHost::Get().SetPreference(
                name_ + QStringLiteral("-app"),
                QString::fromUtf8(QJsonDocument(kept).toJson(QJsonDocument::Compact)));
            StartFlow(id, secret, browser);
        });
}

void OAuth2Provider::StartFlow(const QString& clientId, const QString& clientSecret,
                               const Browser& browser) {
    auto* flow = new QOAuth2AuthorizationCodeFlow(http_->Manager());
    flow->setAuthorizationUrl(endpoints_.authorize);
    flow->setAccessTokenUrl(endpoints_.accessToken);
    flow->setClientIdentifier(clientId);
    flow->setClientIdentifierSharedKey(clientSecret);
    flow->setScope(endpoints_.scope);
    signIn_->Watch(flow, browser, [flow] {
        const QString refresh = flow->refreshToken();
        return SnsAuthResult{flow->token(), refresh.isEmpty() ? QStringLiteral("Bearer") : refresh};
    });
    flow->grant();
}

void OAuth2Provider::CancelSignIn() {
    if (signIn_ != nullptr) signIn_->Abandon();
}

void OAuth2Provider::Verify(const SnsAuthResult& token, Done done) {
    QNetworkRequest request(endpoints_.verify);
    request.setRawHeader("Authorization", "Bearer " + token.tokenKey.toUtf8());
    http_->Send(request, "GET", {}, std::move(done));
}

void OAuth2Provider::Post(const SnsAuthResult& token, const QString& text, Done done) {
    http_->PostForm(endpoints_.post, {{endpoints_.postField, text}}, token.tokenKey, std::move(done));
}
