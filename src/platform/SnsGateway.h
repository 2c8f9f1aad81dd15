#pragma once

#include <QString>
#include <QStringList>

#include "SnsListener.h"

// Posting short texts to social networks on the user's behalf: "twitter" (OAuth 1.0a),
// "facebook" (OAuth 2) and, when an instance is configured, "mastodon".
//
// The flow the report screen follows: IsLoggedIn(provider); when not signed in,
// Authenticate(provider, key, secret), which lets the user sign in and reports the
// token through OnSnsAuthenticated; AddAuthResult stores it; IsLoggedIn again; then
// UpdateMyStatusText. Requests return an id (or -1 when the request cannot be made at
// all, for an unknown provider for instance) and answer through the listener.
//
// GUI thread only. The listener is not owned; a screen clears it (SetListener(nullptr))
// before it goes away, and answers that arrive after that are dropped.
class SnsGateway {
public:
    static SnsGateway& GetInstance();

    void SetListener(SnsListener* listener);
    // The providers a user can post to now, in menu order.
    QStringList Providers() const;

    int IsLoggedIn(const QString& provider);
    // Starts signing in with the application's client credentials; false when it
    // cannot start (unknown provider, no browser, no loopback port).
    bool Authenticate(const QString& provider, const QString& key, const QString& secret);
    void AddAuthResult(const QString& provider, const SnsAuthResult& result);
    int UpdateMyStatusText(const QString& provider, const QString& text);
    // Forgets the stored token of `provider`.
    void SignOut(const QString& provider);

private:
    SnsGateway() = default;
    SnsListener* listener_ = nullptr;
};
