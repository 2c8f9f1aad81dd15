#pragma once

#include <QLocale>
#include <QSize>
#include <QString>
#include <optional>

#include "DetectorKind.h"
#include "ScreenDirectory.h"

// What the command line of `pedometer` asks for, read without side effects: Parse fills
// the fields and checks every value, and main() then assembles the application from
// them. Tests call Parse directly.
//
// Each option is one row of the table in LaunchOptions.cpp (name, value, help and the
// line that stores it here); adding an option is a row there and a field here.
struct LaunchOptions {
    enum class Outcome {
        Run,    // start the application with these options
        Print,  // print `message` (help, version, screen names) and leave with status 0
        Fail,   // print `message` as the reason and leave with status 2
    };

    QString dataDir;                      // empty: the per-user data folder
    std::optional<QString> sensor;        // auto, qt, iio, iio-steps or none; unset: the stored choice
    std::optional<DetectorKind> detector;  // unset: the stored choice
    QString replayFile;                   // a recording to count from instead
    bool loop = false;
    bool autostart = false;
    bool background = false;  // count at once, no window (count from login)
    QString recordFile;
    std::optional<QLocale> locale;
    bool hvga = false;
    std::optional<QSize> size;  // the window's start size; unset: the layout's own
    bool checkLayout = false;
    bool silent = false;
    QString screenshotFile;
    int quitAfterSeconds = -1;  // -1: never
    bool quitAfterReplay = false;
    QString screen = QStringLiteral("main");
    ScreenRequest request;
    std::optional<bool> keepCountingScreenOff;  // unset: the stored setting

    // Reads `arguments` (the program's name first, as in argv). On Print and Fail,
    // `message` says what to print; `options` is filled as far as it was read.
    static Outcome Parse(const QStringList& arguments, LaunchOptions* options, QString* message);

    // Parse before the application object exists, so that help, version, the screen
    // names and refusals print without a display. Qt's own options (-platform, -style,
    // ...) are only known once the application has taken them: with any of them, a
    // refusal is left to the second reading (Run).
    static Outcome ParseBeforeQt(const QStringList& arguments, QString* message);
};
