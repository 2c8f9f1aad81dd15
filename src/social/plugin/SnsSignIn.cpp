#include "SnsSignIn.h"

#include <QAbstractOAuth>
#include <QNetworkReply>
#include <QOAuthHttpServerReplyHandler>

#include "SnsHttp.h"

SnsSignIn::SnsSignIn(SnsHttp* http, const SnsEndpoints& endpoints, SnsProvider::AuthDone done,
                     QObject* parent)
    : QObject(parent), http_(http), endpoints_(endpoints), done_(std::move(done)) {
    timeout_.setSingleShot(true);
    connect(&timeout_, &QTimer::timeout, this, [this] {
        Fail(SnsOutcome::Text(
            QStringLiteral("sns__ Signing in to %@ took too long. Please try again."),
            {http_->ProviderTitle()}));
    });
    timeout_.start(endpoints_.signInTimeoutMs);
    connect(http_->Manager(), &QNetworkAccessManager::finished, this, &SnsSignIn::OnReplyFinished);
}

SnsSignIn::~SnsSignIn() {
    finished_ = true;
    // The flow may still have a request running on the shared manager; it must not
    // answer into a deleted flow.
    if (flow_ != nullptr) flow_->disconnect(this);
}

bool SnsSignIn::Listen(quint16 port) {
    handler_ = new QOAuthHttpServerReplyHandler(QHostAddress::LocalHost, port, this);
    if (!handler_->isListening() && port != 0) handler_->listen(QHostAddress::LocalHost, 0);
    if (!handler_->isListening()) return false;
    handler_->setCallbackText(SnsOutcome::Text(
        QStringLiteral("sns__ Signed in. You may close this page and return to the pedometer.")));
    // A refusal in the browser comes back as "error" (OAuth 2) or "denied" (OAuth 1.0a);
    // the flows would wait for a code that never comes. Qt's OAuth 1.0a flow must not see
    // a callback without a verifier at all: its handler of that case reads freed memory.
    const bool oauth1 = !endpoints_.requestToken.isEmpty();
    connect(handler_, &QAbstractOAuthReplyHandler::callbackReceived, this,
            [this, oauth1](const QVariantMap& values) {
                if (values.contains(QStringLiteral("error")) ||
                    (oauth1 && !values.contains(QStringLiteral("oauth_verifier")))) {
                    QObject::disconnect(handler_, &QAbstractOAuthReplyHandler::callbackReceived,
                                        nullptr, nullptr);
                    Fail(SnsOutcome::Text(QStringLiteral("sns__ Signing in to %@ was cancelled."),
                                          {http_->ProviderTitle()}));
                }
            });
    return true;
}

QString SnsSignIn::Callback() const {
    return handler_ != nullptr ? handler_->callback() : QString();
}

void SnsSignIn::Watch(QAbstractOAuth* flow, const SnsProvider::Browser& browser,
                      std::function<SnsAuthResult()> result) {
    flow_ = flow;
    flow_->setParent(this);
    flow_->setReplyHandler(handler_);
    connect(flow_, &QAbstractOAuth::authorizeWithBrowser, this, [this, browser](const QUrl& url) {
        if (!browser || !browser(url))
            Fail(SnsOutcome::Text(
                QStringLiteral("sns__ Could not open the web browser to sign in.")));
    });
    connect(flow_, &QAbstractOAuth::granted, this,
            [this, result = std::move(result)] { Finish(result(), QString(), true); });
    // A failed request is reported on the manager too, with the provider's explanation;
    // that one is told first, this is the fallback for answers that were merely unusable.
    connect(flow_, &QAbstractOAuth::requestFailed, this, [this] {
        QTimer::singleShot(0, this, [this] {
            Fail(SnsOutcome::Text(QStringLiteral("sns__ %@ sent an answer that could not be read."),
                                  {http_->ProviderTitle()}));
        });
    });
}

void SnsSignIn::Fail(const QString& message) {
    Finish(SnsAuthResult{}, message, true);
}

void SnsSignIn::Abandon() {
    Finish(SnsAuthResult{}, QString(), false);
}

void SnsSignIn::Finish(const SnsAuthResult& result, const QString& message, bool tell) {
    if (finished_) return;
    finished_ = true;
    timeout_.stop();
    if (handler_ != nullptr) handler_->close();
    if (flow_ != nullptr) flow_->disconnect(this);
    StopTokenRequests();
    deleteLater();
    if (tell) done_(result, message);
}

bool SnsSignIn::IsTokenRequest(const QNetworkReply* reply) const {
    const QUrl url = reply->url().adjusted(QUrl::RemoveQuery);
    return url == endpoints_.requestToken || url == endpoints_.accessToken;
}

void SnsSignIn::StopTokenRequests() {
    // Qt's OAuth flows hear their token requests through connections that do not end
    // with the flow: a request still running when the flow is deleted would answer into
    // freed memory. Aborting finishes it now, while the flow is still there.
    for (QNetworkReply* reply : http_->Manager()->findChildren<QNetworkReply*>()) {
        if (reply->isRunning() && IsTokenRequest(reply)) reply->abort();
    }
}

void SnsSignIn::OnReplyFinished(QNetworkReply* reply) {
    if (finished_ || !IsTokenRequest(reply)) return;
    // OAuth 1.0a token endpoints answer with a form, OAuth 2 ones with JSON.
    const bool json = endpoints_.requestToken.isEmpty();
    const SnsOutcome outcome = SnsHttp::OutcomeOf(reply, http_->ProviderTitle(), json);
    const bool hasToken =
        json ? !outcome.json.value(QStringLiteral("access_token")).toString().isEmpty()
             : reply->isOpen() && reply->peek(reply->bytesAvailable()).contains("oauth_token=");
    if (!outcome.ok)
        Fail(outcome.errorMessage);
    else if (!hasToken)
        Fail(SnsOutcome::Text(QStringLiteral("sns__ %@ sent an answer that could not be read."),
                              {http_->ProviderTitle()}));
}
