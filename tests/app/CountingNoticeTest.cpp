#include "CountingNotice.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "AccelerometerSource.h"
#include "CountingEngine.h"
#include "DesktopNotifications.h"
#include "FreshProfile.h"
#include "PedometerOptions.h"
#include "../platform/PrivateBus.h"
#include "UpdaterThread.h"
#include "VirtualTime.h"

namespace {

const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
const QString kInterface = QStringLiteral("org.freedesktop.Notifications");

struct Shown {
    uint id;
    QString summary;
    QStringList actions;
};

// While counting with the window away, the count is shown at once and refreshed at most
// once a minute in the same notification; Stop reaches the application; the window's
// return withdraws it. The goal alarm gives a notice of its own, window or not.
TEST(CountingNoticeTest, ShowsTheCountOnceAMinuteWhileAwayAndTheGoalAlarm) {
    PrivateBus bus;
    ASSERT_TRUE(bus.IsRunning());
    // The desktop's notification service: what was shown, and the ids still on screen.
    std::vector<Shown> shown;
    std::set<uint> open;
    FakeService fake([&](const QDBusMessage& call, const QDBusConnection& connection) {
        const QVariantList args = call.arguments();
        if (call.member() == QLatin1String("Notify")) {
            const uint id = args[1].toUInt() != 0 ? args[1].toUInt() : uint(shown.size() + 1);
            shown.push_back({id, args[3].toString(), args[5].toStringList()});
            open.insert(id);
            return connection.send(call.createReply(QVariant::fromValue(id)));
        }
        if (call.member() != QLatin1String("CloseNotification")) return false;
        open.erase(args[0].toUInt());
        return connection.send(call.createReply());
    });
    QDBusConnection service = bus.Serve({kInterface}, kPath, &fake);
    const auto log = [&] { return fake.Locked([&] { return shown; }); };
    FreshProfile profile;
    CountingEngine engine;
    engine.UseSensorSource(nullptr);
    engine.Initialize();
    DesktopNotifications notifications(bus.Connect(QStringLiteral("app")));
    CountingNotice notice(engine, notifications);
    int stops = 0;
    notice.SetOnStop([&] { ++stops; });
    const auto logSize = [&](std::size_t n) { return SpinUntil([&] { return log().size() == n; }); };

    notice.SetBackground(true);  // not counting: nothing to say
    engine.Statistics().start();
    for (int i = 0; i < 3412; ++i) engine.Statistics().addStep(1);
    notice.SetBackground(true);
    ASSERT_TRUE(logSize(1));
    EXPECT_EQ(log()[0].summary, QStringLiteral("Counting - 3,412 steps today"));
    EXPECT_EQ(log()[0].actions, (QStringList{"open", "Open", "stop", "Stop"}));

    engine.Statistics().addStep(1);
    VirtualTime::AdvanceBy(30 * 1000);
    EXPECT_FALSE(logSize(2)) << "refreshed before a minute was over";
    VirtualTime::AdvanceBy(30 * 1000);
    ASSERT_TRUE(logSize(2));
    EXPECT_EQ(log()[1].id, log()[0].id) << "a second notification instead of an update";
    EXPECT_EQ(log()[1].summary, QStringLiteral("Counting - 3,413 steps today"));

    service.send(QDBusMessage::createSignal(kPath, kInterface, QStringLiteral("ActionInvoked"))
                 << log()[0].id << QStringLiteral("stop"));
    EXPECT_TRUE(SpinUntil([&] { return stops == 1; }));

    PedometerOptions::GetInstance().sygnalType = 6;  // activity alarm, running
    PedometerOptions::GetInstance().sygnalActivity = 0;
    VirtualTime::AdvanceBy(5 * 1000);  // one interval: the alarm completes
    engine.Statistics().GetUpdaterThread()->WaitUntilIdle();
    ASSERT_TRUE(SpinUntil([&] { return log().size() >= 3; }));
    EXPECT_EQ(log().back().summary, QStringLiteral("Goal alarm"));
    EXPECT_NE(log().back().id, log()[0].id);

    notice.SetBackground(false);
    EXPECT_TRUE(SpinUntil([&] { return fake.Locked([&] { return open.size(); }) == 1; }))
        << "the counting notification was not withdrawn (the alarm's stays)";
    PedometerOptions::GetInstance().RestoreDefaults();
}

}  // namespace
