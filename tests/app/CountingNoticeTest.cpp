#include "CountingNotice.h"

#include <gtest/gtest.h>

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <mutex>
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

// Plays the desktop's notification service: remembers what is on screen by id. Called
// on Qt's D-Bus thread.
class FakeNotificationService : public QDBusVirtualObject {
public:
    struct Shown {
        uint id;
        QString summary;
        QString body;
        QStringList actions;
    };
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
        std::lock_guard guard(mutex_);
        const QVariantList args = call.arguments();
        if (call.member() == QLatin1String("Notify")) {
            uint id = args[1].toUInt();
            if (id == 0) id = ++lastId_;
            log_.push_back({id, args[3].toString(), args[4].toString(), args[5].toStringList()});
            open_.insert(id);
            bus.send(call.createReply(QVariant::fromValue(id)));
            return true;
        }
        if (call.member() == QLatin1String("CloseNotification")) {
            open_.erase(args[0].toUInt());
            bus.send(call.createReply());
            return true;
        }
        return false;
    }
    QString introspect(const QString&) const override { return {}; }
    std::vector<Shown> Log() {
        std::lock_guard guard(mutex_);
        return log_;
    }
    std::size_t OpenCount() {
        std::lock_guard guard(mutex_);
        return open_.size();
    }

private:
    std::mutex mutex_;
    std::vector<Shown> log_;
    std::set<uint> open_;
    uint lastId_ = 0;
};

// While counting with the window away, the count is shown at once and refreshed at most
// once a minute in the same notification; Stop reaches the application; the window's
// return withdraws it. The goal alarm gives a notice of its own, window or not.
TEST(CountingNoticeTest, ShowsTheCountOnceAMinuteWhileAwayAndTheGoalAlarm) {
    PrivateBus bus;
    ASSERT_TRUE(bus.IsRunning());
    FakeNotificationService fake;
    QDBusConnection service = bus.Connect(QStringLiteral("notifications"));
    service.registerService(kInterface);
    service.registerVirtualObject(kPath, &fake);
    FreshProfile profile;
    CountingEngine engine;
    engine.UseSensorSource(nullptr);
    engine.Initialize();
    DesktopNotifications notifications(bus.Connect(QStringLiteral("app")));
    CountingNotice notice(engine, notifications);
    int stops = 0;
    notice.SetOnStop([&] { ++stops; });
    const auto logSize = [&](std::size_t n) {
        return SpinUntil([&] { return fake.Log().size() == n; });
    };

    notice.SetBackground(true);  // not counting: nothing to say
    engine.Statistics().start();
    for (int i = 0; i < 3412; ++i) engine.Statistics().addStep(1);
    notice.SetBackground(true);
    ASSERT_TRUE(logSize(1));
    EXPECT_EQ(fake.Log()[0].summary, QStringLiteral("Counting - 3,412 steps today"));
    EXPECT_EQ(fake.Log()[0].actions, (QStringList{"open", "Open", "stop", "Stop"}));

    engine.Statistics().addStep(1);
    VirtualTime::AdvanceBy(30 * 1000);
    EXPECT_FALSE(logSize(2)) << "refreshed before a minute was over";
    VirtualTime::AdvanceBy(30 * 1000);
    ASSERT_TRUE(logSize(2));
    EXPECT_EQ(fake.Log()[1].id, fake.Log()[0].id) << "a second notification instead of an update";
    EXPECT_EQ(fake.Log()[1].summary, QStringLiteral("Counting - 3,413 steps today"));

    service.send(QDBusMessage::createSignal(kPath, kInterface, QStringLiteral("ActionInvoked"))
                 << fake.Log()[0].id << QStringLiteral("stop"));
    EXPECT_TRUE(SpinUntil([&] { return stops == 1; }));

    PedometerOptions::GetInstance().sygnalType = 6;  // activity alarm, running
    PedometerOptions::GetInstance().sygnalActivity = 0;
    VirtualTime::AdvanceBy(5 * 1000);  // one interval: the alarm completes
    engine.Statistics().GetUpdaterThread()->WaitUntilIdle();
    ASSERT_TRUE(SpinUntil([&] { return fake.Log().size() >= 3; }));
    EXPECT_EQ(fake.Log().back().summary, QStringLiteral("Goal alarm"));
    EXPECT_NE(fake.Log().back().id, fake.Log()[0].id);

    notice.SetBackground(false);
    EXPECT_TRUE(SpinUntil([&] { return fake.OpenCount() == 1; }))
        << "the counting notification was not withdrawn (the alarm's stays)";
    PedometerOptions::GetInstance().RestoreDefaults();
}

// With no notification service on the bus nothing is shown and nothing else happens.
TEST(CountingNoticeTest, NoServiceNoNotificationAndNoHarm) {
    PrivateBus bus;
    ASSERT_TRUE(bus.IsRunning());
    FreshProfile profile;
    CountingEngine engine;
    engine.UseSensorSource(nullptr);
    engine.Initialize();
    DesktopNotifications notifications(bus.Connect(QStringLiteral("app")));
    CountingNotice notice(engine, notifications);
    engine.Statistics().start();
    notice.SetBackground(true);
    VirtualTime::AdvanceBy(120 * 1000);
    SpinUntil([] { return false; }, 200);
    notice.SetBackground(false);
    EXPECT_FALSE(notice.IsShowingCount());
}

}  // namespace
