#include "DeferredAccelerometerSource.h"

#include <gtest/gtest.h>

namespace {

// Notes the last window state it was told.
struct NotedSource : AccelerometerSource {
    bool IsAvailable() const override { return false; }
    void Start(AccelerometerListener*) override {}
    void Stop() override {}
    bool IsRunning() const override { return false; }
    void SetWindowShown(bool shown) override { windowShown = shown; }
    int windowShown = -1;
};

// Nothing before the first call that needs the source makes it; that call (IsAvailable,
// Start or Realize, by number) makes it once, told of the window state seen meanwhile.
TEST(DeferredAccelerometerSourceTest, MakesTheSourceOnFirstNeedWithTheWindowStateSoFar) {
    for (int need = 0; need < 3; ++need) {
        int made = 0;
        NotedSource* noted = nullptr;
        DeferredAccelerometerSource source([&] {
            ++made;
            return std::unique_ptr<NotedSource>(noted = new NotedSource);
        });
        source.SetWindowShown(false);
        source.Stop();
        source.ReopenAfterResume();
        source.SetWindowShown(true);
        EXPECT_FALSE(source.IsRunning());
        ASSERT_EQ(made, 0);
        for (int twice = 0; twice < 2; ++twice) {
            if (need == 0) {
                EXPECT_FALSE(source.IsAvailable());
            }
            if (need == 1) source.Start(nullptr);
            if (need == 2) source.Realize();
        }
        ASSERT_EQ(made, 1) << need;
        EXPECT_EQ(noted->windowShown, 1);
        source.SetWindowShown(false);
        EXPECT_EQ(noted->windowShown, 0);
    }
}

}  // namespace
