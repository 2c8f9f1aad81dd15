// Which detector counts: the program's --detector choice, else the stored preference.
#include <gtest/gtest.h>

#include "FreshProfile.h"
#include "PedometerDBManager.h"
#include "StepDetectorFactory.h"

namespace {

TEST(StepDetectorFactoryTest, ChoiceOverridesThePreferenceWhichDefaultsToClassic) {
    const struct {
        const char* stored;  // null: never stored
        bool overrideAdaptive;
        DetectorKind expected;
    } cases[] = {
        {nullptr, false, DetectorKind::Classic},    {"adaptive", false, DetectorKind::Adaptive},
        {"classic", true, DetectorKind::Adaptive},  {"classic", false, DetectorKind::Classic},
        {"Adaptive", false, DetectorKind::Classic}, {"", false, DetectorKind::Classic},
    };
    for (const auto& c : cases) {
        FreshProfile profile;
        if (c.stored) {
            ASSERT_TRUE(PedometerDBManager::GetInstance().SetPreference(
                QStringLiteral("detector"), QString::fromLatin1(c.stored)));
        }
        if (c.overrideAdaptive) StepDetectorFactory::SetChoice(DetectorKind::Adaptive);
        EXPECT_EQ(StepDetectorFactory::Configured(), c.expected)
            << (c.stored ? c.stored : "(none)") << (c.overrideAdaptive ? " overridden" : "");
        StepDetectorFactory::ClearChoice();
    }
}

}  // namespace
