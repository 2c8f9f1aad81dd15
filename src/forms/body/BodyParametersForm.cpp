#include "BodyParametersForm.h"

#include <QLineEdit>
#include <QLocale>
#include <cmath>

#include "AppResource.h"
#include "Body.h"
#include "Converter.h"
#include "DAOTarget.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "ScreenDirectory.h"

namespace {
struct Mode {
    const char* title;
    const char* prompt;
    double typical;  // cm, for a measurement never entered
};

const Mode* ModeOf(int mode) {
    static const Mode kModes[] = {
        {"body__ Chest", "body__ Choose your current chest size", 95},
        {"body__ Waist", "body__ Choose your current waist size", 85},
        {"body__ Hips", "body__ Choose your current hips size", 100},
        {nullptr, nullptr, 0},
        {"more__ Walk step", "more__ Choose your walk step lenght", 0},
        {"more__ Jog step", "more__ Choose your jog step lenght", 0},
        {"more__ Run step", "more__ Choose your run step lenght", 0},
        {"more__ Desired chest", "more__ Choose your desired chest size", 95},
        {"more__ Desired waist", "more__ Choose your desired waist size", 85},
        {"more__ Desired hips", "more__ Choose your desired hips size", 100},
    };
    return mode >= 0 && mode < 10 && kModes[mode].title != nullptr ? &kModes[mode] : nullptr;
}

}  // namespace

BodyParametersForm::BodyParametersForm(QWidget* parent) : BodyEntryForm(parent) {}

bool BodyParametersForm::Initialize(int mode) {
    mode_ = mode;
    setObjectName(QStringLiteral("BodyParametersForm"));
    return true;
}

QString BodyParametersForm::TitleText() const {
    const Mode* mode = ModeOf(mode_);
    return mode != nullptr ? AppResource::Text(mode->title)
                           : AppResource::Text("body__ Body_tracker");
}

QString BodyParametersForm::PromptText() const {
    const Mode* mode = ModeOf(mode_);
    return mode != nullptr ? AppResource::Text(mode->prompt) : QString();
}

double BodyParametersForm::InitialValue() const {
    const Body& body = Body::GetInstance();
    const DAOTarget& goal = DAOTarget::GetInstance();
    static double DAOBodyLog::*const kLogFields[] = {&DAOBodyLog::chest, &DAOBodyLog::waist,
                                                     &DAOBodyLog::hip};
    static const double DAOTarget::*const kGoalFields[] = {&DAOTarget::chest, &DAOTarget::waist,
                                                           &DAOTarget::hips};
    double value = 0.0;
    switch (mode_) {
        case 0:
        case 1:
        case 2:
            value = LatestLogged(kLogFields[mode_]);
            break;
        case 4:
            return body.getWalkStepSize() * 100.0;
        case 5:
            return body.getJogStepSize() * 100.0;
        case 6:
            return body.getRunStepSize() * 100.0;
        case 7:
        case 8:
        case 9:
            value = goal.*kGoalFields[mode_ - 7];
            if (value <= 0.0) value = LatestLogged(kLogFields[mode_ - 7]);
            break;
        default:
            return 0.0;
    }
    return value > 0.0 ? value : ModeOf(mode_)->typical;
}

void BodyParametersForm::BuildRow() {
    const bool inches = PedometerOptions::GetInstance().measurementSystem;
    double shown = InitialValue();
    if (inches) shown = Converter::CmToInch(shown);
    const int tenthsTotal = int(std::lround(shown * 10.0));
    AddField(3, QString::number(tenthsTotal / 10), 130);
    AddText(QString(QLocale().decimalPoint()), 20);
    AddField(1, QString::number(tenthsTotal % 10), 70);
    AddText(AppResource::Text(inches ? "body__ (in)" : "body__ (cm)"), 110);
}

EntryRange BodyParametersForm::Range() const {
    return EntryRange::Centimetres(30, 250, PedometerOptions::GetInstance().measurementSystem);
}

void BodyParametersForm::Save(double value) {
    if (PedometerOptions::GetInstance().measurementSystem) value = Converter::InchToCm(value);

    PedometerDBManager& db = PedometerDBManager::GetInstance();
    Body& body = Body::GetInstance();
    DAOTarget& goal = DAOTarget::GetInstance();
    switch (mode_) {
        case 0:
        case 1:
        case 2:
            db.GetTodayBodyLog();  // makes today's row
            if (mode_ == 0) db.SetTodayChest(value);
            if (mode_ == 1) db.SetTodayWaist(value);
            if (mode_ == 2) db.SetTodayHip(value);
            break;
        case 4:
        case 5:
        case 6:
            if (mode_ == 4) body.setWalkStepSize(value / 100.0);
            if (mode_ == 5) body.setJogStepSize(value / 100.0);
            if (mode_ == 6) body.setRunStepSize(value / 100.0);
            db.SaveBody();
            break;
        case 7:
        case 8:
        case 9:
            if (mode_ == 7) goal.chest = value;
            if (mode_ == 8) goal.waist = value;
            if (mode_ == 9) goal.hips = value;
            db.SaveTagets();
            break;
        default:
            break;
    }
}

namespace {
ScreenDirectory::FormFactory Opens(int mode) {
    return [mode](const ScreenRequest&, QString*) -> PedometerForm* {
        auto* form = new BodyParametersForm;
        form->Initialize(mode);
        return form;
    };
}
}  // namespace

PEDOMETER_SCREEN("body-chest", Opens(0));
PEDOMETER_SCREEN("body-waist", Opens(1));
PEDOMETER_SCREEN("body-hips", Opens(2));
PEDOMETER_SCREEN("body-step-walk", Opens(4));
PEDOMETER_SCREEN("body-step-jog", Opens(5));
PEDOMETER_SCREEN("body-step-run", Opens(6));
PEDOMETER_SCREEN("body-goal-chest", Opens(7));
PEDOMETER_SCREEN("body-goal-waist", Opens(8));
PEDOMETER_SCREEN("body-goal-hips", Opens(9));
