#pragma once

#include <QObject>

#include "SoundPlayerPlugin.h"

// The sound plug-in: SoundEffectPlayer, on Qt Multimedia.
class SoundEffectPlugin : public QObject, public SoundPlayerPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID SoundPlayerPlugin_iid)
    Q_INTERFACES(SoundPlayerPlugin)

public:
    std::unique_ptr<SoundPlayer> MakePlayer() override;
};
