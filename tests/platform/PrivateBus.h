#pragma once

#include <QCoreApplication>
#include <QDBusConnection>
#include <QElapsedTimer>
#include <QProcess>
#include <functional>

#include "SpinUntil.h"

// A session bus of the test's own (a dbus-daemon that ends with it), on which D-Bus
// services are played without touching the machine's buses. When PEDOMETER_TEST_BUS names
// the address of a daemon started outside the test program, that one is used instead: the
// thread-sanitizer run starts it there, since a child started from inside the program
// leaves the sanitizer blind to the program's locking afterwards.
class PrivateBus {
public:
    PrivateBus() {
        address_ = qEnvironmentVariable("PEDOMETER_TEST_BUS");
        if (!address_.isEmpty()) return;
        daemon_.start("dbus-daemon", {"--session", "--nofork", "--print-address=1"});
        if (daemon_.waitForStarted(5000)) SpinUntil([this] { return daemon_.canReadLine(); });
        address_ = QString::fromLocal8Bit(daemon_.readLine()).trimmed();
    }
    ~PrivateBus() {
        for (const QString& name : names_) QDBusConnection::disconnectFromBus(name);
        if (daemon_.state() == QProcess::NotRunning) return;
        daemon_.terminate();
        daemon_.waitForFinished(5000);
    }
    bool IsRunning() const { return !address_.isEmpty(); }
    QString Address() const { return address_; }
    QDBusConnection Connect(const QString& name) {  // each name is a client of its own
        names_.append(name);
        return QDBusConnection::connectToBus(address_, name);
    }

private:
    QProcess daemon_;
    QString address_;
    QStringList names_;
};
