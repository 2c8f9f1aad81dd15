#pragma once

#include <QString>
#include <QStringList>

// What the social code needs from the rest of the application: its preferences (Options.db3)
// and its texts. The social plug-in carries its own copy of the social code, and a copy of
// the application's singletons would open files of its own; so that code asks the host,
// which the application sets here and hands to the plug-in (SnsPlugin::UseHost).
class SnsHost {
public:
    virtual ~SnsHost() = default;
    virtual QString GetPreference(const QString& name) = 0;
    virtual void SetPreference(const QString& name, const QString& value) = 0;
    // A resource text with its "%@" placeholders filled in order of appearance.
    virtual QString Text(const QString& key, const QStringList& values) = 0;

    // The host of the social code in this binary; Set() comes before any use. GUI thread.
    static SnsHost& Get();
    static void Set(SnsHost* host);
};
