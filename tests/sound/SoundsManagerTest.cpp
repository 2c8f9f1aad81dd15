#include "SoundsManager.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <thread>

#include "FakeSoundPlayer.h"
#include "PedometerOptions.h"
#include "PlatformSettings.h"
#include "SpinUntil.h"
#include "VirtualTime.h"

namespace {

const QString kClick = QStringLiteral("click.wav");
const QString kTick = QStringLiteral("tick.wav");
const QString kBeat = QStringLiteral("Pop1.wav");
const QString kAlarm = QStringLiteral("stopwatch.wav");

class SoundsManagerTest : public ::testing::Test {
protected:
    void SetUp() override {
        PedometerOptions::GetInstance().RestoreDefaults();
        manager.SetPlayerFactory(FakePlayers(log));
        manager.Initialize();
        manager.PrepareClick();
    }
    void TearDown() override {
        PedometerOptions::GetInstance().RestoreDefaults();
        PlatformSettings::SetSilentMode(false);
    }

    void PlayAll() {
        manager.ClickSound();
        manager.CountDownSound();
        manager.PacerSound();
        manager.PlaySygnalSound();
    }
    // Lets each fake clip end, so the next play of it is not dropped.
    void FinishAll() {
        for (auto& [clip, player] : log.live) player->Finish();
    }

    FakePlayerLog log;
    SoundsManager manager;
};

// Active at volume 80 with only the click player made; every player opens its own clip from
// the resources when first played.
TEST_F(SoundsManagerTest, StartsWithTheClickPlayerAndOpensEachClipFromTheResources) {
    EXPECT_TRUE(manager.IsActive());
    ASSERT_EQ(log.live.size(), 1u);
    EXPECT_EQ(log.live[kClick]->Volume(), 80);
    PlayAll();
    for (const QString& clip : {kClick, kTick, kBeat, kAlarm}) {
        EXPECT_EQ(log.Plays(clip), 1) << qPrintable(clip);
        ASSERT_TRUE(log.live.count(clip));
        EXPECT_NE(log.live[clip]->GetState(), SoundPlayer::State::Error)
            << qPrintable(clip) << " is missing from the resources";
    }
}

// Seven a step within 0 to 100, to the players there and those made later.
TEST_F(SoundsManagerTest, VolumeStepsBySevenWithin0To100ForEveryPlayer) {
    manager.CountDownSound();
    manager.SoundOff();
    EXPECT_EQ(log.live[kTick]->Volume(), 0);
    for (int i = 0; i < 14; ++i) manager.SoundUp();
    EXPECT_EQ(log.live[kClick]->Volume(), 98);
    manager.PlaySygnalSound();
    EXPECT_EQ(log.live[kAlarm]->Volume(), 98);
    manager.SoundUp();
    manager.SoundUp();
    EXPECT_EQ(manager.GetVolume(), 100);

    manager.Initialize();
    for (int i = 0; i < 11; ++i) manager.SoundDown();
    EXPECT_EQ(manager.GetVolume(), 3);
    manager.SoundDown();
    manager.SoundDown();
    EXPECT_EQ(manager.GetVolume(), 0);
    manager.SoundOn();
    EXPECT_EQ(manager.GetVolume(), 100);
}

// Silent mode or the background silences everything, the pacer's beats from its thread too.
TEST_F(SoundsManagerTest, SilentModeAndTheBackgroundSilenceEverything) {
    for (const bool silent : {true, false}) {  // else in the background
        PlatformSettings::SetSilentMode(silent);
        manager.SetActive(silent);
        PlayAll();
        std::thread beatThread([this] { manager.PacerSound(); });
        beatThread.join();
        QCoreApplication::processEvents();
        EXPECT_EQ(log.TotalPlays(), 0) << silent;
        PlatformSettings::SetSilentMode(false);
        manager.SetActive(true);
        PlayAll();
        EXPECT_EQ(log.TotalPlays(), 4) << silent;
        FinishAll();
        log.plays.clear();
    }
}

TEST_F(SoundsManagerTest, EachSwitchSilencesOnlyItsOwnSoundAndTheAlarmHasNone) {
    auto& options = PedometerOptions::GetInstance();
    const std::pair<std::atomic<bool> PedometerOptions::*, QString> switches[] = {
        {&PedometerOptions::soundButtons, kClick},
        {&PedometerOptions::soundCountdown, kTick},
        {&PedometerOptions::soundMetronome, kBeat}};
    for (const auto& [flag, clip] : switches) {
        options.RestoreDefaults();
        options.*flag = false;
        const int before = log.Plays(clip), total = log.TotalPlays();
        PlayAll();
        FinishAll();
        EXPECT_EQ(log.Plays(clip), before) << qPrintable(clip);
        EXPECT_EQ(log.TotalPlays(), total + 3) << qPrintable(clip);
    }
    for (const auto& [flag, clip] : switches) options.*flag = false;
    PlayAll();
    EXPECT_EQ(log.Plays(kAlarm), 4);
}

TEST_F(SoundsManagerTest, AQuickSecondClickRestartsAndAPausedClickGetsAFreshPlayer) {
    manager.ClickSound();
    FakeSoundPlayer* first = log.live[kClick];
    ASSERT_EQ(first->GetState(), SoundPlayer::State::Playing);
    manager.ClickSound();
    EXPECT_EQ(log.Plays(kClick), 2);
    EXPECT_EQ(log.live[kClick], first);

    first->Force(SoundPlayer::State::Paused);
    manager.ClickSound();
    EXPECT_EQ(log.Made(kClick), 2);
    EXPECT_EQ(log.Released(kClick), 1);
    EXPECT_EQ(log.live[kClick]->GetState(), SoundPlayer::State::Playing);
    EXPECT_EQ(log.live[kClick]->Volume(), 80);
}

TEST_F(SoundsManagerTest, ABeatIsDroppedWhileThePreviousOneStillSounds) {
    manager.PacerSound();
    manager.PacerSound();
    EXPECT_EQ(log.Plays(kBeat), 1);

    FakeSoundPlayer* beat = log.live[kBeat];
    beat->Finish();
    manager.PacerSound();
    EXPECT_EQ(log.Plays(kBeat), 2);

    beat->Stop();
    manager.PacerSound();
    EXPECT_EQ(log.Plays(kBeat), 3);

    beat->Force(SoundPlayer::State::Error);
    manager.PacerSound();
    EXPECT_EQ(log.Plays(kBeat), 3);
    EXPECT_EQ(log.Made(kBeat), 1);
}

TEST_F(SoundsManagerTest, TheCountdownPlayerLastsUntilReleased) {
    manager.CountDownSound();
    log.live[kTick]->Finish();
    manager.CountDownSound();
    EXPECT_EQ(log.Made(kTick), 1);

    manager.ReleaseCountDown();
    EXPECT_EQ(log.Released(kTick), 1);
    EXPECT_FALSE(log.live.count(kTick));
    manager.ReleaseCountDown();  // nothing left to release

    manager.CountDownSound();
    EXPECT_EQ(log.Made(kTick), 2);
    EXPECT_EQ(log.Plays(kTick), 3);
}

class SoundsManagerAlarmTest : public SoundsManagerTest {
protected:
    void SetUp() override {
        VirtualTime::Enable(QDateTime(QDate(2026, 5, 1), QTime(9, 0)));
        SoundsManagerTest::SetUp();
    }
    void TearDown() override {
        SoundsManagerTest::TearDown();
        VirtualTime::Disable();
    }
};

TEST_F(SoundsManagerAlarmTest, TheAlarmSoundsTenSecondsThenItsPlayerIsReleased) {
    manager.PlaySygnalSound();
    EXPECT_EQ(log.Plays(kAlarm), 1);
    VirtualTime::AdvanceBy(9999);
    ASSERT_TRUE(log.live.count(kAlarm));
    EXPECT_EQ(log.live[kAlarm]->GetState(), SoundPlayer::State::Playing);

    VirtualTime::AdvanceBy(1);
    EXPECT_FALSE(log.live.count(kAlarm));
    EXPECT_EQ(log.Released(kAlarm), 1);

    manager.PlaySygnalSound();
    EXPECT_EQ(log.Made(kAlarm), 2);
    EXPECT_EQ(log.Plays(kAlarm), 2);

    // A second alarm restarts the ten seconds.
    VirtualTime::AdvanceBy(6000);
    manager.PlaySygnalSound();
    VirtualTime::AdvanceBy(6000);
    EXPECT_TRUE(log.live.count(kAlarm));
    VirtualTime::AdvanceBy(4000);
    EXPECT_FALSE(log.live.count(kAlarm));
    EXPECT_EQ(log.Made(kAlarm), 2);
}

TEST_F(SoundsManagerTest, BeatsFromAnotherThreadPlayOnTheGuiThread) {
    std::thread beatThread([this] {
        for (int i = 0; i < 5; ++i) manager.PacerSound();
    });
    beatThread.join();
    EXPECT_EQ(log.Plays(kBeat), 0) << "played before the GUI thread ran";

    SpinUntil([&] { return log.Plays(kBeat) > 0; });
    QCoreApplication::processEvents();
    EXPECT_EQ(log.Plays(kBeat), 1);
    EXPECT_EQ(log.playThread, std::this_thread::get_id());
}

}  // namespace
