#include "ScreenOffCounting.h"

#include <gtest/gtest.h>

#include "FreshProfile.h"

TEST(ScreenOffCountingTest, OnUntilTurnedOffAndTheRunsChoiceWins) {
    FreshProfile profile;
    EXPECT_TRUE(ScreenOffCounting::IsOn());
    ASSERT_TRUE(ScreenOffCounting::Store(false));
    EXPECT_FALSE(ScreenOffCounting::IsOn());
    bool on = false;
    ASSERT_TRUE(ScreenOffCounting::Parse(QStringLiteral("on"), &on) && on);
    ScreenOffCounting::SetOverride(on);
    EXPECT_TRUE(ScreenOffCounting::IsOn());
    ScreenOffCounting::SetOverride(std::nullopt);
    EXPECT_FALSE(ScreenOffCounting::IsOn());
    EXPECT_FALSE(ScreenOffCounting::Parse(QStringLiteral("maybe"), &on));
}
