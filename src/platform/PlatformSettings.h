#pragma once

// The phone's system settings that the application consults.
//
// Only "SilentMode" matters: while it is on, the application makes no sound at all.
// A desktop has no such switch, so it is off unless the command line or a test turns
// it on. Safe to read and change from any thread.
class PlatformSettings {
public:
    static bool IsSilentMode();
    static void SetSilentMode(bool silent);
};
