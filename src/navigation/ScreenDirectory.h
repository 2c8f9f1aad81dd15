#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <functional>

class CountingEngine;
class PedometerForm;
class QWidget;
class TivNavigationController;

// What a screen opened by name shows: the day, lap or date range it was asked for.
// Unset fields are invalid dates or -1; each screen says which it needs and what it
// uses when one is missing (today, for the day screens).
struct ScreenRequest {
    QDate day;
    int lapId = -1;
    QDate from;
    QDate to;
};

// Every screen of the application by name ("main", "goal", "history-day", ...), so that
// the command line (`pedometer --open NAME`), the menus and the tests open a screen the
// way a user's taps would: pushed on top of the current screen, Back returns.
//
// Each screen registers itself in its own source file with PEDOMETER_SCREEN (a form to
// push) or PEDOMETER_SCREEN_ACTION (anything else, such as the lock pane over the main
// screen). Registration happens during static initialisation; opening is GUI-thread only.
class ScreenDirectory {
public:
    // Makes the screen for `request`, initialised and not yet pushed, or returns null
    // and says why in `error` (a missing --lap, a day that does not parse, ...).
    using FormFactory = std::function<PedometerForm*(const ScreenRequest&, QString* error)>;
    // The same for a screen that works on the counting engine: it gets the one the
    // navigation carries, and the screen is refused where there is none.
    using EngineFormFactory =
        std::function<PedometerForm*(CountingEngine&, const ScreenRequest&, QString* error)>;
    // Shows the screen on `navigation` and returns the widget that shows it, or null
    // with `error` set.
    using Action = std::function<QWidget*(TivNavigationController& navigation,
                                          const ScreenRequest& request, QString* error)>;

    static bool AddForm(const char* name, FormFactory factory);
    static bool AddForm(const char* name, EngineFormFactory factory);
    static bool AddAction(const char* name, Action action);

    // Every registered name, sorted.
    static QStringList Names();
    static bool Contains(const QString& name);

    // Opens `name` on top of the navigation's current screen. Returns the widget that
    // shows it, or null with `error` set when the name is unknown or the screen refused.
    static QWidget* Open(const QString& name, TivNavigationController& navigation,
                         const ScreenRequest& request = {}, QString* error = nullptr);
};

#define PEDOMETER_SCREEN_CONCAT_INNER(a, b) a##b
#define PEDOMETER_SCREEN_CONCAT(a, b) PEDOMETER_SCREEN_CONCAT_INNER(a, b)
// PEDOMETER_SCREEN("tips-weight", [](const ScreenRequest& r, QString* error) { ... });
// PEDOMETER_SCREEN("history-day", [](CountingEngine& engine, const ScreenRequest& r,
//                                    QString* error) { ... });
#define PEDOMETER_SCREEN(name, ...)                                                        \
    static const bool PEDOMETER_SCREEN_CONCAT(screenRegistered_, __LINE__) =               \
        ScreenDirectory::AddForm(name, __VA_ARGS__)
#define PEDOMETER_SCREEN_ACTION(name, ...)                                                 \
    static const bool PEDOMETER_SCREEN_CONCAT(screenRegistered_, __LINE__) =               \
        ScreenDirectory::AddAction(name, __VA_ARGS__)
