#include "ScreenOffCounting.h"

#include <gtest/gtest.h>

#include "FreshProfile.h"

namespace {

TEST(ScreenOffCountingTest, OnUntilTurnedOffAndACommandLineChoiceWinsForTheRun) {
    FreshProfile profile;
    EXPECT_TRUE(ScreenOffCounting::IsOn());
    ASSERT_TRUE(ScreenOffCounting::Store(false));
    EXPECT_FALSE(ScreenOffCounting::IsOn());
    ScreenOffCounting::SetOverride(true);
    EXPECT_TRUE(ScreenOffCounting::IsOn());
    ScreenOffCounting::SetOverride(std::nullopt);
    EXPECT_FALSE(ScreenOffCounting::IsOn());
    ASSERT_TRUE(ScreenOffCounting::Store(true));
    ScreenOffCounting::SetOverride(false);
    EXPECT_FALSE(ScreenOffCounting::IsOn());
    ScreenOffCounting::SetOverride(std::nullopt);
    EXPECT_TRUE(ScreenOffCounting::IsOn());

    const std::pair<const char*, int> words[] = {
        {"on", 1},   {" OFF ", 0}, {"1", 1}, {"0", 0},      {"yes", 1}, {"no", 0},
        {"true", 1}, {"false", 0}, {"", -1}, {"maybe", -1}, {"2", -1}};
    for (const auto& [word, expected] : words) {
        bool on = expected != 1;  // the opposite, so a parse that sets nothing shows
        EXPECT_EQ(ScreenOffCounting::Parse(QLatin1String(word), &on), expected >= 0) << word;
        if (expected >= 0) {
            EXPECT_EQ(on, expected == 1) << word;
        }
    }
}

}  // namespace
