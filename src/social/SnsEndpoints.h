#pragma once

#include <QString>
#include <QUrl>

// Where one social-network provider is reached, and how long the gateway waits for it.
//
// The defaults are the providers' public addresses. An environment variable
// PEDOMETER_SNS_<PROVIDER>_BASE (TWITTER, FACEBOOK, MASTODON) moves every address of a
// provider under one base ("http://127.0.0.1:8080"), keeping the paths; tests set the
// struct directly through SnsGateway::SetEndpoints. Plain values, any thread.
struct SnsEndpoints {
    // OAuth 1.0a only: where temporary credentials are requested.
    QUrl requestToken;
    // Opened in the browser for the user to approve the application.
    QUrl authorize;
    // Where the approved grant is exchanged for an access token.
    QUrl accessToken;
    // Answers 2xx while the stored token is valid.
    QUrl verify;
    // Where a status text is posted, and the JSON member (Twitter) or form field that
    // carries it.
    QUrl post;
    QString postField;
    // Mastodon only: where the application registers itself with the instance.
    QUrl registerApp;
    QString scope;
    // Any single request; the whole sign-in, browser step included.
    int requestTimeoutMs = 20000;
    int signInTimeoutMs = 5 * 60 * 1000;

    static SnsEndpoints Twitter();
    static SnsEndpoints Facebook();
    // `instance` as the user typed it: "mastodon.social" or "https://example.org".
    static SnsEndpoints Mastodon(const QString& instance);

    // The same endpoints with scheme, host and port taken from `base`, paths kept.
    SnsEndpoints Rebased(const QUrl& base) const;
    // "example.org" becomes "https://example.org"; an empty or unusable text gives an
    // empty URL.
    static QUrl InstanceUrl(const QString& instance);
};
