#include "PrivateBus.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

PrivateBus::PrivateBus() {
    daemon_.start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--session"), QStringLiteral("--nofork"),
                   QStringLiteral("--print-address=1")});
    if (!daemon_.waitForStarted(5000)) return;
    QElapsedTimer timer;
    timer.start();
    while (!daemon_.canReadLine() && timer.elapsed() < 5000) daemon_.waitForReadyRead(100);
    address_ = QString::fromLocal8Bit(daemon_.readLine()).trimmed();
}

PrivateBus::~PrivateBus() {
    for (const QString& name : names_) QDBusConnection::disconnectFromBus(name);
    daemon_.terminate();
    daemon_.waitForFinished(5000);
}

QDBusConnection PrivateBus::Connect(const QString& name) {
    names_.append(name);
    return QDBusConnection::connectToBus(address_, name);
}

bool SpinUntil(const std::function<bool()>& done) {
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < 5000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(2);
    }
    return done();
}

void SpinFor(int ms) {
    QElapsedTimer timer;
    timer.start();
    SpinUntil([&] { return timer.elapsed() >= ms; });
}
