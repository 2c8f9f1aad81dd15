#pragma once

#include <QJsonObject>
#include <QString>

class QNetworkReply;

// How one request to a social-network provider ended, in terms a user can read.
//
// From() reads a finished reply without consuming it (the body is peeked, so an OAuth
// flow reading the same reply still gets it): network failures, timeouts, HTTP errors
// with the provider's own explanation when it sent one, and answers that should be a
// JSON object but are not. Messages come from AppResource and never quote a token.
// Plain value, GUI thread.
struct SnsOutcome {
    bool ok = false;
    // The HTTP status (401), "timeout", "network" or "malformed"; empty on success.
    QString errorCode;
    QString errorMessage;
    // The reply's JSON object when it had one.
    QJsonObject json;
    int httpStatus = 0;

    // True when the provider no longer accepts the token (signed out or revoked).
    bool IsUnauthorized() const { return httpStatus == 401; }

    // `providerTitle` names the provider in messages ("Twitter"); `expectJson` makes a
    // successful reply that is no JSON object a failure.
    static SnsOutcome From(QNetworkReply* reply, const QString& providerTitle, bool expectJson);
    static SnsOutcome Failure(const QString& code, const QString& message);
    // A resource text with its "%@" placeholders filled in order of appearance.
    static QString Text(const QString& key, const QStringList& values = {});
};
