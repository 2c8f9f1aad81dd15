#include "SettingsProfile.h"

#include "Body.h"
#include "BodyValueText.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "ScreenDirectory.h"
#include "SettingsPanel.h"
#include "SoundsManager.h"
#include "StepLengthCalibration.h"

SettingsProfile::SettingsProfile(QWidget* parent) : SettingsScreen(parent) {}

bool SettingsProfile::Initialize() {
    setObjectName(QStringLiteral("SettingsProfile"));
    return true;
}

QString SettingsProfile::TitleText() const {
    return Text("profile__ My profile");
}

void SettingsProfile::Fill(SettingsPanel& panel) {
    const Body& body = Body::GetInstance();
    const bool imperial = PedometerOptions::GetInstance().measurementSystem;
    panel.AddValueRow(Text("profile__ Sex"),
                      Text(body.isMen() ? "profile__ Male" : "profile__ Female"), ID_SEX, this);
    panel.AddValueRow(Text("profile__ Age"),
                      QStringLiteral("%1 %2").arg(body.getAge()).arg(Text("profile__ years")),
                      ID_AGE, this);
    panel.AddValueRow(Text("profile__ Height"), BodyValueText::Height(body.getHeight(), imperial),
                      ID_HEIGHT, this);
    panel.AddValueRow(Text("profile__ Weight"), BodyValueText::Weight(body.getWeight(), imperial),
                      ID_WEIGHT, this);

    panel.AddHeader(Text("profile__ Step lengths"));
    const QString automatic = Text("settings__ auto");
    auto step = [&](const char* key, double metres, bool set, int id) {
        QString value = BodyValueText::Length(metres * 100.0, imperial);
        if (!set) value = automatic + QLatin1Char(' ') + value;
        if (id == ID_WALK_STEP && StepLengthCalibration::IsCalibrated()) {
            value = Text("profile__ calibrated") + QLatin1Char(' ') + value;
        }
        panel.AddValueRow(Text(key), value, id, this);
    };
    step("more__ Walk step", body.getWalkStepSize(), body.storedWalkStepSize() != -1.0,
         ID_WALK_STEP);
    step("more__ Jog step", body.getJogStepSize(), body.storedJogStepSize() != -1.0, ID_JOG_STEP);
    step("more__ Run step", body.getRunStepSize(), body.storedRunStepSize() != -1.0, ID_RUN_STEP);
    panel.AddRowButton(Text("profile__ Calibrate step length"), ID_CALIBRATE, this);
    panel.AddRowButton(Text("settings__ Step lengths from my height"), ID_AUTO_STEPS, this);
    panel.AddNote(
        Text("settings__ Step lengths from the height are used until you enter your own."), 60);
}

void SettingsProfile::OnActionPerformed(const QWidget& source, int actionId) {
    Body& body = Body::GetInstance();
    switch (actionId) {
        case ID_SEX:
            SoundsManager::GetInstance().ClickSound();
            body.setMen(body.isMen() ? 0 : 1);
            PedometerDBManager::GetInstance().SaveBody();
            Refill();
            return;
        case ID_AUTO_STEPS:
            SoundsManager::GetInstance().ClickSound();
            body.setWalkStepSize(-1.0);
            body.setJogStepSize(-1.0);
            body.setRunStepSize(-1.0);
            PedometerDBManager::GetInstance().SaveBody();
            Refill();
            return;
        case ID_CALIBRATE:
            SoundsManager::GetInstance().ClickSound();
            Open(QStringLiteral("settings-calibrate"));
            return;
        case ID_AGE:
        case ID_HEIGHT:
        case ID_WEIGHT:
        case ID_WALK_STEP:
        case ID_JOG_STEP:
        case ID_RUN_STEP: {
            static const char* const kScreens[] = {"age",           "settings-height",
                                                   "body-weight",   "body-step-walk",
                                                   "body-step-jog", "body-step-run"};
            SoundsManager::GetInstance().ClickSound();
            Open(QString::fromUtf8(kScreens[actionId - ID_AGE]));
            return;
        }
        default:
            SettingsScreen::OnActionPerformed(source, actionId);
    }
}

PEDOMETER_SCREEN("settings-profile", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* form = new SettingsProfile;
    form->Initialize();
    return form;
});
