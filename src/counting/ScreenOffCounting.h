#pragma once

#include <QString>
#include <optional>

// Whether counting goes on while the screen is off: the system is then kept from
// suspending for as long as a lap records (see SleepInhibitor). The choice is the
// preference "keep_counting_screen_off" ("1" on, "0" off; on when never set), which a
// command-line choice can override for one run. Safe from any thread.
class ScreenOffCounting {
public:
    static constexpr const char* kPreference = "keep_counting_screen_off";

    static bool IsOn();
    // Stores the choice; false when it could not be stored.
    static bool Store(bool on);
    // Overrides the stored choice for this run; nullopt goes back to the stored one.
    static void SetOverride(std::optional<bool> on);
    // "on" or "off"; false for anything else.
    static bool Parse(const QString& text, bool* on);
};
