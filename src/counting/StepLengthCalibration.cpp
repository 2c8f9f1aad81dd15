#include "StepLengthCalibration.h"

#include <cmath>

#include "Body.h"
#include "PedometerDBManager.h"

StepLengthCalibration::Result StepLengthCalibration::Compute(double metres, int walkSteps) {
    if (!std::isfinite(metres) || metres <= 0.0) return {Verdict::NoDistance, 0.0};
    if (walkSteps <= 0) return {Verdict::NoSteps, 0.0};
    const double length = metres / walkSteps;
    if (length < kShortestStep) return {Verdict::TooShort, length};
    if (length > kLongestStep) return {Verdict::TooLong, length};
    return {Verdict::Calibrated, length};
}

StepLengthCalibration::Result StepLengthCalibration::Apply(double metres, int walkSteps) {
    const Result result = Compute(metres, walkSteps);
    if (result.verdict != Verdict::Calibrated) return result;
    Body::GetInstance().setWalkStepSize(result.stepLength);
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    db.SaveBody();
    if (!db.SetPreference(QLatin1String(kPreference),
                          QString::number(result.stepLength, 'g', 17))) {
        return {Verdict::NotStored, result.stepLength};
    }
    return result;
}

bool StepLengthCalibration::IsCalibrated() {
    bool ok = false;
    const double calibrated =
        PedometerDBManager::GetInstance().GetPreference(QLatin1String(kPreference)).toDouble(&ok);
    return ok && std::fabs(calibrated - Body::GetInstance().storedWalkStepSize()) < 1e-9;
}

const char* StepLengthCalibration::MessageKey(Verdict verdict) {
    switch (verdict) {
        case Verdict::NoDistance:
            return "profile__ Enter the distance you walked.";
        case Verdict::NoSteps:
            return "profile__ No walking steps were counted on that distance.";
        case Verdict::TooShort:
            return "profile__ That makes a step shorter than 30 cm: check the distance and the steps.";
        case Verdict::TooLong:
            return "profile__ That makes a step longer than 1.2 m: check the distance and the steps.";
        case Verdict::NotStored:
            return "profile__ The step length could not be saved.";
        case Verdict::Calibrated:
            break;
    }
    return "";
}
