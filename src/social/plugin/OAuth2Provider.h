#pragma once

#include <QPointer>

#include "SnsEndpoints.h"
#include "SnsProvider.h"
#include "SnsSignIn.h"

class SnsHttp;

// The OAuth 2 providers: "facebook" (the application's fixed id and secret) and
// "mastodon" (an instance the user chose, where the application first registers itself).
//
// Signing in is the authorisation code flow of Qt NetworkAuth
// (QOAuth2AuthorizationCodeFlow) with the browser sent back to the loopback port. The
// result's token is the access token; its secret is the refresh token or, when the
// provider gives none, the token type "Bearer", so that a result is complete exactly
// when both are set. Checking and posting send the token as a Bearer header; the text
// goes as the form field named by the endpoints ("message", "status").
//
// Registration (when `registers` is set): POST to the instance's apps endpoint with the
// loopback address as redirect; the answered client id and secret are kept in the
// Preference "<name>-app" together with the instance and redirect they were issued for,
// and reused while both still match (the next sign-in listens on the same port first).
// GUI thread only.
class OAuth2Provider : public SnsProvider {
    Q_OBJECT
public:
    OAuth2Provider(const QString& name, const QString& title, const SnsEndpoints& endpoints,
                   bool registers, QObject* parent = nullptr);
    ~OAuth2Provider() override;

    bool Authenticate(const QString& key, const QString& secret, const Browser& browser,
                      AuthDone done) override;
    void Verify(const SnsAuthResult& token, Done done) override;
    void Post(const SnsAuthResult& token, const QString& text, Done done) override;
    void CancelSignIn() override;

private:
    struct Registration {
        QString server, redirect, clientId, clientSecret;
    };
    Registration StoredRegistration() const;
    void Register(const Browser& browser);
    void StartFlow(const QString& clientId, const QString& clientSecret, const Browser& browser);
    QString Server() const;

    QString name_;
    SnsEndpoints endpoints_;
    bool registers_;
    SnsHttp* http_;
    QPointer<SnsSignIn> signIn_;
};
