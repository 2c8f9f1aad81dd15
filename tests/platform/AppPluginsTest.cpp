#include "AppPlugins.h"

#include <gtest/gtest.h>

#include "AccelerometerPlugin.h"
#include "SnsPlugin.h"
#include "SoundPlayerPlugin.h"

// The plug-ins are found beside the test binaries as beside the application, each with the
// interface its users ask for; a missing one is null, so its users go on without it, and
// is told once.
TEST(AppPluginsTest, EachPluginOffersItsInterfaceAndAMissingOneIsToldOnce) {
    testing::internal::CaptureStderr();
    EXPECT_NE(AppPlugins::Get<SoundPlayerPlugin>(QStringLiteral("pedometer-sound")), nullptr);
    EXPECT_NE(AppPlugins::Get<AccelerometerPlugin>(QStringLiteral("pedometer-sensors")), nullptr);
    EXPECT_NE(AppPlugins::Get<SnsPlugin>(QStringLiteral("pedometer-social")), nullptr);
    EXPECT_EQ(AppPlugins::Get<SnsPlugin>(QStringLiteral("pedometer-sound")), nullptr);
    for (int ask = 0; ask < 2; ++ask)
        EXPECT_EQ(AppPlugins::Instance(QStringLiteral("pedometer-none")), nullptr);
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_EQ(told.find("cannot load the plug-in"), told.rfind("cannot load the plug-in")) << told;
    EXPECT_NE(told.find("/libpedometer-none.so"), std::string::npos) << told;
}
