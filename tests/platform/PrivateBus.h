#pragma once

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QProcess>
#include <functional>
#include <mutex>

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
    // A client that owns `services` and serves `object` at `path`.
    QDBusConnection Serve(const QStringList& services, const QString& path,
                          QDBusVirtualObject* object,
                          QDBusConnection::VirtualObjectRegisterOption option = {}) {
        QDBusConnection bus = Connect(services.first());
        for (const QString& service : services) bus.registerService(service);
        bus.registerVirtualObject(path, object, option);
        return bus;
    }

private:
    QProcess daemon_;
    QString address_;
    QStringList names_;
};

// Plays a D-Bus service: `answer` handles each call (returning false for calls it does not
// know) on Qt's D-Bus thread, holding `mutex`, which the test takes to read what it kept.
class FakeService : public QDBusVirtualObject {
public:
    using Answer = std::function<bool(const QDBusMessage& call, const QDBusConnection& bus)>;
    explicit FakeService(Answer answer) : answer_(std::move(answer)) {}
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
        std::lock_guard guard(mutex);
        return answer_(call, bus);
    }
    QString introspect(const QString&) const override { return {}; }
    template <class Read>
    auto Locked(Read read) {
        std::lock_guard guard(mutex);
        return read();
    }

    std::mutex mutex;

private:
    Answer answer_;
};
