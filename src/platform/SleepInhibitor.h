#pragma once

#include <QDBusConnection>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <functional>
#include <memory>

// Keeps the system from suspending under a recording lap, through logind's inhibitor
// locks (org.freedesktop.login1.Manager.Inhibit on the system bus).
//
// Hold() takes a "delay" lock on sleep and shutdown: when the system is about to sleep or
// to power off, logind says so (PrepareForSleep, PrepareForShutdown) and waits until the
// lock is let go, so the before-sleep callback can write what was counted; the lock is let
// go right after it and taken again on resume (when the after-resume callback runs) or
// when a shutdown is called off. Hold(true) also takes a "block" lock,
// so the system does not suspend at all (counting with the screen off). Release()
// lets go of both. Inside a sandbox, where logind is out of reach, the block is asked
// of the desktop portal (org.freedesktop.portal.Inhibit, suspend) instead and the
// delay lock is not available.
//
// All calls are asynchronous: a slow or missing service never holds up the caller, and
// a lock that arrives after Release() is let go at once. GUI thread only.
class SleepInhibitor : public QObject {
    Q_OBJECT
public:
    enum class Service { Logind, Portal };

    SleepInhibitor(QDBusConnection bus, Service service);
    ~SleepInhibitor() override;

    // The inhibitor for this machine: the portal on the session bus inside Flatpak,
    // else logind on the system bus. Null when the bus cannot be reached or
    // PEDOMETER_NO_DBUS is set.
    static std::unique_ptr<SleepInhibitor> ForThisSystem();

    void Hold(bool blockSleep);
    void Release();
    bool IsHolding() const { return wanted_; }
    // Whether the locks have been granted (for tests and diagnostics).
    bool HasDelayLock() const { return delay_.isValid(); }
    bool HasBlockLock() const { return block_.isValid() || !portalHandle_.isEmpty(); }

    void SetBeforeSleep(std::function<void()> callback) { beforeSleep_ = std::move(callback); }
    void SetAfterResume(std::function<void()> callback) { afterResume_ = std::move(callback); }

private Q_SLOTS:
    void OnPrepareForSleep(bool start);
    void OnPrepareForShutdown(bool start);

private:
    // Before sleep or shutdown (`start`): write what was counted, then let the delay go;
    // after it (or when it was called off): take the delay lock again.
    void WriteOrRetakeDelay(bool start);
    void AskLogind(const QString& mode, QDBusUnixFileDescriptor* slot);
    void AskPortal();
    void ClosePortalRequest();

    QDBusConnection bus_;
    Service service_;
    bool wanted_ = false;
    bool blockWanted_ = false;
    // Bumped on every Release, so that answers to earlier requests are dropped.
    quint64 generation_ = 0;
    QDBusUnixFileDescriptor delay_;
    QDBusUnixFileDescriptor block_;
    QString portalHandle_;
    std::function<void()> beforeSleep_;
    std::function<void()> afterResume_;
};
