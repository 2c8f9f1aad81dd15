#include "MetronomeThread.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <atomic>
#include <thread>
#include <vector>

#include "Body.h"
#include "FakeSoundPlayer.h"
#include "Metronome.h"
#include "PedometerOptions.h"
#include "SpinUntil.h"

namespace {

// A new thread beats at once, then sleeps a day: if Stop() waited for the sleep instead of
// waking the thread, the test would never end and the suite's time limit would report it.
// A silent one idles.
TEST(MetronomeThreadTest, ANewThreadBeatsAtOnceStopWakesItAndASilentOneIdles) {
    std::atomic<int> beats{0};
    MetronomeThread thread([&] { ++beats; });
    thread.Init(86'400'000);
    EXPECT_TRUE(SpinUntil([&] { return beats >= 1; }));
    thread.Stop();
    EXPECT_EQ(beats, 1);

    std::atomic<int> silentBeats{0};
    MetronomeThread silent([&] { ++silentBeats; });
    silent.Init(0);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    silent.Stop();
    EXPECT_EQ(silentBeats, 0);
}

// The whole pacer with its real beat thread, while an "updater" thread feeds spans,
// a "screen" keeps changing the settings and re-evaluating, and the GUI thread plays
// the beats. A thread-sanitizer build runs this clean.
TEST(MetronomeThreadTest, BeatsReachTheGuiThreadWhileOtherThreadsUpdate) {
    auto& options = PedometerOptions::GetInstance();
    options.RestoreDefaults();
    options.pacerType = 3;
    options.pacerFrequency = 600;  // a beat every 100 ms
    options.pacerOffOnStanding = true;
    Body::GetInstance().setWalkStepSize(0.7);

    FakeSounds log;
    log.endsAtOnce = true;
    {
        Metronome metronome;
        metronome.Start();
        std::atomic<bool> stop{false};
        std::thread updater([&] {
            for (int span = 0; !stop; ++span) {
                metronome.SetData(40 + span % 20, 30.0 + span % 7);
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        });
        std::thread screen([&] {
            for (int change = 0; !stop; ++change) {
                options.pacerType = change % 4 == 0 ? 1 : 3;
                options.pacerSpeed = 5.0 + change % 5;
                options.pacerDiff = change % 3 == 0;
                metronome.Update();
                (void)metronome.GetInterval();
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        });
        const bool beatsArrived =
            SpinUntil([&] { return log.Plays(QStringLiteral("Pop1.wav")) >= 5; });
        stop = true;
        updater.join();
        screen.join();
        EXPECT_TRUE(beatsArrived);
        EXPECT_EQ(log.playThread, std::this_thread::get_id());

        options.pacerType = 3;
        options.pacerDiff = false;
        metronome.Update();
        metronome.Shutdown();
        EXPECT_FALSE(metronome.IsRunning());
    }
    QCoreApplication::processEvents();
    options.RestoreDefaults();
    Body::GetInstance().clear();
}

}  // namespace
