#include "PlatformSettings.h"

#include <gtest/gtest.h>

TEST(PlatformSettingsTest, SilentModeIsOffUntilSetAndFollowsTheSetter) {
    EXPECT_FALSE(PlatformSettings::IsSilentMode());
    PlatformSettings::SetSilentMode(true);
    EXPECT_TRUE(PlatformSettings::IsSilentMode());
    PlatformSettings::SetSilentMode(false);
    EXPECT_FALSE(PlatformSettings::IsSilentMode());
}
