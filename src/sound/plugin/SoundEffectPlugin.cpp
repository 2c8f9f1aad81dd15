#include "SoundEffectPlugin.h"

#include "SoundEffectPlayer.h"

std::unique_ptr<SoundPlayer> SoundEffectPlugin::MakePlayer() {
    return std::make_unique<SoundEffectPlayer>();
}
