#pragma once

#include <QString>

// Where the application keeps its files.
//
// Home is the per-user data folder (the databases and exports), created on first use
// with mode 0700 because the settings database holds account names. Res is the
// read-only resources folder: strings, pictures, sounds, articles and the seed
// databases. Both can be overridden (--data-dir, tests). Safe from any thread.
class AppPaths {
public:
    // The data folder, created (0700) if missing. Empty if it cannot be created.
    static QString Home();
    // An empty `dir` leaves no data folder at all (Home() empty, HomeError() says why).
    static void SetHome(const QString& dir);
    // Why the last attempt to create the data folder failed; empty when it did not.
    static QString HomeError();

    // The resources folder: PEDOMETER_RES_DIR, else "res" beside the binaries' folder
    // (the build tree), else the install prefix's share/pedometer.
    static QString Res();
    static void SetRes(const QString& dir);

    // The folder of the application's plug-ins (AppPlugins): PEDOMETER_PLUGIN_DIR, else
    // "lib/pedometer" beside the binaries' folder, in the build tree and when installed.
    static QString Plugins();

    static QString HomeFile(const QString& name);
    static QString ResFile(const QString& name);
};
