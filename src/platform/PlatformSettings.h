#pragma once

// The phone's system settings that the application consults.
//
// Only "SilentMode" matters: while it is on, the application makes no sound at all.
// It is on when the command line (or a test) says so, or when the phone's feedback
// profile is quiet or silent (FeedbackProfile); a desktop without a profile has it off.
// Safe to read and change from any thread.
class PlatformSettings {
public:
    static bool IsSilentMode();
    static void SetSilentMode(bool silent);
    // The phone's own quiet mode, from its feedback profile.
    static void SetProfileSilent(bool silent);
};
