#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

// Follows the phone's feedback profile, where the desktop publishes one: Phosh's feedback
// daemon (org.sigxcpu.Feedback on the session bus) has the Profile property "full",
// "quiet" (no sounds, vibration only) or "silent". Quiet and silent put the platform's
// silent mode on (PlatformSettings::SetProfileSilent), so the pedometer makes no sound;
// full lets the command line's --silent alone decide.
//
// Reads the property once at start and then follows PropertiesChanged. Without the
// service nothing changes. GUI thread.
class FeedbackProfile : public QObject {
    Q_OBJECT
public:
    explicit FeedbackProfile(QDBusConnection bus);
    // The profile last heard of; empty when no service said one.
    QString Profile() const { return profile_; }

private Q_SLOTS:
    void OnPropertiesChanged(const QString& interface, const QVariantMap& changed,
                             const QStringList& invalidated);

private:
    void Apply(const QString& profile);

    QDBusConnection bus_;
    QString profile_;
};
