#include "SettingsHeight.h"

#include <QLineEdit>
#include <cmath>

#include "AppResource.h"
#include "Body.h"
#include "BodyValueText.h"
#include "Converter.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "ScreenDirectory.h"

SettingsHeight::SettingsHeight(QWidget* parent) : BodyEntryForm(parent) {}

bool SettingsHeight::Initialize() {
    setObjectName(QStringLiteral("SettingsHeight"));
    imperial_ = PedometerOptions::GetInstance().measurementSystem;
    return true;
}

QString SettingsHeight::TitleText() const {
    return AppResource::Text("more__ Height");
}

QString SettingsHeight::PromptText() const {
    return AppResource::Text("more__ Choose your height");
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
        AddText(AppResource::Text("body__ (cm)"), 110);
    }
}

EntryRange SettingsHeight::Range() const {
    return EntryRange::Centimetres(kMinCm, kMaxCm, imperial_);
}

EntryRange::Reading SettingsHeight::Read() const {
    const auto& fields = GetFields();
    if (!imperial_) return BodyEntryForm::Read();
    // Feet and inches are read as two whole numbers, then checked as inches.
    const EntryRange::Reading feet = Range().Read(fields[0]->text());
    const EntryRange::Reading inches = Range().Read(fields[1]->text());
    using Verdict = EntryRange::Verdict;
    if (feet.verdict == Verdict::NOT_A_NUMBER || inches.verdict == Verdict::NOT_A_NUMBER) {
        return {Verdict::NOT_A_NUMBER, 0.0};
    }
    if (feet.verdict == Verdict::EMPTY && inches.verdict == Verdict::EMPTY) {
        return {Verdict::EMPTY, 0.0};
    }
    const double total = feet.value * 12.0 + inches.value;
    return {Range().Check(total), total};
}

void SettingsHeight::Save(double value) {
    const double cm = imperial_ ? Converter::InchToCm(value) : value;
    Body::GetInstance().setHeight(cm);
    PedometerDBManager::GetInstance().SaveBody();
}

PEDOMETER_SCREEN("settings-height", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* form = new SettingsHeight;
    form->Initialize();
    return form;
});
