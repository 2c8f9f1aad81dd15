#include "SleepInhibitor.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <mutex>
#include <vector>

#include "PrivateBus.h"

namespace {

const QString kPath = QStringLiteral("/org/freedesktop/login1");
const QString kManager = QStringLiteral("org.freedesktop.login1.Manager");

// Plays logind: each Inhibit call hands out the write end of a pipe and keeps the
// read end, which reports a hang-up once every copy of the lock has been closed.
class FakeLogind : public QDBusVirtualObject {
public:
    ~FakeLogind() override {
        for (const Lock& lock : locks_) ::close(lock.readEnd);
    }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() != QLatin1String("Inhibit") || message.arguments().size() != 4)
            return false;
        int fds[2];
        if (::pipe(fds) != 0) return false;
        const QDBusUnixFileDescriptor lock(fds[1]);  // keeps a copy of its own
        ::close(fds[1]);
        {
            std::lock_guard guard(mutex_);
            locks_.push_back(
                {message.arguments()[0].toString() + '/' + message.arguments()[3].toString(),
                 fds[0]});
        }
        connection.send(message.createReply(QVariant::fromValue(lock)));
        return true;
    }
    QString introspect(const QString&) const override { return {}; }

    // How many locks of this "what/mode" are still held.
    int Held(const QString& kind) {
        std::lock_guard guard(mutex_);
        int held = 0;
        for (const Lock& lock : locks_) {
            pollfd p{lock.readEnd, POLLIN, 0};
            if (lock.kind == kind && ::poll(&p, 1, 0) == 0) ++held;
        }
        return held;
    }

    static void Send(QDBusConnection& connection, bool sleeping) {
        QDBusMessage signal =
            QDBusMessage::createSignal(kPath, kManager, QStringLiteral("PrepareForSleep"));
        signal << sleeping;
        connection.send(signal);
    }

private:
    struct Lock {
        QString kind;
        int readEnd;
    };
    std::mutex mutex_;
    std::vector<Lock> locks_;
};

struct LogindOnPrivateBus {
    LogindOnPrivateBus() {
        service = bus.Connect(QStringLiteral("logind"));
        service.registerService(QStringLiteral("org.freedesktop.login1"));
        service.registerVirtualObject(kPath, &logind);
    }
    PrivateBus bus;
    FakeLogind logind;
    QDBusConnection service{QString()};
};

TEST(SleepInhibitorTest, DelaysSleepToWriteAndBlocksItWhenCountingWithTheScreenOff) {
    LogindOnPrivateBus world;
    ASSERT_TRUE(world.bus.IsRunning());
    FakeLogind& logind = world.logind;
    SleepInhibitor inhibitor(world.bus.Connect(QStringLiteral("app")),
                             SleepInhibitor::Service::Logind);
    int written = 0, resumed = 0, delaysWhileWriting = -1;
    inhibitor.SetBeforeSleep([&] {
        ++written;
        delaysWhileWriting = logind.Held(QStringLiteral("sleep/delay"));
    });
    inhibitor.SetAfterResume([&] { ++resumed; });

    // Signals while nothing is held are none of its business.
    FakeLogind::Send(world.service, true);
    SpinFor(300);
    inhibitor.Hold(false);
    ASSERT_TRUE(SpinUntil([&] { return inhibitor.HasDelayLock(); }));
    EXPECT_EQ(logind.Held(QStringLiteral("sleep/delay")), 1);
    EXPECT_EQ(logind.Held(QStringLiteral("sleep/block")), 0);
    EXPECT_EQ(written, 0);

    inhibitor.Hold(true);
    ASSERT_TRUE(SpinUntil([&] { return logind.Held(QStringLiteral("sleep/block")) == 1; }));
    EXPECT_TRUE(SpinUntil([&] { return logind.Held(QStringLiteral("sleep/delay")) == 1; }));

    FakeLogind::Send(world.service, true);
    ASSERT_TRUE(SpinUntil([&] { return logind.Held(QStringLiteral("sleep/delay")) == 0; }));
    EXPECT_EQ(written, 1);
    EXPECT_EQ(delaysWhileWriting, 1);  // written before the delay was let go
    EXPECT_EQ(logind.Held(QStringLiteral("sleep/block")), 1);

    FakeLogind::Send(world.service, false);
    ASSERT_TRUE(SpinUntil([&] { return logind.Held(QStringLiteral("sleep/delay")) == 1; }));
    EXPECT_EQ(resumed, 1);

    inhibitor.Release();
    EXPECT_TRUE(SpinUntil([&] {
        return logind.Held(QStringLiteral("sleep/delay")) +
                   logind.Held(QStringLiteral("sleep/block")) ==
               0;
    }));
    EXPECT_FALSE(inhibitor.HasDelayLock() || inhibitor.HasBlockLock());
}

TEST(SleepInhibitorTest, ALockGrantedAfterReleaseIsLetGo) {
    LogindOnPrivateBus world;
    ASSERT_TRUE(world.bus.IsRunning());
    SleepInhibitor inhibitor(world.bus.Connect(QStringLiteral("app")),
                             SleepInhibitor::Service::Logind);
    inhibitor.Hold(true);
    inhibitor.Release();  // before any answer came
    SpinFor(300);
    EXPECT_EQ(world.logind.Held(QStringLiteral("sleep/delay")), 0);
    EXPECT_EQ(world.logind.Held(QStringLiteral("sleep/block")), 0);
    EXPECT_FALSE(inhibitor.HasDelayLock() || inhibitor.HasBlockLock());
}

}  // namespace
