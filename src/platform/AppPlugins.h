#pragma once

#include <QObject>
#include <QString>

// The parts of the application that need large libraries of their own (the audio system,
// Qt Sensors, networking and the keyring) are Qt plug-ins in AppPaths::Plugins(), loaded
// the first time they are needed: a start that does not need them does not load, relocate
// and initialise those libraries. A plug-in that is missing or cannot be loaded is told
// once on standard error, and its feature is then unavailable; the application goes on.
// Plug-ins stay loaded until the process ends. Safe from any thread.
class AppPlugins {
public:
    // The interface `Interface` (declared with Q_DECLARE_INTERFACE) of plug-in `name`, the
    // file libNAME.so; null when the plug-in cannot be had.
    template <class Interface>
    static Interface* Get(const QString& name) {
        return qobject_cast<Interface*>(Instance(name));
    }

    // The root object of plug-in `name`, loaded on the first call; null when unavailable.
    static QObject* Instance(const QString& name);
};
