#include "SingleInstance.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QEventLoop>
#include <QTimer>

namespace {
constexpr int kHandOverTimeoutMs = 3000;

QString tokenOf(const QVariantMap& platformData) {
    const QString token = platformData.value(QStringLiteral("activation-token")).toString();
    return token.isEmpty() ? platformData.value(QStringLiteral("desktop-startup-id")).toString()
                           : token;
}
}  // namespace

SingleInstance::SingleInstance(QDBusConnection bus) : bus_(std::move(bus)) {}

SingleInstance::~SingleInstance() {
    if (!registered_) return;
    bus_.unregisterObject(QLatin1String(kObjectPath));
    bus_.unregisterService(QLatin1String(kAppId));
}

SingleInstance::Outcome SingleInstance::Claim() {
    if (!bus_.isConnected() || bus_.interface() == nullptr) return Outcome::NoBus;
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply =
        bus_.interface()->registerService(QLatin1String(kAppId),
                                          QDBusConnectionInterface::DontQueueService,
                                          QDBusConnectionInterface::DontAllowReplacement);
    if (reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered) {
        registered_ =
            bus_.registerObject(QLatin1String(kObjectPath), this, QDBusConnection::ExportAllSlots);
        return Outcome::First;
    }
    if (reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceNotRegistered &&
        AskHolderToActivate()) {
        return Outcome::HandedOver;
    }
    return Outcome::NoBus;
}

bool SingleInstance::AskHolderToActivate() {
    QVariantMap platformData;
    for (const char* variable : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"}) {
        const QString token = qEnvironmentVariable(variable);
        if (!token.isEmpty()) {
            platformData.insert(QStringLiteral("activation-token"), token);
            platformData.insert(QStringLiteral("desktop-startup-id"), token);
            break;
        }
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        QLatin1String(kAppId), QLatin1String(kObjectPath),
        QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"));
    call << platformData;
    // Waited for in a local event loop, so that a holder living in this very
    // process (tests) can still answer.
    QDBusPendingCallWatcher watcher(bus_.asyncCall(call, kHandOverTimeoutMs));
    QEventLoop loop;
    QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(kHandOverTimeoutMs + 500, &loop, &QEventLoop::quit);
    if (!watcher.isFinished()) loop.exec();
    return watcher.isFinished() && !watcher.isError();
}

void SingleInstance::Activate(const QVariantMap& platformData) {
    if (onActivate_) onActivate_(tokenOf(platformData));
}

void SingleInstance::Open(const QStringList& /*uris*/, const QVariantMap& platformData) {
    Activate(platformData);  // no files to open: coming forward is all
}

void SingleInstance::ActivateAction(const QString& /*actionName*/,
                                    const QVariantList& /*parameter*/,
                                    const QVariantMap& platformData) {
    Activate(platformData);
}
