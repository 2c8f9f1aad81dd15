#pragma once

#include <QHash>
#include <QTcpServer>
#include <QUrl>

// Plays a social-network provider on 127.0.0.1 for the gateway's tests: answers each
// path from a table, sends the browser back to the application's loopback port from
// the authorisation page (approving, or refusing when told), and never answers a path
// marked to hang. Remembers every request it saw.
class FakeSnsServer : public QTcpServer {
public:
    struct Answer {
        int status = 200;
        QByteArray body;
        bool hang = false;
    };
    struct Request {
        QByteArray method, path, headers, body;
    };

    FakeSnsServer();
    QUrl Base() const;
    QHash<QByteArray, Answer> answers;
    QByteArray authorizePath;
    bool refuse = false;
    QList<Request> seen;

private:
    void Serve(QTcpSocket* socket, const Request& request, const QUrl& target);
    QString oauthCallback_;
    QHash<QTcpSocket*, QByteArray> buffers_;
};
