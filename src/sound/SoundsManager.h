#pragma once

#include <QString>
#include <atomic>
#include <functional>
#include <memory>

#include "CrossThreadTrigger.h"
#include "SoundPlayer.h"
#include "Timer.h"

// Plays the application's four sounds: the button click, the countdown tick, the
// pacer beat and the goal alarm, one player each, at one common volume.
//
// Nothing sounds while the phone is in silent mode (PlatformSettings) or while the
// application is in the background (SetActive(false)); the click, tick and beat also
// have their own switches in PedometerOptions, the alarm has none. The alarm sounds
// for at most ten seconds: a timer then stops and releases its player, so the next
// alarm starts a fresh one.
//
// Threads: the players belong to the GUI thread, which must be the thread that makes
// the manager (call GetInstance() once during start-up). Every call comes from there,
// except PacerSound(), which the metronome's beat thread makes; the beat is handed to
// the GUI thread, and a beat that finds the previous one still playing is dropped.
class SoundsManager {
public:
    using PlayerFactory = std::function<std::unique_ptr<SoundPlayer>()>;

    static constexpr int kInitialVolume = 80;
    static constexpr int kVolumeStep = 7;
    static constexpr int kSygnalMs = 10000;

    // The application's manager, made and initialised on the first call.
    static SoundsManager& GetInstance();

    // An uninitialised manager with the sound plug-in's players; the application uses
    // GetInstance(), tests make their own.
    SoundsManager();
    ~SoundsManager();
    SoundsManager(const SoundsManager&) = delete;
    SoundsManager& operator=(const SoundsManager&) = delete;

    // Active, volume 80; every player comes on first use.
    void Initialize();
    // Makes the click player ahead of the first press. Opening the audio system takes a
    // while, so the application does it once its window has painted.
    void PrepareClick();
    // Replaces how players are made (tests count plays with it). The current players
    // are released; the click player is made again at once if it existed.
    void SetPlayerFactory(PlayerFactory factory);

    // The phone's silent-mode setting.
    bool IsSilentMode() const;
    // False while the application is in the background: then nothing sounds.
    void SetActive(bool isActive) { active.store(isActive); }
    bool IsActive() const { return active.load(); }

    void ClickSound();
    void CountDownSound();
    // Any thread; the beat is played on the GUI thread.
    void PacerSound();
    void PlaySygnalSound();

    // The countdown has ended or was cancelled: its player goes.
    void ReleaseCountDown();
    // The alarm's ten seconds are up: its player is stopped and released.
    void OnTimerExpired();

    // Side keys: a short press steps the volume by 7, a long press goes to 100 or 0.
    // The new volume applies at once to every player, and to players made later.
    void SoundUp();
    void SoundDown();
    void SoundOn();
    void SoundOff();
    int GetVolume() const { return volume.load(); }

private:
    std::unique_ptr<SoundPlayer> CreatePlayer(const QString& clip) const;
    // The common gate: not silent and in the foreground.
    bool MayPlay() const;
    void PlayPacerBeat();
    void SetVolume(int newVolume);

    std::atomic<bool> active{false};
    std::atomic<int> volume{kInitialVolume};
    PlayerFactory playerFactory;
    std::unique_ptr<SoundPlayer> clickPlayer;
    std::unique_ptr<SoundPlayer> countDownPlayer;
    std::unique_ptr<SoundPlayer> pacerPlayer;
    std::unique_ptr<SoundPlayer> sygnalPlayer;
    Timer sygnalTimer;
    CrossThreadTrigger pacerHandOver;
};
