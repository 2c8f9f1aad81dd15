#include "PowerManager.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusReply>

namespace {
quint32 cookie = 0;
bool inhibited = false;

QDBusInterface* screenSaver() {
    static QDBusInterface* iface = [] {
        QDBusConnection bus = QDBusConnection::sessionBus();
        if (!bus.isConnected()) return static_cast<QDBusInterface*>(nullptr);
        auto* i = new QDBusInterface(QStringLiteral("org.freedesktop.ScreenSaver"),
                                     QStringLiteral("/org/freedesktop/ScreenSaver"),
                                     QStringLiteral("org.freedesktop.ScreenSaver"), bus,
                                     QCoreApplication::instance());
        i->setTimeout(500);  // never hang the GUI on a slow bus
        return i->isValid() ? i : (delete i, static_cast<QDBusInterface*>(nullptr));
    }();
    return iface;
}
}  // namespace

void PowerManager::KeepScreenOnState(bool on, bool /*dimmingAllowed*/) {
    if (on == inhibited) return;
    inhibited = on;
    if (qEnvironmentVariableIsSet("PEDOMETER_NO_DBUS")) return;
    QDBusInterface* iface = screenSaver();
    if (iface == nullptr) return;
    if (on) {
        const QDBusReply<quint32> reply =
            iface->call(QStringLiteral("Inhibit"), QStringLiteral("pedometer"),
                        QStringLiteral("Counting steps"));
        cookie = reply.isValid() ? reply.value() : 0;
    } else if (cookie != 0) {
        iface->call(QStringLiteral("UnInhibit"), cookie);
        cookie = 0;
    }
}

bool PowerManager::IsKeepingScreenOn() {
    return inhibited;
}
