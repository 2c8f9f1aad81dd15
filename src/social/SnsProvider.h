#pragma once

#include <QObject>
#include <QString>
#include <QUrl>
#include <functional>

#include "SnsListener.h"
#include "SnsOutcome.h"

// One social network as SnsGateway sees it: signing in through the browser, checking a
// stored token, posting a status text. TwitterProvider and OAuth2Provider implement it.
//
// Every callback runs later on the GUI thread, never inside the call that started the
// work, and at most once. Destroying a provider drops the callbacks of its unfinished
// work. GUI thread only.
class SnsProvider : public QObject {
public:
    // Shows the authorisation page to the user; false when it cannot be shown.
    using Browser = std::function<bool(const QUrl&)>;
    // A complete result, or an empty one with a message for the user.
    using AuthDone = std::function<void(const SnsAuthResult&, const QString& errorMessage)>;
    using Done = std::function<void(const SnsOutcome&)>;

    using QObject::QObject;

    // Starts signing in with the application's client credentials (empty: the built-in
    // ones); false when it cannot start (no loopback port, provider not configured). A
    // sign-in already running is abandoned without an answer.
    virtual bool Authenticate(const QString& key, const QString& secret, const Browser& browser,
                              AuthDone done) = 0;
    // Asks the provider whether `token` is still accepted; a 401 outcome means it is not.
    virtual void Verify(const SnsAuthResult& token, Done done) = 0;
    virtual void Post(const SnsAuthResult& token, const QString& text, Done done) = 0;
    // Abandons a running sign-in without an answer.
    virtual void CancelSignIn() = 0;
};
