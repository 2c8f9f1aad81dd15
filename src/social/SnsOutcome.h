#pragma once

#include <QJsonObject>
#include <QString>

// How one request to a social-network provider ended, in terms a user can read.
//
// SnsHttp::OutcomeOf reads one from a finished reply. Messages come from the application's
// texts (SnsHost) and never quote a token.
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

    static SnsOutcome Failure(const QString& code, const QString& message);
    // A resource text with its "%@" placeholders filled in order of appearance.
    static QString Text(const QString& key, const QStringList& values = {});
};
