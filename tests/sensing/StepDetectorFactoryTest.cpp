// Which detector counts: the program's --detector choice, else the stored preference.
#include <gtest/gtest.h>

#include "FreshProfile.h"
#include "PedometerDBManager.h"
#include "StepDetectorFactory.h"
#include "TestData.h"

namespace {

TEST(StepDetectorFactoryTest, ChoiceOverridesThePreferenceWhichDefaultsToAdaptive) {
    for (const QByteArrayList& c : testdata::Table("detector-choices.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        FreshProfile profile;
        if (c[0] != "none") {
            ASSERT_TRUE(PedometerDBManager::GetInstance().SetPreference(
                QStringLiteral("detector"),
                c[0] == "empty" ? QStringLiteral("") : QString::fromLatin1(c[0])));
        }
        if (c[1] == "classic") StepDetectorFactory::SetChoice(DetectorKind::Classic);
        EXPECT_EQ(StepDetectorFactory::Configured() == DetectorKind::Classic, c[2] == "classic");
        StepDetectorFactory::ClearChoice();
    }
}

}  // namespace
