#include "SleepInhibitor.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <QDBusUnixFileDescriptor>
#include <vector>

#include "AccelerometerSource.h"
#include "FreshProfile.h"
#include "PrivateBus.h"
#include "ScreenOffCounting.h"
#include "StatisticsManager.h"

namespace {

const QString kPath = QStringLiteral("/org/freedesktop/login1");

// Plays logind on a private bus: each Inhibit hands out the write end of a pipe and keeps
// the read end, which hangs up once every copy of that lock is closed.
struct FakeLogind {
    FakeLogind() : service([this](const QDBusMessage& call, const QDBusConnection& connection) {
        int fds[2];
        if (call.member() != QLatin1String("Inhibit") || ::pipe(fds) != 0) return false;
        const QDBusUnixFileDescriptor lock(fds[1]);  // holds a copy of its own
        ::close(fds[1]);
        locks.emplace_back(call.arguments()[3].toString(), fds[0]);
        return connection.send(call.createReply(QVariant::fromValue(lock)));
    }) {}
    int Held(const QString& mode) {  // "delay" or "block" locks still held
        return service.Locked([&] {
            int held = 0;
            for (const auto& [kind, fd] : locks) {
                pollfd p{fd, POLLIN, 0};
                held += kind == mode && ::poll(&p, 1, 0) == 0;
            }
            return held;
        });
    }

    PrivateBus bus;
    std::vector<std::pair<QString, int>> locks;  // read ends stay open until the end
    FakeService service;
    QDBusConnection connection = bus.Serve({"org.freedesktop.login1"}, kPath, &service);
};

TEST(SleepInhibitorTest, DelaysSleepToWriteBlocksItOnRequestAndLetsGoOfLateLocks) {
    FakeLogind logind;
    ASSERT_TRUE(logind.bus.IsRunning());
    const auto prepareFor = [&](const char* what, bool starting) {
        logind.connection.send(QDBusMessage::createSignal(kPath,
                                                QStringLiteral("org.freedesktop.login1.Manager"),
                                                QString::fromLatin1(what))
                     << starting);
    };
    const auto prepareForSleep = [&](bool sleeping) { prepareFor("PrepareForSleep", sleeping); };
    const auto held = [&](int delay, int block) {
        return SpinUntil(
            [&] { return logind.Held("delay") == delay && logind.Held("block") == block; });
    };

    SleepInhibitor inhibitor(logind.bus.Connect(QStringLiteral("app")), SleepInhibitor::Service::Logind);
    int resumed = 0, delaysWhileWriting = -1;
    inhibitor.SetBeforeSleep([&] { delaysWhileWriting = logind.Held("delay"); });
    inhibitor.SetAfterResume([&] { ++resumed; });
    inhibitor.Hold(true);
    inhibitor.Release();    // before the answers come: the locks are let go on arrival
    prepareForSleep(true);  // while nothing is held: none of its business
    SpinUntil([] { return false; }, 300);
    EXPECT_EQ(delaysWhileWriting, -1);
    EXPECT_TRUE(held(0, 0));

    inhibitor.Hold(false);
    EXPECT_TRUE(held(1, 0));
    inhibitor.Hold(true);
    EXPECT_TRUE(held(1, 1));
    prepareForSleep(true);
    EXPECT_TRUE(held(0, 1));
    EXPECT_EQ(delaysWhileWriting, 1);  // written before the delay was let go
    prepareForSleep(false);
    EXPECT_TRUE(held(1, 1));
    EXPECT_EQ(resumed, 1);
    // A shutdown waits for the same write; one called off takes the delay again.
    delaysWhileWriting = -1;
    prepareFor("PrepareForShutdown", true);
    EXPECT_TRUE(held(0, 1));
    EXPECT_EQ(delaysWhileWriting, 1);
    prepareFor("PrepareForShutdown", false);
    EXPECT_TRUE(held(1, 1));
    EXPECT_EQ(resumed, 1);
    inhibitor.Release();
    EXPECT_TRUE(held(0, 0));
}

// A manager told to guard sleep takes the locks from the system bus when counting starts,
// the block only when counting goes on with the screen off, and lets go when it stops.
TEST(SleepInhibitorTest, CountingHoldsTheLocksOnlyWhileItCounts) {
    FakeLogind logind;
    ASSERT_TRUE(logind.bus.IsRunning());
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", logind.bus.Address().toUtf8());  // read at its first use
    FreshProfile profile;
    StatisticsManager::GuardSleepWhileCounting(true);
    for (const bool screenOff : {true, false}) {
        ScreenOffCounting::SetOverride(screenOff);
        StatisticsManager manager;
        manager.UseSensorSource(nullptr);
        manager.Initialize();
        manager.start();
        EXPECT_TRUE(SpinUntil([&] {
            return logind.Held("delay") == 1 && logind.Held("block") == int(screenOff);
        })) << screenOff;
        manager.stop();
        EXPECT_TRUE(SpinUntil([&] { return logind.Held("delay") + logind.Held("block") == 0; }));
    }
    StatisticsManager::GuardSleepWhileCounting(false);
    ScreenOffCounting::SetOverride(std::nullopt);
}

}  // namespace
