// Calibrating the walking step length from a known distance.
#include "StepLengthCalibration.h"

#include <gtest/gtest.h>

#include <limits>

#include "Body.h"
#include "FreshProfile.h"
#include "PedometerDBManager.h"
#include "TestData.h"

namespace {

using Verdict = StepLengthCalibration::Verdict;

// Accepted lengths are stored, shown as calibrated until another length replaces them,
// and kept over a reload; a refusal changes nothing.
TEST(StepLengthCalibrationTest, StoresLengthsInRangeAndRefusesTheRest) {
    const QList<QByteArray> verdicts{"calibrated", "no distance", "no steps", "too short",
                                     "too long"};
    for (const QByteArrayList& c : testdata::Table("calibration-walks.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        FreshProfile profile;
        Body& body = Body::GetInstance();
        body.setWalkStepSize(0.65);
        PedometerDBManager::GetInstance().SaveBody();
        const double metres =
            c[0] == "nan" ? std::numeric_limits<double>::quiet_NaN() : c[0].toDouble();
        const StepLengthCalibration::Result result =
            StepLengthCalibration::Apply(metres, c[1].toInt());
        EXPECT_EQ(int(result.verdict), verdicts.indexOf(c[2]));
        const double length = c[3].contains('/')
                                  ? c[3].split('/')[0].toDouble() / c[3].split('/')[1].toDouble()
                                  : c[3].toDouble();
        EXPECT_NEAR(result.stepLength, length, 1e-9);
        const bool accepted = result.verdict == Verdict::Calibrated;
        EXPECT_EQ(StepLengthCalibration::IsCalibrated(), accepted);
        EXPECT_EQ(*StepLengthCalibration::MessageKey(result.verdict) == '\0', accepted);
        body.clear();
        PedometerDBManager::GetInstance().LoadBody();
        EXPECT_NEAR(body.getWalkStepSize(), accepted ? length : 0.65, 1e-9);
        EXPECT_EQ(StepLengthCalibration::IsCalibrated(), accepted);
        body.setWalkStepSize(0.7);  // entered by hand: no longer the calibrated one
        EXPECT_FALSE(StepLengthCalibration::IsCalibrated());
    }
}

}  // namespace
