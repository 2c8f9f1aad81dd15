#include "DeferredAccelerometerSource.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

// Notes what reaches it: whether it runs and the last window state it was told.
struct NotedSource : AccelerometerSource {
    bool IsAvailable() const override { return true; }
    void Start(AccelerometerListener*) override { running = true; }
    void Stop() override { running = false; }
    bool IsRunning() const override { return running; }
    void SetWindowShown(bool shown) override { windowShown = shown; }
    bool running = false;
    int windowShown = -1;
};

// Nothing before the first call that needs the source makes it; that call makes it once,
// told of the window state seen meanwhile.
TEST(DeferredAccelerometerSourceTest, MakesTheSourceOnFirstNeedWithTheWindowStateSoFar) {
    const std::function<void(DeferredAccelerometerSource&)> firstNeeds[] = {
        [](DeferredAccelerometerSource& s) { EXPECT_TRUE(s.IsAvailable()); },
        [](DeferredAccelerometerSource& s) { s.Start(nullptr); },
        [](DeferredAccelerometerSource& s) { s.Realize(); }};
    for (const auto& need : firstNeeds) {
        int made = 0;
        NotedSource* noted = nullptr;
        DeferredAccelerometerSource source([&] {
            ++made;
            auto fresh = std::make_unique<NotedSource>();
            noted = fresh.get();
            return fresh;
        });
        source.SetWindowShown(false);
        source.Stop();
        source.ReopenAfterResume();
        source.SetWindowShown(true);
        EXPECT_FALSE(source.IsRunning());
        ASSERT_EQ(made, 0);
        need(source);
        need(source);
        ASSERT_EQ(made, 1);
        EXPECT_EQ(noted->windowShown, 1);
        source.SetWindowShown(false);
        EXPECT_EQ(noted->windowShown, 0);
        EXPECT_EQ(source.IsRunning(), noted->running);
    }
    EXPECT_FALSE(DeferredAccelerometerSource([] { return nullptr; }).IsAvailable());
}

}  // namespace
