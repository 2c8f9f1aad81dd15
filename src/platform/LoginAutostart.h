#pragma once

#include <QString>

// "Count from login": an XDG autostart entry that starts `pedometer --background`
// (counting, no window) when the user logs in. The entry's presence is the setting, so
// it says the truth even when the file was removed by hand.
//
// The entry lives in the autostart folder of the user's configuration
// ($XDG_CONFIG_HOME/autostart, else ~/.config/autostart) and starts the program that is
// running now, by its absolute path. GUI thread.
class LoginAutostart {
public:
    static QString EntryPath();
    static bool IsOn();
    // Writes or removes the entry; false with `error` saying why when the file cannot be
    // written or removed (the setting then stays as it was).
    static bool SetOn(bool on, QString* error = nullptr);
};
