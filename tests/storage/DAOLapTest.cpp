#include "DAOLap.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "StorageTestSupport.h"

using storagetest::Moment;
using storagetest::StorageTest;

namespace {

TEST(DAOLapTest, RecordsKeepTheirAddressWhileTheListGrows) {
    DAOLap lap;
    DAOLapMinutes* first = lap.AddMinute(std::make_unique<DAOLapMinutes>());
    for (int i = 1; i < 1000; ++i) lap.AddMinute(std::make_unique<DAOLapMinutes>());
    first->steps = 42;
    EXPECT_EQ(lap.CopyMinutes().front().steps, 42);
}

// The recording pipeline in miniature: an updater thread appends and changes records
// and writes them through the manager while the GUI thread reads the same lap and
// queries and saves through the same connections. Run under the thread sanitizer.
using SharedLapTest = StorageTest;

TEST_F(SharedLapTest, UpdaterAndGuiThreadsShareALapAndTheDatabase) {
    Clock::SetNow(Moment(14, 8, 0));
    std::unique_ptr<DAOLap> lap = manager().CreateNewLap();
    ASSERT_GT(lap->id, 0);
    auto first = std::make_unique<DAOLapMinutes>();
    first->lapId = lap->id;
    manager().CreateNewLapMinute(*first);
    DAOLapMinutes* current = lap->AddMinute(std::move(first));

    constexpr int kIntervals = 360;  // half an hour
    std::atomic<bool> done{false};
    std::thread updater([&] {
        for (int second = 5; second <= kIntervals * 5; second += 5) {
            auto interval = std::make_unique<DAOLapSeconds>();
            std::tie(interval->lapId, interval->currentSecond, interval->steps, interval->distance) =
                std::tuple(lap->id, second, 9, 6.0);
            {
                std::lock_guard lock(lap->recordsMutex);
                current->steps += 9;
                current->distance += 6.0;
                current->secondsCompleted += 5;
            }
            const DAOLapSeconds* stored = lap->AddSecond(std::move(interval));
            if (second % 60 == 0) {
                auto next = std::make_unique<DAOLapMinutes>();
                next->lapId = lap->id;
                next->lapMinute = current->lapMinute + 1;
                manager().UpdateFull(*current, *stored, *next);
                current = lap->AddMinute(std::move(next));
            } else {
                manager().UpdateSmall(*current, *stored);
            }
            PedometerOptions::GetInstance().pacerType.load();
        }
        done = true;
    });

    int reads = 0;
    while (!done) {
        const std::vector<DAOLapMinutes> minutes = lap->CopyMinutes();
        int steps = 0;
        for (const DAOLapMinutes& minute : minutes) steps += minute.steps;
        EXPECT_LE(steps, kIntervals * 9);
        EXPECT_LE(lap->CopySeconds().size(), size_t(kIntervals));
        manager().GetTodayDistance();
        manager().GetLapsForDate(Moment(14, 0, 0));
        PedometerOptions::GetInstance().pacerType = reads % 4;
        manager().SaveOptions();
        manager().LoadOptions();
        ++reads;
    }
    updater.join();
    PedometerOptions::GetInstance().RestoreDefaults();

    EXPECT_GT(reads, 0);
    EXPECT_EQ(lap->CopySeconds().size(), size_t(kIntervals));
    EXPECT_DOUBLE_EQ(manager().GetTodayDistance(), kIntervals * 6.0);
    EXPECT_EQ(manager().GetTodayActivity(), kIntervals * 5);
    auto stored = manager().GetTodayLastLap();
    ASSERT_NE(stored, nullptr);
    EXPECT_EQ(stored->minutes.size(), size_t(kIntervals / 12 + 1));
    EXPECT_EQ(stored->seconds.size(), size_t(kIntervals));
    EXPECT_TRUE(manager().StatisticsStatus().lastFailure.isEmpty());
}

}  // namespace
