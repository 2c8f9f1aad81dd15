#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <functional>

#include "SnsEndpoints.h"
#include "SnsListener.h"
#include "SnsProvider.h"
#include "SnsTokenStore.h"

class SnsPlugin;

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
// before it goes away, and answers that arrive after that are dropped: an answer goes
// only to the listener that was set when its request was made.
//
// Tokens are kept by SnsTokenStore (the system keyring, or Options.db3 without one) as a
// small JSON text; they never reach a log, standard output or an export. Each provider
// answers through its SnsProvider (TwitterProvider, OAuth2Provider), reached at the
// SnsEndpoints of SnsEndpoints::Twitter() and so on unless SetEndpoints says otherwise.
// Network, HTTP and format failures and timeouts arrive as `ok` false with a message
// for the user; a token the provider rejects makes IsLoggedIn answer "not logged in".
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
    // Forgets the stored token of `provider` and abandons its sign-in, if one runs.
    void SignOut(const QString& provider);

    // The application's client credentials for Authenticate: the consumer key and secret
    // ("twitter") or application id and secret ("facebook"); empty for others.
    static QString ClientKey(const QString& provider);
    static QString ClientSecret(const QString& provider);

    // What shows the authorisation page; by default QDesktopServices::openUrl (the
    // system browser). Tests follow the page themselves.
    void SetBrowser(SnsProvider::Browser browser);
    // Where `provider` is reached from now on (tests: a server on 127.0.0.1).
    void SetEndpoints(const QString& provider, const SnsEndpoints& endpoints);
    // Replaces the token store (tests: the Options.db3 one) and forgets every provider,
    // endpoint and browser set before, as on a fresh start.
    void Reset(SnsTokenStore::Backend backend);

private:
    SnsGateway();
    // The providers and the token store come from the social plug-in, loaded on first
    // use; without it no provider can be reached (requests answer -1 or false).
    static SnsPlugin* Plugin();
    SnsProvider* Provider(const QString& provider);
    QObject* Owner();
    void Drop(const QString& provider);
    SnsTokenStore* Store();  // null without the plug-in
    // Calls `call` later with the listener, if it is still `listener`.
    void Tell(SnsListener* listener, std::function<void(SnsListener&)> call);
    static QString MastodonInstance();
    // The server a token of `provider` belongs to: the Mastodon instance, else empty.
    static QString TokenServer(const QString& provider);

    SnsListener* listener_ = nullptr;
    int lastRequestId_ = 0;
    // Parent of the providers and the store; gone with the application object.
    QPointer<QObject> owner_;
    QPointer<SnsTokenStore> store_;
    QHash<QString, QPointer<SnsProvider>> providers_;
    QHash<QString, SnsEndpoints> endpoints_;
    SnsProvider::Browser browser_;
};
