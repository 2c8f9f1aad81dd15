#include "AgeForm.h"

#include "AppResource.h"
#include "Body.h"
#include "PedometerDBManager.h"
#include "ScreenDirectory.h"

AgeForm::AgeForm(QWidget* parent) : BodyEntryForm(parent) {}

bool AgeForm::Initialize() {
    setObjectName(QStringLiteral("AgeForm"));
    return true;
}

QString AgeForm::TitleText() const {
    return AppResource::GetInstance().GetString(QStringLiteral("more__ Age"));
}

QString AgeForm::PromptText() const {
    return AppResource::GetInstance().GetString(QStringLiteral("more__ Choose your age"));
}

void AgeForm::BuildRow() {
    AddField(3, QString::number(Body::GetInstance().getAge()), 130);
}

EntryRange AgeForm::Range() const {
    return EntryRange(5, 120, 0,
                      AppResource::GetInstance().GetString(QStringLiteral("profile__ years")));
}

void AgeForm::Save(double value) {
    Body::GetInstance().setAge(int(value));
    PedometerDBManager::GetInstance().SaveBody();
}

PEDOMETER_SCREEN("age", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* form = new AgeForm;
    form->Initialize();
    return form;
});
