#include "PrivateBus.h"

#include <QCoreApplication>
#include <QElapsedTimer>

PrivateBus::PrivateBus() {
    daemon_.start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--session"), QStringLiteral("--nofork"),
                   QStringLiteral("--print-address=1")});
    if (daemon_.waitForStarted(5000)) SpinUntil([this] { return daemon_.canReadLine(); });
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

bool SpinUntil(const std::function<bool()>& done, int ms) {
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < ms)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    return done();
}
