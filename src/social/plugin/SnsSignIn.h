#pragma once

#include <QObject>
#include <QTimer>
#include <QUrl>
#include <functional>

#include "SnsEndpoints.h"
#include "SnsProvider.h"

class QAbstractOAuth;
class QNetworkReply;
class QOAuthHttpServerReplyHandler;
class SnsHttp;

// One sign-in in progress: the loopback port that receives the browser's redirect, the
// OAuth flow that the provider set up on it, and everything that can end it.
//
// It ends exactly once, through the AuthDone given at construction: granted; refused or
// cancelled in the browser; a failed or unreadable answer of the provider's token
// endpoints (seen on the provider's access manager); the browser not opening; or no end
// within the sign-in timeout. After the end the port is closed and nothing more is told.
// It deletes itself (later) once ended; its provider follows it with a QPointer and
// deletes it at once only when the provider itself goes. GUI thread only.
class SnsSignIn : public QObject {
    Q_OBJECT
public:
    SnsSignIn(SnsHttp* http, const SnsEndpoints& endpoints, SnsProvider::AuthDone done,
              QObject* parent = nullptr);
    ~SnsSignIn() override;

    // Opens the loopback port on 127.0.0.1, `port` if given and free, else any; false
    // when none can be opened.
    bool Listen(quint16 port = 0);
    QOAuthHttpServerReplyHandler* Handler() const { return handler_; }
    // The address the browser is sent back to.
    QString Callback() const;

    // Follows `flow` (owned from now on) to its end; `result` reads the granted token.
    void Watch(QAbstractOAuth* flow, const SnsProvider::Browser& browser,
               std::function<SnsAuthResult()> result);
    void Fail(const QString& message);
    // Ends without telling anyone (a newer sign-in replaces this one).
    void Abandon();

private:
    void Finish(const SnsAuthResult& result, const QString& message, bool tell);
    void OnReplyFinished(QNetworkReply* reply);
    bool IsTokenRequest(const QNetworkReply* reply) const;
    void StopTokenRequests();

    SnsHttp* http_;
    SnsEndpoints endpoints_;
    SnsProvider::AuthDone done_;
    QOAuthHttpServerReplyHandler* handler_ = nullptr;
    QAbstractOAuth* flow_ = nullptr;
    QTimer timeout_;
    bool finished_ = false;
};
