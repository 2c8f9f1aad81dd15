#pragma once

#include <QString>

// What a social-network provider handed back after the user signed in: the access
// token and, for OAuth 1.0a providers, its secret. OAuth 2 providers put their refresh
// token, or "Bearer" when they give none, in `tokenSecret`, so a successful result always
// has both. Empty when signing in failed.
struct SnsAuthResult {
    QString tokenKey;
    QString tokenSecret;
};

// Told by SnsGateway how its requests ended, always on the GUI thread and never from
// inside the call that made the request. `ok` false carries the provider's or the
// network's error code and a message meant for the user.
class SnsListener {
public:
    virtual ~SnsListener() = default;
    virtual void OnSnsAuthenticated(const QString& provider, const SnsAuthResult& result,
                                    const QString& errorMessage) = 0;
    virtual void OnSnsLoggedInStatusReceived(int requestId, const QString& provider,
                                             bool isLoggedIn, bool ok, const QString& errorCode,
                                             const QString& errorMessage) = 0;
    virtual void OnMySnsStatusTextUpdated(int requestId, const QString& provider, bool ok,
                                          const QString& errorCode,
                                          const QString& errorMessage) = 0;
};
