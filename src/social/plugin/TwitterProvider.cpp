#include "TwitterProvider.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QOAuth1>

#include "SnsHttp.h"
#include "SnsSignIn.h"

TwitterProvider::TwitterProvider(const SnsEndpoints& endpoints, QObject* parent)
    : SnsProvider(parent),
      endpoints_(endpoints),
      http_(new SnsHttp(QStringLiteral("Twitter"), endpoints.requestTimeoutMs, this)) {}

TwitterProvider::~TwitterProvider() {
    delete signIn_.data();  // before the access manager its flow uses
}

bool TwitterProvider::Authenticate(const QString& key, const QString& secret,
                                   const Browser& browser, AuthDone done) {
    CancelSignIn();
    if (!key.isEmpty() && !secret.isEmpty()) {
        key_ = key;
        secret_ = secret;
    }
    auto* signIn = new SnsSignIn(http_, endpoints_, std::move(done), this);
    if (!signIn->Listen()) {
        delete signIn;
        return false;
    }
    auto* flow = new QOAuth1(key_, secret_, http_->Manager());
    flow->setSignatureMethod(QOAuth1::SignatureMethod::Hmac_Sha1);
    flow->setTemporaryCredentialsUrl(endpoints_.requestToken);
    flow->setAuthorizationUrl(endpoints_.authorize);
    flow->setTokenCredentialsUrl(endpoints_.accessToken);
    signIn->Watch(flow, browser, [flow] { return SnsAuthResult{flow->token(), flow->tokenSecret()}; });
    signIn_ = signIn;
    flow->grant();
    return true;
}

void TwitterProvider::CancelSignIn() {
    if (signIn_ != nullptr) signIn_->Abandon();
}

void TwitterProvider::SendSigned(const QUrl& url, const QByteArray& verb,
                                 const SnsAuthResult& token, const QByteArray& json, Done done) {
    QOAuth1 signer(key_, secret_, nullptr);
    signer.setTokenCredentials(token.tokenKey, token.tokenSecret);
    QNetworkRequest request(url);
    if (!json.isEmpty())
        request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/json"));
    signer.prepareRequest(&request, verb, json);
    http_->Send(request, verb, json, std::move(done));
}

void TwitterProvider::Verify(const SnsAuthResult& token, Done done) {
    SendSigned(endpoints_.verify, "GET", token, {}, std::move(done));
}

void TwitterProvider::Post(const SnsAuthResult& token, const QString& text, Done done) {
    const QByteArray body =
        QJsonDocument(QJsonObject{{endpoints_.postField, text}}).toJson(QJsonDocument::Compact);
    SendSigned(endpoints_.post, "POST", token, body, std::move(done));
}
