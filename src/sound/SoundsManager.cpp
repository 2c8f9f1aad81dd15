#include "SoundsManager.h"

#include <QCoreApplication>
#include <QThread>
#include <algorithm>

#include "AppPaths.h"
#include "AppPlugins.h"
#include "PedometerOptions.h"
#include "PlatformSettings.h"
#include "SilentSoundPlayer.h"
#include "SoundPlayerPlugin.h"

namespace {
const QString kClickClip = QStringLiteral("click.wav");
const QString kTickClip = QStringLiteral("tick.wav");
const QString kPacerClip = QStringLiteral("Pop1.wav");
const QString kSygnalClip = QStringLiteral("stopwatch.wav");

// Players on the audio system come from the sound plug-in, loaded with the first one;
// without it the application is silent.
std::unique_ptr<SoundPlayer> MakeSystemPlayer() {
    if (auto* plugin = AppPlugins::Get<SoundPlayerPlugin>(QStringLiteral("pedometer-sound")))
        return plugin->MakePlayer();
    return std::make_unique<SilentSoundPlayer>();
}

void Release(std::unique_ptr<SoundPlayer>& player) {
    if (!player) return;
    player->Stop();
    player.reset();
}
}  // namespace

SoundsManager& SoundsManager::GetInstance() {
    // Never destroyed: the players must not outlive Qt's audio services at exit.
    static SoundsManager* instance = [] {
        const QCoreApplication* app = QCoreApplication::instance();
        if (app != nullptr && QThread::currentThread() != app->thread()) {
            qWarning("SoundsManager made outside the GUI thread: sounds may stay silent");
        }
        auto* manager = new SoundsManager();
        manager->Initialize();
        return manager;
    }();
    return *instance;
}

SoundsManager::SoundsManager()
    : playerFactory(MakeSystemPlayer),
      sygnalTimer([this] { OnTimerExpired(); }),
      pacerHandOver([this] { PlayPacerBeat(); }) {}

SoundsManager::~SoundsManager() = default;

void SoundsManager::Initialize() {
    active = true;
    volume = kInitialVolume;
}

void SoundsManager::PrepareClick() {
    if (!clickPlayer) clickPlayer = CreatePlayer(kClickClip);
}

void SoundsManager::SetPlayerFactory(PlayerFactory factory) {
    playerFactory = std::move(factory);
    const bool hadClick = clickPlayer != nullptr;
    Release(clickPlayer);
    Release(countDownPlayer);
    Release(pacerPlayer);
    Release(sygnalPlayer);
    sygnalTimer.Cancel();
    if (hadClick) clickPlayer = CreatePlayer(kClickClip);
}

std::unique_ptr<SoundPlayer> SoundsManager::CreatePlayer(const QString& clip) const {
    auto player = playerFactory();
    player->SetVolume(volume);
    player->Open(AppPaths::ResFile(QStringLiteral("sounds/") + clip));
    return player;
}

bool SoundsManager::IsSilentMode() const {
    return PlatformSettings::IsSilentMode();
}

bool SoundsManager::MayPlay() const {
    return !IsSilentMode() && active;
}

void SoundsManager::ClickSound() {
    if (!MayPlay() || !PedometerOptions::GetInstance().soundButtons) return;
    if (!clickPlayer) clickPlayer = CreatePlayer(kClickClip);
    // A quick second press restarts the click rather than waiting for the first.
    if (clickPlayer->GetState() == SoundPlayer::State::Playing) clickPlayer->Stop();
    if (clickPlayer->GetState() == SoundPlayer::State::Paused)
        clickPlayer = CreatePlayer(kClickClip);
    clickPlayer->Play();
}

void SoundsManager::CountDownSound() {
    if (!MayPlay() || !PedometerOptions::GetInstance().soundCountdown) return;
    if (!countDownPlayer) countDownPlayer = CreatePlayer(kTickClip);
    countDownPlayer->Play();
}

void SoundsManager::PacerSound() {
    if (pacerHandOver.IsOwnerThread()) {
        PlayPacerBeat();
        return;
    }
    // Checked here as well so a muted pacer does not wake the GUI thread on every beat.
    if (!MayPlay() || !PedometerOptions::GetInstance().soundMetronome) return;
    pacerHandOver.Trigger();
}

void SoundsManager::PlayPacerBeat() {
    if (!MayPlay() || !PedometerOptions::GetInstance().soundMetronome) return;
    if (!pacerPlayer) pacerPlayer = CreatePlayer(kPacerClip);
    switch (pacerPlayer->GetState()) {
        case SoundPlayer::State::Opened:
        case SoundPlayer::State::EndOfClip:
        case SoundPlayer::State::Stopped:
            pacerPlayer->Play();
            break;
        default:  // still sounding the previous beat, paused or broken: this beat is dropped
            break;
    }
}

void SoundsManager::PlaySygnalSound() {
    if (!MayPlay()) return;
    if (!sygnalPlayer) sygnalPlayer = CreatePlayer(kSygnalClip);
    sygnalPlayer->Play();
    sygnalTimer.Start(kSygnalMs);
}

void SoundsManager::ReleaseCountDown() {
    Release(countDownPlayer);
}

void SoundsManager::OnTimerExpired() {
    Release(sygnalPlayer);
}

void SoundsManager::SoundUp() {
    SetVolume(volume + kVolumeStep);
}

void SoundsManager::SoundDown() {
    SetVolume(volume - kVolumeStep);
}

void SoundsManager::SoundOn() {
    SetVolume(100);
}

void SoundsManager::SoundOff() {
    SetVolume(0);
}

void SoundsManager::SetVolume(int newVolume) {
    volume = std::clamp(newVolume, 0, 100);
    for (auto* player :
         {clickPlayer.get(), countDownPlayer.get(), pacerPlayer.get(), sygnalPlayer.get()}) {
        if (player != nullptr) player->SetVolume(volume);
    }
}
