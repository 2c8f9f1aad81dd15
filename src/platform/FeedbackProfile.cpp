#include "FeedbackProfile.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include "PlatformSettings.h"

namespace {
const QString kService = QStringLiteral("org.sigxcpu.Feedback");
const QString kPath = QStringLiteral("/org/sigxcpu/Feedback");
const QString kInterface = QStringLiteral("org.sigxcpu.Feedback");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
}  // namespace

FeedbackProfile::FeedbackProfile(QDBusConnection bus) : bus_(std::move(bus)) {
    if (!bus_.isConnected()) return;
    bus_.connect(kService, kPath, kProperties, QStringLiteral("PropertiesChanged"), this,
                 SLOT(OnPropertiesChanged(QString, QVariantMap, QStringList)));
    QDBusMessage get = QDBusMessage::createMethodCall(kService, kPath, kProperties,
                                                      QStringLiteral("Get"));
    get << kInterface << QStringLiteral("Profile");
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(get), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* w) {
        w->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *w;
        if (!reply.isError()) Apply(reply.value().variant().toString());
    });
}

void FeedbackProfile::OnPropertiesChanged(const QString& interface, const QVariantMap& changed,
                                          const QStringList&) {
    if (interface != kInterface) return;
    const auto found = changed.find(QStringLiteral("Profile"));
    if (found != changed.end()) Apply(found->toString());
}

void FeedbackProfile::Apply(const QString& profile) {
    profile_ = profile;
    PlatformSettings::SetProfileSilent(profile == QLatin1String("quiet") ||
                                       profile == QLatin1String("silent"));
}
