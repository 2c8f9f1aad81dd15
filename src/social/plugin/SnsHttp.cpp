#include "SnsHttp.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QNetworkReply>

namespace {

// The explanation providers put into their error bodies: OAuth 2 ("error_description",
// "error"), Facebook ({"error": {"message"}}), Twitter ({"detail"}, {"errors": [{"message"}]})
// and Mastodon ({"error"}).
QString ProviderExplanation(const QJsonObject& json) {
    const QJsonValue error = json.value(QStringLiteral("error"));
    if (error.isObject()) return error.toObject().value(QStringLiteral("message")).toString();
    for (const char* field : {"error_description", "detail", "error", "title"}) {
        const QString text = json.value(QLatin1String(field)).toString();
        if (!text.isEmpty()) return text;
    }
    const QJsonArray errors = json.value(QStringLiteral("errors")).toArray();
    if (!errors.isEmpty()) return errors.first().toObject().value(QStringLiteral("message")).toString();
    return {};
}

}  // namespace

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
        done(OutcomeOf(reply, title_, true));
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

SnsOutcome SnsHttp::OutcomeOf(QNetworkReply* reply, const QString& providerTitle,
                              bool expectJson) {
    SnsOutcome outcome;
    outcome.httpStatus = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QByteArray body = reply->isOpen() ? reply->peek(reply->bytesAvailable()) : QByteArray();
    const QJsonDocument document = QJsonDocument::fromJson(body);
    outcome.json = document.object();

    const QNetworkReply::NetworkError error = reply->error();
    if (error == QNetworkReply::OperationCanceledError || error == QNetworkReply::TimeoutError)
        return SnsOutcome::Failure(QStringLiteral("timeout"),
                       SnsOutcome::Text(QStringLiteral("sns__ %@ did not answer in time. Please try again later."),
                            {providerTitle}));
    if (outcome.httpStatus == 0 && error != QNetworkReply::NoError)
        return SnsOutcome::Failure(QStringLiteral("network"),
                       SnsOutcome::Text(QStringLiteral("sns__ Could not reach %@. Please check the connection."),
                            {providerTitle}));
    if (outcome.httpStatus < 200 || outcome.httpStatus > 299) {
        const QString explanation = ProviderExplanation(outcome.json);
        SnsOutcome failure = SnsOutcome::Failure(
            QString::number(outcome.httpStatus),
            explanation.isEmpty()
                ? SnsOutcome::Text(QStringLiteral("sns__ %@ refused the request (error %@)."),
                       {providerTitle, QString::number(outcome.httpStatus)})
                : SnsOutcome::Text(QStringLiteral("sns__ %@ refused the request: %@"), {providerTitle, explanation}));
        failure.httpStatus = outcome.httpStatus;
        failure.json = outcome.json;
        return failure;
    }
    if (expectJson && !document.isObject())
        return SnsOutcome::Failure(QStringLiteral("malformed"),
                       SnsOutcome::Text(QStringLiteral("sns__ %@ sent an answer that could not be read."),
                            {providerTitle}));
    outcome.ok = true;
    return outcome;
}
