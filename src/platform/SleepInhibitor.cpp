#include "SleepInhibitor.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFile>
#include <QVariantMap>

namespace {
const QString kLogind = QStringLiteral("org.freedesktop.login1");
const QString kLogindPath = QStringLiteral("/org/freedesktop/login1");
const QString kLogindManager = QStringLiteral("org.freedesktop.login1.Manager");
const QString kPortal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPortalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kPortalInhibit = QStringLiteral("org.freedesktop.portal.Inhibit");
constexpr uint kPortalSuspend = 4;
constexpr int kCallTimeoutMs = 5000;

bool inSandbox() {
    return QFile::exists(QStringLiteral("/.flatpak-info"));
}
}  // namespace

SleepInhibitor::SleepInhibitor(QDBusConnection bus, Service service)
    : bus_(std::move(bus)), service_(service) {
    if (service_ == Service::Logind) {
        bus_.connect(kLogind, kLogindPath, kLogindManager, QStringLiteral("PrepareForSleep"), this,
                     SLOT(OnPrepareForSleep(bool)));
        bus_.connect(kLogind, kLogindPath, kLogindManager, QStringLiteral("PrepareForShutdown"),
                     this, SLOT(OnPrepareForShutdown(bool)));
    }
}

SleepInhibitor::~SleepInhibitor() {
    Release();
}

std::unique_ptr<SleepInhibitor> SleepInhibitor::ForThisSystem() {
    if (qEnvironmentVariableIsSet("PEDOMETER_NO_DBUS")) return nullptr;
    const bool sandboxed = inSandbox();
    QDBusConnection bus = sandboxed ? QDBusConnection::sessionBus() : QDBusConnection::systemBus();
    if (!bus.isConnected()) return nullptr;
    return std::make_unique<SleepInhibitor>(bus, sandboxed ? Service::Portal : Service::Logind);
}

void SleepInhibitor::Hold(bool blockSleep) {
    if (wanted_ && blockSleep == blockWanted_) return;
    if (wanted_) Release();
    wanted_ = true;
    blockWanted_ = blockSleep;
    if (service_ == Service::Portal) {
        if (blockSleep) AskPortal();
        return;
    }
    AskLogind(QStringLiteral("delay"), &delay_);
    if (blockSleep) AskLogind(QStringLiteral("block"), &block_);
}

void SleepInhibitor::Release() {
    ++generation_;
    wanted_ = false;
    blockWanted_ = false;
    // Closing our copy of a lock's descriptor is what lets logind go on.
    delay_ = QDBusUnixFileDescriptor();
    block_ = QDBusUnixFileDescriptor();
    ClosePortalRequest();
}

void SleepInhibitor::AskLogind(const QString& mode, QDBusUnixFileDescriptor* slot) {
    QDBusMessage call = QDBusMessage::createMethodCall(kLogind, kLogindPath, kLogindManager,
                                                       QStringLiteral("Inhibit"));
    const bool block = mode == QLatin1String("block");
    const QString what = block ? QStringLiteral("sleep") : QStringLiteral("sleep:shutdown");
    const QString why = block ? QStringLiteral("Counting steps with the screen off")
                              : QStringLiteral("Saving the steps counted so far");
    call << what << QStringLiteral("Pedometer") << why << mode;
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call, kCallTimeoutMs), this);
    const quint64 generation = generation_;
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, slot, generation] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusUnixFileDescriptor> reply = *watcher;
        // An answer to a request made before the last Release is let go here.
        if (generation != generation_ || !wanted_ || reply.isError()) return;
        *slot = reply.value();
    });
}

void SleepInhibitor::AskPortal() {
    QDBusMessage call = QDBusMessage::createMethodCall(kPortal, kPortalPath, kPortalInhibit,
                                                       QStringLiteral("Inhibit"));
    call << QString() << kPortalSuspend
         << QVariantMap{
                {QStringLiteral("reason"), QStringLiteral("Counting steps with the screen off")}};
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call, kCallTimeoutMs), this);
    const quint64 generation = generation_;
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, generation] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusObjectPath> reply = *watcher;
        if (reply.isError()) return;
        portalHandle_ = reply.value().path();
        if (generation != generation_ || !wanted_) ClosePortalRequest();
    });
}

void SleepInhibitor::ClosePortalRequest() {
    if (portalHandle_.isEmpty()) return;
    bus_.asyncCall(QDBusMessage::createMethodCall(kPortal, portalHandle_,
                                                  QStringLiteral("org.freedesktop.portal.Request"),
                                                  QStringLiteral("Close")));
    portalHandle_.clear();
}

void SleepInhibitor::OnPrepareForSleep(bool start) {
    if (!wanted_) return;
    WriteOrRetakeDelay(start);
    if (!start && afterResume_) afterResume_();
}

void SleepInhibitor::OnPrepareForShutdown(bool start) {
    if (wanted_) WriteOrRetakeDelay(start);  // false: the shutdown was called off
}

void SleepInhibitor::WriteOrRetakeDelay(bool start) {
    if (start) {
        if (beforeSleep_) beforeSleep_();
        delay_ = QDBusUnixFileDescriptor();
    } else {
        AskLogind(QStringLiteral("delay"), &delay_);
    }
}
