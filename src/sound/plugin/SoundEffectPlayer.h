#pragma once

#include <memory>

#include "SoundPlayer.h"

class QSoundEffect;

// A SoundPlayer on Qt Multimedia's QSoundEffect, the low-latency player for short
// uncompressed clips. Like the QSoundEffect it owns, it belongs to the GUI thread.
//
// QSoundEffect only knows whether it is playing; the other states are kept here:
// before the first Play() the clip is Opened, after Stop() it is Stopped, and a clip
// that was played and no longer plays is at its EndOfClip. QSoundEffect cannot pause,
// so Paused is never reported. A missing file or one QSoundEffect cannot decode is
// an Error, and Play() then does nothing.
//
// A machine without an audio output (a server, CI) gets no QSoundEffect at all: the
// player acts like a clip that ends as soon as it starts, silently and without any
// message, since a pedometer without sound is still a pedometer.
class SoundEffectPlayer : public SoundPlayer {
public:
    SoundEffectPlayer();
    ~SoundEffectPlayer() override;

    void Open(const QString& path) override;
    void Play() override;
    void Stop() override;
    void SetVolume(int volume) override;
    State GetState() const override;

    // Whether the machine has a sound output; asked once, on the first call.
    static bool HasAudioOutput();

private:
    std::unique_ptr<QSoundEffect> effect;  // null without audio output or without a file
    int volume = 100;
    bool missing = false;
    bool played = false;
    bool stopped = false;
};
