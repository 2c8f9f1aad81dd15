#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>
#include <functional>

// Whether the user is away from the session: the session is locked or idle, as logind
// says (the LockedHint and IdleHint of org.freedesktop.login1.Session, the caller's
// session, on the system bus), or the screen saver is active
// (org.freedesktop.ScreenSaver's ActiveChanged on the session bus). On Wayland, where a
// minimised window is not reported to the application, these are what tell that the
// phone went dark in a pocket; Phosh sets the locked hint when it locks.
//
// Every call is asynchronous and a missing service leaves the state "present". The
// callback runs on the GUI thread whenever the state changes. GUI thread only.
class SessionAwayState : public QObject {
    Q_OBJECT
public:
    SessionAwayState(QDBusConnection sessionBus, QDBusConnection systemBus);

    bool IsAway() const { return screenSaver_ || locked_ || idle_; }
    void SetOnChanged(std::function<void(bool away)> onChanged) {
        onChanged_ = std::move(onChanged);
    }

private Q_SLOTS:
    void OnScreenSaverActiveChanged(bool active);
    void OnSessionPropertiesChanged(const QString& interface, const QVariantMap& changed,
                                    const QStringList& invalidated);

private:
    void WatchSession(const QString& path);
    void Take(const QVariantMap& properties);
    void Update(bool screenSaver, bool locked, bool idle);

    QDBusConnection systemBus_;
    bool screenSaver_ = false;
    bool locked_ = false;
    bool idle_ = false;
    std::function<void(bool)> onChanged_;
};
