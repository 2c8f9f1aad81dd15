#pragma once

#include <QFileInfo>
#include <QString>
#include <map>
#include <memory>
#include <thread>

#include "PlatformSettings.h"
#include "SoundPlayer.h"
#include "SoundsManager.h"

// What the fake players did, by clip file name ("click.wav").
struct FakePlayerLog {
    std::map<QString, int> plays;
    std::map<QString, int> made;
    std::map<QString, int> released;
    std::map<QString, class FakeSoundPlayer*> live;
    std::thread::id playThread;
    // True: a clip ends the moment it starts, like a very short sound.
    bool endsAtOnce = false;

    int Plays(const QString& clip) const { return plays.count(clip) ? plays.at(clip) : 0; }
    int Made(const QString& clip) const { return made.count(clip) ? made.at(clip) : 0; }
    int Released(const QString& clip) const { return released.count(clip) ? released.at(clip) : 0; }
    int TotalPlays() const {
        int total = 0;
        for (const auto& [clip, count] : plays) total += count;
        return total;
    }
};

// A player that records instead of sounding. A played clip keeps "playing" until the
// test ends it, so tests can check what happens to a sound that is still going.
class FakeSoundPlayer : public SoundPlayer {
public:
    explicit FakeSoundPlayer(FakePlayerLog& log) : log(log) {}
    ~FakeSoundPlayer() override {
        if (clip.isEmpty()) return;
        ++log.released[clip];
        if (log.live[clip] == this) log.live.erase(clip);
    }

    void Open(const QString& path) override {
        clip = QFileInfo(path).fileName();
        ++log.made[clip];
        log.live[clip] = this;
        state = QFileInfo(path).isFile() ? State::Opened : State::Error;
    }
    void Play() override {
        ++log.plays[clip];
        log.playThread = std::this_thread::get_id();
        state = log.endsAtOnce ? State::EndOfClip : State::Playing;
    }
    void Stop() override { state = State::Stopped; }
    void SetVolume(int newVolume) override { volume = newVolume; }
    State GetState() const override { return state; }

    void Finish() { state = State::EndOfClip; }
    void Force(State newState) { state = newState; }
    int Volume() const { return volume; }

private:
    FakePlayerLog& log;
    QString clip;
    State state = State::Opened;
    int volume = -1;
};

// Makes players that report to `log`, which must outlive them.
inline SoundsManager::PlayerFactory FakePlayers(FakePlayerLog& log) {
    return [&log] { return std::make_unique<FakeSoundPlayer>(log); };
}

// The application's sound manager with fake players reporting to this log, silent mode
// off and the manager active, for as long as the object lives. Afterwards the players
// report to a log that is never freed: the manager outlives every test.
class FakeSounds : public FakePlayerLog {
public:
    FakeSounds() {
        PlatformSettings::SetSilentMode(false);
        SoundsManager::GetInstance().SetPlayerFactory(FakePlayers(*this));
        SoundsManager::GetInstance().SetActive(true);
    }
    ~FakeSounds() {
        static FakePlayerLog* const leftovers = new FakePlayerLog;
        SoundsManager::GetInstance().SetPlayerFactory(FakePlayers(*leftovers));
    }
    FakeSounds(const FakeSounds&) = delete;
    FakeSounds& operator=(const FakeSounds&) = delete;
};
