#include "FakeSnsServer.h"

#include <QRegularExpression>
#include <QTcpSocket>
#include <QUrlQuery>

FakeSnsServer::FakeSnsServer() {
    listen(QHostAddress::LocalHost, 0);
    connect(this, &QTcpServer::newConnection, this, [this] {
        QTcpSocket* socket = nextPendingConnection();
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            buffers_.remove(socket);
            socket->deleteLater();
        });
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
            QByteArray& buffer = buffers_[socket];
            buffer += socket->readAll();
            const qsizetype end = buffer.indexOf("\r\n\r\n");
            if (end < 0) return;
            const QByteArray head = buffer.left(end);
            const auto length = QRegularExpression(QStringLiteral("(?i)content-length: *(\\d+)"))
                                    .match(QString::fromLatin1(head)).captured(1).toLongLong();
            if (buffer.size() < end + 4 + length) return;
            const QList<QByteArray> line = head.left(head.indexOf("\r\n")).split(' ');
            const QUrl target(QString::fromLatin1(line.value(1)));
            Request request{line.value(0), target.path().toLatin1(), head, buffer.mid(end + 4, length)};
            buffer.remove(0, end + 4 + length);
            seen << request;
            Serve(socket, request, target);
        });
    });
}

QUrl FakeSnsServer::Base() const {
    return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(serverPort()));
}

void FakeSnsServer::Serve(QTcpSocket* socket, const Request& request, const QUrl& target) {
    const QString callback = QRegularExpression(QStringLiteral("oauth_callback=\"([^\"]*)\""))
                                 .match(QString::fromLatin1(request.headers)).captured(1);
    if (!callback.isEmpty()) oauthCallback_ = QUrl::fromPercentEncoding(callback.toLatin1());
    Answer answer = answers.value(request.path, Answer{404, "{}"});
    QByteArray location;
    if (request.path == authorizePath) {
        // The user's decision, as the provider hands it back to the application.
        const QUrlQuery query(target);
        QUrl back(query.hasQueryItem(QStringLiteral("redirect_uri"))
                      ? query.queryItemValue(QStringLiteral("redirect_uri"), QUrl::FullyDecoded)
                      : oauthCallback_);
        QUrlQuery reply;
        if (query.hasQueryItem(QStringLiteral("state"))) {
            reply.addQueryItem(refuse ? QStringLiteral("error") : QStringLiteral("code"),
                               refuse ? QStringLiteral("access_denied") : QStringLiteral("the-code"));
            reply.addQueryItem(QStringLiteral("state"), query.queryItemValue(QStringLiteral("state")));
        } else {
            reply.addQueryItem(refuse ? QStringLiteral("denied") : QStringLiteral("oauth_verifier"),
                               QStringLiteral("v1"));
            reply.addQueryItem(QStringLiteral("oauth_token"), QStringLiteral("tmp"));
        }
        back.setQuery(reply);
        answer = {302, {}};
        location = "Location: " + back.toEncoded() + "\r\n";
    }
    if (answer.hang) return;
    socket->write("HTTP/1.1 " + QByteArray::number(answer.status) + " X\r\n" + location +
                  "Content-Type: " +
                  (answer.body.startsWith('{') ? "application/json" : "application/x-www-form-urlencoded") +
                  "\r\nConnection: close\r\nContent-Length: " + QByteArray::number(answer.body.size()) +
                  "\r\n\r\n" + answer.body);
    socket->disconnectFromHost();
}
