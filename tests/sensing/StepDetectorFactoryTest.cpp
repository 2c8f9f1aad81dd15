// Which detector counts: the program's --detector choice, else the stored preference.
#include <gtest/gtest.h>

#include "FreshProfile.h"
#include "PedometerDBManager.h"
#include "StepDetectorFactory.h"

namespace {

TEST(StepDetectorFactoryTest, ChoiceOverridesThePreferenceWhichDefaultsToAdaptive) {
    const struct {
        const char* stored;  // null: never stored
        bool overrideClassic;
        DetectorKind expected;
    } cases[] = {
        {nullptr, false, DetectorKind::Adaptive},   {"adaptive", false, DetectorKind::Adaptive},
        {"adaptive", true, DetectorKind::Classic},  {"classic", false, DetectorKind::Classic},
        {"Classic", false, DetectorKind::Adaptive}, {"", false, DetectorKind::Adaptive},
    };
    for (const auto& c : cases) {
        FreshProfile profile;
        if (c.stored) {
            ASSERT_TRUE(PedometerDBManager::GetInstance().SetPreference(
                QStringLiteral("detector"), QString::fromLatin1(c.stored)));
        }
        if (c.overrideClassic) StepDetectorFactory::SetChoice(DetectorKind::Classic);
        EXPECT_EQ(StepDetectorFactory::Configured(), c.expected)
            << (c.stored ? c.stored : "(none)") << (c.overrideClassic ? " overridden" : "");
        StepDetectorFactory::ClearChoice();
    }
}

}  // namespace
