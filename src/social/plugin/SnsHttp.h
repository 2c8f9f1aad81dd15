#pragma once

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QObject>
#include <functional>

#include "SnsOutcome.h"

// Sends the plain requests of one social-network provider (verifying a token, posting,
// registering the application) and turns each answer into an SnsOutcome.
//
// Every request gets the transfer timeout given at construction; the callback runs once,
// later, on the GUI thread, never inside Send(). Requests still running when the object
// goes are aborted and their callbacks dropped. The access manager is shared with the
// provider's OAuth flow, so the same timeout holds there. GUI thread only.
class SnsHttp : public QObject {
    Q_OBJECT
public:
    using Done = std::function<void(const SnsOutcome&)>;

    SnsHttp(const QString& providerTitle, int timeoutMs, QObject* parent = nullptr);
    ~SnsHttp() override;

    QNetworkAccessManager* Manager() { return &manager_; }
    const QString& ProviderTitle() const { return title_; }

    void Send(QNetworkRequest request, const QByteArray& verb, const QByteArray& body, Done done);
    // `fields` as application/x-www-form-urlencoded; a Bearer token when `bearer` is set.
    void PostForm(const QUrl& url, const QList<std::pair<QString, QString>>& fields,
                  const QString& bearer, Done done);

    // How a finished reply ended, read without consuming it (the body is peeked, so an
    // OAuth flow reading the same reply still gets it): network failures, timeouts, HTTP
    // errors with the provider's own explanation when it sent one, and answers that should
    // be a JSON object but are not. `providerTitle` names the provider in messages
    // ("Twitter"); `expectJson` makes a successful reply that is no JSON object a failure.
    static SnsOutcome OutcomeOf(QNetworkReply* reply, const QString& providerTitle,
                                bool expectJson);

private:
    QString title_;
    QNetworkAccessManager manager_;
};
