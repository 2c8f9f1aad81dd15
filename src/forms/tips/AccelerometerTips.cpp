#include "AccelerometerTips.h"

#include "AppResource.h"
#include "Metronome.h"
#include "ScreenDirectory.h"

AccelerometerTips::AccelerometerTips(QWidget* parent) : PedometerForm(parent) {}

bool AccelerometerTips::Initialize() {
    setObjectName(QStringLiteral("ID_BACK_ONLY_FORM"));
    return true;
}

void AccelerometerTips::OnInitializing() {
    ShowBackButton();
    SetBackgroundImage(AppResource::GetInstance().GetString(QStringLiteral("acc_advice_file")));
}

void AccelerometerTips::OnActionPerformed(const QWidget& source, int actionId) {
    // The Back soft key arrives here and goes on to OnFormBackRequested, which updates.
    PedometerForm::OnActionPerformed(source, actionId);
    if (actionId != BACK_ACTION_ID) Metronome::GetInstance().Update();
}

void AccelerometerTips::OnFormBackRequested(TivForm& source) {
    PedometerForm::OnFormBackRequested(source);
    Metronome::GetInstance().Update();
}

PEDOMETER_SCREEN("tips-carry", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* tips = new AccelerometerTips();
    tips->Initialize();
    return tips;
});
