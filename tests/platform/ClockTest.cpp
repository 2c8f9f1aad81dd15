#include "Clock.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

TEST(ClockTest, VirtualTimeStandsStillUntilAdvanced) {
    const QDateTime start(QDate(2026, 3, 1), QTime(23, 59, 58));
    Clock::SetNow(start);
    EXPECT_TRUE(Clock::IsVirtual());
    EXPECT_EQ(Clock::Now(), start);
    Clock::Advance(3000);
    EXPECT_EQ(Clock::Now(), start.addSecs(3));
    EXPECT_EQ(Clock::TodayStart(), QDateTime(QDate(2026, 3, 2), QTime(0, 0)));
    Clock::UseSystemTime();
    EXPECT_FALSE(Clock::IsVirtual());
    EXPECT_LE(std::abs(Clock::NowMs() - QDateTime::currentMSecsSinceEpoch()), 1000);
}

TEST(ClockTest, AdvanceFromManyThreadsLosesNothing) {
    Clock::SetNowMs(0);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([] {
            for (int i = 0; i < 1000; ++i) Clock::Advance(1);
        });
    }
    for (auto& t : threads) t.join();
    EXPECT_EQ(Clock::NowMs(), 4000);
    Clock::UseSystemTime();
}

}  // namespace
