#include "AgeForm.h"

#include <QLineEdit>

#include "AppResource.h"
#include "Body.h"
#include "PedometerDBManager.h"
#include "ScreenDirectory.h"

namespace {
constexpr int kDefaultAge = 30;
}

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

void AgeForm::OnTextValueChanged(QLineEdit& field) {
    bool ok = false;
    field.text().toInt(&ok);
    if (!ok) field.setText(QString::number(kDefaultAge));
}

void AgeForm::Save() {
    const auto& fields = GetFields();
    if (fields.isEmpty() || !fields[0]) return;
    Body::GetInstance().setAge(ParseInt(fields[0]->text(), kDefaultAge));
    PedometerDBManager::GetInstance().SaveBody();
}

PEDOMETER_SCREEN("age", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* form = new AgeForm;
    form->Initialize();
    return form;
});
