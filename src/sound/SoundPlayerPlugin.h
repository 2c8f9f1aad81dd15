#pragma once

#include <QtPlugin>
#include <memory>

#include "SoundPlayer.h"

// What the sound plug-in ("pedometer-sound", AppPlugins) offers: players on the machine's audio
// system, which brings Qt Multimedia and the sound server's libraries with it.
class SoundPlayerPlugin {
public:
    virtual ~SoundPlayerPlugin() = default;
    // A player for one clip; GUI thread, like the player.
    virtual std::unique_ptr<SoundPlayer> MakePlayer() = 0;
};

#define SoundPlayerPlugin_iid "io.github.pedometer_app.SoundPlayerPlugin/1"
Q_DECLARE_INTERFACE(SoundPlayerPlugin, SoundPlayerPlugin_iid)
