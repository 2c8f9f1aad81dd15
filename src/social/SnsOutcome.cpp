#include "SnsOutcome.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QNetworkReply>

#include "AppResource.h"

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

SnsOutcome SnsOutcome::Failure(const QString& code, const QString& message) {
    SnsOutcome outcome;
    outcome.errorCode = code;
    outcome.errorMessage = message;
    return outcome;
}

QString SnsOutcome::Text(const QString& key, const QStringList& values) {
    return AppResource::GetInstance().GetString(key, values);
}

SnsOutcome SnsOutcome::From(QNetworkReply* reply, const QString& providerTitle, bool expectJson) {
    SnsOutcome outcome;
    outcome.httpStatus = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QByteArray body = reply->isOpen() ? reply->peek(reply->bytesAvailable()) : QByteArray();
    const QJsonDocument document = QJsonDocument::fromJson(body);
    outcome.json = document.object();

    const QNetworkReply::NetworkError error = reply->error();
    if (error == QNetworkReply::OperationCanceledError || error == QNetworkReply::TimeoutError)
        return Failure(QStringLiteral("timeout"),
                       Text(QStringLiteral("sns__ %@ did not answer in time. Please try again later."),
                            {providerTitle}));
    if (outcome.httpStatus == 0 && error != QNetworkReply::NoError)
        return Failure(QStringLiteral("network"),
                       Text(QStringLiteral("sns__ Could not reach %@. Please check the connection."),
                            {providerTitle}));
    if (outcome.httpStatus < 200 || outcome.httpStatus > 299) {
        const QString explanation = ProviderExplanation(outcome.json);
        SnsOutcome failure = Failure(
            QString::number(outcome.httpStatus),
            explanation.isEmpty()
                ? Text(QStringLiteral("sns__ %@ refused the request (error %@)."),
                       {providerTitle, QString::number(outcome.httpStatus)})
                : Text(QStringLiteral("sns__ %@ refused the request: %@"), {providerTitle, explanation}));
        failure.httpStatus = outcome.httpStatus;
        failure.json = outcome.json;
        return failure;
    }
    if (expectJson && !document.isObject())
        return Failure(QStringLiteral("malformed"),
                       Text(QStringLiteral("sns__ %@ sent an answer that could not be read."),
                            {providerTitle}));
    outcome.ok = true;
    return outcome;
}
