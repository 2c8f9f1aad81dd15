#pragma once

#include <QString>

// One short sound clip that can be played again and again.
//
// The sounds manager talks to its players only through this interface, so tests can
// watch which sounds would play without an audio device. The states are those of the
// phone's media player; a backend maps its own states onto them.
class SoundPlayer {
public:
    enum class State {
        Opened,  // loaded (or loading) and never played
        Playing,
        Paused,
        EndOfClip,  // played to its end
        Stopped,    // stopped by Stop()
        Error,      // the clip cannot be played (missing or unreadable file)
    };

    virtual ~SoundPlayer() = default;

    virtual void Open(const QString& path) = 0;
    virtual void Play() = 0;
    virtual void Stop() = 0;
    // 0 (mute) to 100 (full).
    virtual void SetVolume(int volume) = 0;
    virtual State GetState() const = 0;
};
