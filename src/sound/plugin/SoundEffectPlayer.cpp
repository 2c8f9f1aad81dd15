#include "SoundEffectPlayer.h"

#include <QAudio>
#include <QAudioDevice>
#include <QCoreApplication>
#include <QFileInfo>
#include <QMediaDevices>
#include <QSet>
#include <QSoundEffect>
#include <QUrl>
#include <atomic>
#include <cstdio>

namespace {

std::atomic<QtMessageHandler> handlerBeforeProbe{nullptr};

// Qt reports a missing sound server on the standard error output; for us that only
// means "no sound", so that one complaint is dropped while the outputs are listed.
void QuietAudioProbeHandler(QtMsgType type, const QMessageLogContext& context,
                            const QString& message) {
    if (message.startsWith(QLatin1String("PulseAudioService:"))) return;
    if (const QtMessageHandler previous = handlerBeforeProbe.load()) {
        previous(type, context, message);
    } else {
        std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, message)));
    }
}

// Linear gain for a volume step: the 0..100 scale is perceived loudness, as on a phone.
float GainForVolume(int volume) {
    return QAudio::convertVolume(volume / 100.0f, QAudio::LogarithmicVolumeScale,
                                 QAudio::LinearVolumeScale);
}

}  // namespace

SoundEffectPlayer::SoundEffectPlayer() = default;

SoundEffectPlayer::~SoundEffectPlayer() = default;

bool SoundEffectPlayer::HasAudioOutput() {
    static const bool hasOutput = [] {
        // Qt's audio services need the application object; a tool without one is silent.
        if (QCoreApplication::instance() == nullptr) return false;
        handlerBeforeProbe = qInstallMessageHandler(QuietAudioProbeHandler);
        const bool found = !QMediaDevices::audioOutputs().isEmpty();
        qInstallMessageHandler(handlerBeforeProbe.load());
        return found;
    }();
    return hasOutput;
}

void SoundEffectPlayer::Open(const QString& path) {
    effect.reset();
    played = false;
    stopped = false;
    missing = !QFileInfo(path).isFile();
    if (missing) {
        // Said once per file: a broken installation should be visible, not noisy.
        static QSet<QString> reported;
        if (!reported.contains(path)) {
            reported.insert(path);
            qWarning("Sound clip missing: %s", qPrintable(path));
        }
        return;
    }
    if (!HasAudioOutput()) return;
    effect = std::make_unique<QSoundEffect>();
    effect->setVolume(GainForVolume(volume));
    effect->setSource(QUrl::fromLocalFile(path));
}

void SoundEffectPlayer::Play() {
    if (GetState() == State::Error) return;
    played = true;
    stopped = false;
    if (effect) effect->play();
}

void SoundEffectPlayer::Stop() {
    stopped = true;
    if (effect) effect->stop();
}

void SoundEffectPlayer::SetVolume(int newVolume) {
    volume = newVolume;
    if (effect) effect->setVolume(GainForVolume(volume));
}

SoundPlayer::State SoundEffectPlayer::GetState() const {
    if (missing || (effect && effect->status() == QSoundEffect::Error)) return State::Error;
    if (effect && effect->isPlaying()) return State::Playing;
    if (stopped) return State::Stopped;
    if (played) return State::EndOfClip;
    return State::Opened;
}
