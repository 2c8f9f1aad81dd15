#include "SnsEndpoints.h"

#include <QtGlobal>

namespace {

// Honours PEDOMETER_SNS_<NAME>_BASE when it is set.
SnsEndpoints FromEnvironment(SnsEndpoints endpoints, const char* variable) {
    const QString base = qEnvironmentVariable(variable);
    return base.isEmpty() ? endpoints : endpoints.Rebased(QUrl(base));
}

QUrl Under(const QUrl& base, const QString& path) {
    QUrl url = base;
    url.setPath(path);
    return url;
}

}  // namespace

SnsEndpoints SnsEndpoints::Twitter() {
    SnsEndpoints e;
    e.requestToken = QUrl(QStringLiteral("https://api.twitter.com/oauth/request_token"));
    e.authorize = QUrl(QStringLiteral("https://api.twitter.com/oauth/authorize"));
    e.accessToken = QUrl(QStringLiteral("https://api.twitter.com/oauth/access_token"));
    e.verify = QUrl(QStringLiteral("https://api.twitter.com/2/users/me"));
    e.post = QUrl(QStringLiteral("https://api.twitter.com/2/tweets"));
    e.postField = QStringLiteral("text");
    return FromEnvironment(e, "PEDOMETER_SNS_TWITTER_BASE");
}

SnsEndpoints SnsEndpoints::Facebook() {
    SnsEndpoints e;
    e.authorize = QUrl(QStringLiteral("https://www.facebook.com/v19.0/dialog/oauth"));
    e.accessToken = QUrl(QStringLiteral("https://graph.facebook.com/v19.0/oauth/access_token"));
    e.verify = QUrl(QStringLiteral("https://graph.facebook.com/v19.0/me"));
    e.post = QUrl(QStringLiteral("https://graph.facebook.com/v19.0/me/feed"));
    e.postField = QStringLiteral("message");
    e.scope = QStringLiteral("public_profile");
    return FromEnvironment(e, "PEDOMETER_SNS_FACEBOOK_BASE");
}

SnsEndpoints SnsEndpoints::Mastodon(const QString& instance) {
    const QUrl base = InstanceUrl(instance);
    SnsEndpoints e;
    if (base.isEmpty()) return e;
    e.registerApp = Under(base, QStringLiteral("/api/v1/apps"));
    e.authorize = Under(base, QStringLiteral("/oauth/authorize"));
    e.accessToken = Under(base, QStringLiteral("/oauth/token"));
    e.verify = Under(base, QStringLiteral("/api/v1/accounts/verify_credentials"));
    e.post = Under(base, QStringLiteral("/api/v1/statuses"));
    e.postField = QStringLiteral("status");
    e.scope = QStringLiteral("read:accounts write:statuses");
    return FromEnvironment(e, "PEDOMETER_SNS_MASTODON_BASE");
}

SnsEndpoints SnsEndpoints::Rebased(const QUrl& base) const {
    SnsEndpoints e = *this;
    for (QUrl* url : {&e.requestToken, &e.authorize, &e.accessToken, &e.verify, &e.post,
                      &e.registerApp}) {
        if (url->isEmpty()) continue;
        url->setScheme(base.scheme());
        url->setHost(base.host());
        url->setPort(base.port());
    }
    return e;
}

QUrl SnsEndpoints::InstanceUrl(const QString& instance) {
    QString text = instance.trimmed();
    if (text.isEmpty()) return {};
    if (!text.contains(QStringLiteral("://"))) text.prepend(QStringLiteral("https://"));
    QUrl url(text, QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty() ||
        (url.scheme() != QLatin1String("https") && url.scheme() != QLatin1String("http")))
        return {};
    return Under(url, QString());
}
