// Calibrating the walking step length from a known distance.
#include "StepLengthCalibration.h"

#include <gtest/gtest.h>

#include <limits>

#include "Body.h"
#include "FreshProfile.h"
#include "PedometerDBManager.h"

namespace {

using Verdict = StepLengthCalibration::Verdict;

// Accepted lengths are stored, shown as calibrated until another length replaces them,
// and kept over a reload; a refusal changes nothing.
TEST(StepLengthCalibrationTest, StoresLengthsInRangeAndRefusesTheRest) {
    const struct {
        double metres;
        int steps;
        Verdict verdict;
        double length;
    } cases[] = {
        {100.0, 136, Verdict::Calibrated, 100.0 / 136}, {30.0, 100, Verdict::Calibrated, 0.3},
        {120.0, 100, Verdict::Calibrated, 1.2},         {29.9, 100, Verdict::TooShort, 0.299},
        {120.1, 100, Verdict::TooLong, 1.201},          {100.0, 0, Verdict::NoSteps, 0.0},
        {0.0, 100, Verdict::NoDistance, 0.0},
        {std::numeric_limits<double>::quiet_NaN(), 100, Verdict::NoDistance, 0.0},
    };
    for (const auto& c : cases) {
        FreshProfile profile;
        Body& body = Body::GetInstance();
        body.setWalkStepSize(0.65);
        PedometerDBManager::GetInstance().SaveBody();
        const StepLengthCalibration::Result result = StepLengthCalibration::Apply(c.metres, c.steps);
        EXPECT_EQ(result.verdict, c.verdict) << c.metres << " m in " << c.steps;
        EXPECT_NEAR(result.stepLength, c.length, 1e-9);
        const bool accepted = c.verdict == Verdict::Calibrated;
        EXPECT_EQ(StepLengthCalibration::IsCalibrated(), accepted);
        EXPECT_EQ(*StepLengthCalibration::MessageKey(c.verdict) == '\0', accepted);
        body.clear();
        PedometerDBManager::GetInstance().LoadBody();
        EXPECT_NEAR(body.getWalkStepSize(), accepted ? c.length : 0.65, 1e-9);
        EXPECT_EQ(StepLengthCalibration::IsCalibrated(), accepted);
        body.setWalkStepSize(0.7);  // entered by hand: no longer the calibrated one
        EXPECT_FALSE(StepLengthCalibration::IsCalibrated());
    }
}

}  // namespace
