#include "SettingsHeight.h"

#include <QLineEdit>
#include <cmath>

#include "AppResource.h"
#include "Body.h"
#include "BodyValueText.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "ScreenDirectory.h"

namespace {
QString Text(const char* key) {
    return AppResource::GetInstance().GetString(QString::fromUtf8(key));
}
}  // namespace

SettingsHeight::SettingsHeight(QWidget* parent) : BodyEntryForm(parent) {}

bool SettingsHeight::Initialize() {
    setObjectName(QStringLiteral("SettingsHeight"));
    imperial_ = PedometerOptions::GetInstance().measurementSystem;
    return true;
}

QString SettingsHeight::TitleText() const {
    return Text("more__ Height");
}

QString SettingsHeight::PromptText() const {
    return Text("more__ Choose your height");
}

void SettingsHeight::BuildRow() {
    const double cm = Body::GetInstance().getHeight();
    if (imperial_) {
        const BodyValueText::FeetInches split = BodyValueText::ToFeetInches(cm);
        AddField(1, QString::number(split.feet), 80);
        AddText(QStringLiteral("\u2032"), 20);
        AddField(2, QString::number(split.inches), 100);
        AddText(QStringLiteral("\u2033"), 20);
    } else {
        AddField(3, QString::number(int(std::lround(cm))), 130);
        AddText(Text("body__ (cm)"), 110);
    }
    for (const auto& field : GetFields()) accepted_.append(field->text());
}

double SettingsHeight::Entered() const {
    const auto& fields = GetFields();
    if (imperial_) {
        return BodyValueText::FromFeetInches(ParseInt(fields[0]->text(), 0),
                                             ParseInt(fields[1]->text(), 0));
    }
    return ParseInt(fields[0]->text(), 0);
}

void SettingsHeight::OnTextValueChanged(QLineEdit& field) {
    const int index = GetFields().indexOf(&field);
    if (index < 0) return;
    const double cm = Entered();
    const bool inchesOk = !imperial_ || index == 0 || ParseInt(field.text(), -1) <= 11;
    if (cm >= kMinCm && cm <= kMaxCm && inchesOk && ParseInt(field.text(), -1) >= 0) {
        accepted_[index] = field.text();
    } else {
        field.setText(accepted_[index]);
    }
}

void SettingsHeight::Save() {
    for (const auto& field : GetFields()) {
        if (field) OnTextValueChanged(*field);
    }
    const double cm = Entered();
    if (cm < kMinCm || cm > kMaxCm) return;
    Body::GetInstance().setHeight(cm);
    PedometerDBManager::GetInstance().SaveBody();
}

PEDOMETER_SCREEN("settings-height", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* form = new SettingsHeight;
    form->Initialize();
    return form;
});
