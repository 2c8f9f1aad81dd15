#pragma once

#include <QPointer>

#include "SnsClientCredentials.h"
#include "SnsEndpoints.h"
#include "SnsSignIn.h"
#include "SnsProvider.h"

class SnsHttp;

// The "twitter" provider: OAuth 1.0a with HMAC-SHA1 signatures (Qt NetworkAuth's
// QOAuth1). Signing in runs request token, browser approval on the loopback port and
// access token; the result carries the user's token and token secret. Checking a token
// asks the account endpoint, posting sends {"text": ...}, both signed with the
// application's consumer credentials and the user's token. GUI thread only.
class TwitterProvider : public SnsProvider {
    Q_OBJECT
public:
    explicit TwitterProvider(const SnsEndpoints& endpoints, QObject* parent = nullptr);
    ~TwitterProvider() override;

    bool Authenticate(const QString& key, const QString& secret, const Browser& browser,
                      AuthDone done) override;
    void Verify(const SnsAuthResult& token, Done done) override;
    void Post(const SnsAuthResult& token, const QString& text, Done done) override;
    void CancelSignIn() override;

private:
    void SendSigned(const QUrl& url, const QByteArray& verb, const SnsAuthResult& token,
                    const QByteArray& json, Done done);

    SnsEndpoints endpoints_;
    SnsHttp* http_;
    QPointer<SnsSignIn> signIn_;
    QString key_ = SnsClientCredentials::kTwitterKey;
    QString secret_ = SnsClientCredentials::kTwitterSecret;
};
