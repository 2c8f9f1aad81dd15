#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <functional>

// A session bus of the test's own (a dbus-daemon started and stopped with it), so D-Bus
// services can be played without touching the machine's buses.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();
    bool IsRunning() const { return !address_.isEmpty(); }
    // A new connection under `name` (each name is its own client).
    QDBusConnection Connect(const QString& name);

private:
    QProcess daemon_;
    QString address_;
    QStringList names_;
};

// Runs the event loop until `done` holds (true) or `ms` milliseconds have passed.
bool SpinUntil(const std::function<bool()>& done, int ms = 5000);
