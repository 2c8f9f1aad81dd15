#pragma once

#include "SoundPlayer.h"

// A player for a machine without sound: every clip ends as soon as it starts.
class SilentSoundPlayer final : public SoundPlayer {
public:
    void Open(const QString&) override { state_ = State::Opened; }
    void Play() override { state_ = State::EndOfClip; }
    void Stop() override { state_ = State::Stopped; }
    void SetVolume(int) override {}
    State GetState() const override { return state_; }

private:
    State state_ = State::Opened;
};
