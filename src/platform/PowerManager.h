#pragma once

#include <QtGlobal>

// Keeps the screen on while the user counts or watches the sensitivity meter.
//
// Asks the session's screen saver (org.freedesktop.ScreenSaver Inhibit/UnInhibit on
// the session bus) not to blank the screen. Without a session bus, or a screen saver
// service, it does nothing: keeping the screen lit is a comfort, never a failure.
// GUI thread only.
class PowerManager {
public:
    // `on` true asks for the screen to stay on; false hands control back. The second
    // flag (dimming allowed) is accepted for the callers' sake and has no effect here.
    static void KeepScreenOnState(bool on, bool dimmingAllowed);
    static bool IsKeepingScreenOn();
};
