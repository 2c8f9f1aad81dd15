#include "SessionAwayState.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {
const QString kLogind = QStringLiteral("org.freedesktop.login1");
const QString kSessionInterface = QStringLiteral("org.freedesktop.login1.Session");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
}  // namespace

SessionAwayState::SessionAwayState(QDBusConnection sessionBus, QDBusConnection systemBus)
    : systemBus_(std::move(systemBus)) {
    if (sessionBus.isConnected()) {
        sessionBus.connect(QStringLiteral("org.freedesktop.ScreenSaver"),
                           QStringLiteral("/org/freedesktop/ScreenSaver"),
                           QStringLiteral("org.freedesktop.ScreenSaver"),
                           QStringLiteral("ActiveChanged"), this,
                           SLOT(OnScreenSaverActiveChanged(bool)));
    }
    if (!systemBus_.isConnected()) return;
    // "auto": the session this process belongs to, else the user's display session.
    QDBusMessage call = QDBusMessage::createMethodCall(
        kLogind, QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("GetSession"));
    call << QStringLiteral("auto");
    auto* watcher = new QDBusPendingCallWatcher(systemBus_.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* w) {
        w->deleteLater();
        const QDBusPendingReply<QDBusObjectPath> reply = *w;
        if (!reply.isError()) WatchSession(reply.value().path());
    });
}

void SessionAwayState::WatchSession(const QString& path) {
    systemBus_.connect(kLogind, path, kProperties, QStringLiteral("PropertiesChanged"), this,
                       SLOT(OnSessionPropertiesChanged(QString, QVariantMap, QStringList)));
    QDBusMessage getAll =
        QDBusMessage::createMethodCall(kLogind, path, kProperties, QStringLiteral("GetAll"));
    getAll << kSessionInterface;
    auto* watcher = new QDBusPendingCallWatcher(systemBus_.asyncCall(getAll), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* w) {
        w->deleteLater();
        const QDBusPendingReply<QVariantMap> reply = *w;
        if (!reply.isError()) Take(reply.value());
    });
}

void SessionAwayState::OnScreenSaverActiveChanged(bool active) {
    Update(active, locked_, idle_);
}

void SessionAwayState::OnSessionPropertiesChanged(const QString& interface,
                                                  const QVariantMap& changed, const QStringList&) {
    if (interface == kSessionInterface) Take(changed);
}

void SessionAwayState::Take(const QVariantMap& properties) {
    Update(screenSaver_, properties.value(QStringLiteral("LockedHint"), locked_).toBool(),
           properties.value(QStringLiteral("IdleHint"), idle_).toBool());
}

void SessionAwayState::Update(bool screenSaver, bool locked, bool idle) {
    const bool before = IsAway();
    screenSaver_ = screenSaver;
    locked_ = locked;
    idle_ = idle;
    if (IsAway() != before && onChanged_) onChanged_(IsAway());
}
