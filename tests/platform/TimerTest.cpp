#include "Timer.h"

#include <gtest/gtest.h>

#include <vector>

#include "Clock.h"
#include "SpinUntil.h"
#include "VirtualTime.h"

namespace {

class VirtualTimerTest : public ::testing::Test {
protected:
    void SetUp() override { VirtualTime::Enable(QDateTime(QDate(2026, 5, 1), QTime(12, 0))); }
    void TearDown() override { VirtualTime::Disable(); }
};

// Timers fire in deadline order with the clock at their deadline; one re-armed from its
// callback ticks every second; a cancelled or destroyed one never fires.
TEST_F(VirtualTimerTest, FireInDeadlineOrderReArmAndCancel) {
    const qint64 t0 = Clock::NowMs();
    std::vector<std::pair<char, qint64>> fired;
    Timer a([&] { fired.push_back({'a', Clock::NowMs() - t0}); });
    Timer b([&] { fired.push_back({'b', Clock::NowMs() - t0}); });
    a.Start(1000);
    b.Start(500);
    EXPECT_TRUE(a.IsActive());
    VirtualTime::AdvanceBy(999);
    EXPECT_EQ(fired, (std::vector<std::pair<char, qint64>>{{'b', 500}}));
    VirtualTime::AdvanceBy(1);
    EXPECT_EQ(fired, (std::vector<std::pair<char, qint64>>{{'b', 500}, {'a', 1000}}));
    EXPECT_FALSE(a.IsActive());

    int ticks = 0;
    Timer* self = nullptr;
    Timer tick([&] {
        ++ticks;
        self->Start(1000);
    });
    self = &tick;
    tick.Start(1000);
    VirtualTime::AdvanceBy(60'500);
    EXPECT_EQ(ticks, 60);
    tick.Cancel();

    int fires = 0;
    Timer kept([&] { ++fires; });
    {
        Timer dropped([&] { fires += 100; });
        dropped.Start(10);
    }
    kept.Start(10);
    kept.Cancel();
    kept.Start(20);
    VirtualTime::AdvanceBy(100);
    EXPECT_EQ(fires, 1);
    EXPECT_EQ(VirtualTime::NextDeadline(), -1);
}

TEST(RealTimerTest, FiresFromTheEventLoop) {
    bool fired = false;
    Timer timer([&] { fired = true; });
    timer.Start(5);
    EXPECT_TRUE(SpinUntil([&] { return fired; }));
}

}  // namespace
