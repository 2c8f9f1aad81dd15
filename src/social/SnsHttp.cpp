#include "SnsHttp.h"

#include <QNetworkReply>

SnsHttp::SnsHttp(const QString& providerTitle, int timeoutMs, QObject* parent)
    : QObject(parent), title_(providerTitle) {
    manager_.setTransferTimeout(timeoutMs);
}

SnsHttp::~SnsHttp() {
    // Replies are the manager's children: drop their callbacks before the manager
    // aborts and deletes them.
    for (QNetworkReply* reply : manager_.findChildren<QNetworkReply*>()) {
        reply->disconnect(this);
        reply->abort();
    }
}

void SnsHttp::Send(QNetworkRequest request, const QByteArray& verb, const QByteArray& body,
                   Done done) {
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    QNetworkReply* reply = manager_.sendCustomRequest(request, verb, body);
    connect(reply, &QNetworkReply::finished, this, [this, reply, done = std::move(done)] {
        reply->deleteLater();
        done(SnsOutcome::From(reply, title_, true));
    });
}

void SnsHttp::PostForm(const QUrl& url, const QList<std::pair<QString, QString>>& fields,
                       const QString& bearer, Done done) {
    QByteArray form;
    for (const auto& [name, value] : fields) {
        if (!form.isEmpty()) form += '&';
        form += QUrl::toPercentEncoding(name) + '=' + QUrl::toPercentEncoding(value);
    }
    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::ContentTypeHeader,
                      QByteArrayLiteral("application/x-www-form-urlencoded"));
    if (!bearer.isEmpty())
        request.setRawHeader("Authorization", "Bearer " + bearer.toUtf8());
    Send(request, "POST", form, std::move(done));
}
