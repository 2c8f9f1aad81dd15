#include "WheightEnterForm.h"

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
bool Imperial() {
    return PedometerOptions::GetInstance().measurementSystem;
}
}  // namespace

WheightEnterForm::WheightEnterForm(QWidget* parent) : BodyEntryForm(parent) {}

bool WheightEnterForm::Initialize(int mode) {
    mode_ = mode;
    setObjectName(QStringLiteral("WheightEnterForm"));
    return true;
}

QString WheightEnterForm::TitleText() const {
    return AppResource::Text(mode_ == MODE_DESIRED ? "more__ Weight target" : "body__ Weight");
}

QString WheightEnterForm::PromptText() const {
    return AppResource::Text(mode_ == MODE_DESIRED ? "body__ Choose your desired weight"
                                                   : "body__ Choose your current weight");
}

void WheightEnterForm::BuildRow() {
    // The goal, or the newest weight logged, or the profile's.
    const double desired = DAOTarget::GetInstance().wheight;
    const double logged = LatestLogged(&DAOBodyLog::weight);
    const double kg = mode_ == MODE_DESIRED && desired > 0.0 ? desired
                      : logged > 0.0                         ? logged
                                                             : Body::GetInstance().getWeight();
    if (Imperial()) {
        const int tenths = int(std::lround(Converter::KgToPnd(kg) * 10.0));
        AddField(3, QString::number(tenths / 10), 130);
        AddText(QString(QLocale().decimalPoint()), 20);
        AddField(1, QString::number(tenths % 10), 70);
        AddText(AppResource::Text("body__ (lb)"), 110);
    } else {
        const int grams = int(std::floor(kg * 1000.0 + 1e-6));
        AddField(3, QString::number(grams / 1000), 130);
        AddText(AppResource::Text("body__ kg"), 60);
        AddField(3, QStringLiteral("%1").arg(grams % 1000, 3, 10, QLatin1Char('0')), 120);
        AddText(AppResource::Text("body__ g"), 40);
    }
}

EntryRange WheightEnterForm::Range() const {
    if (Imperial()) {
        return EntryRange(Converter::KgToPnd(20), Converter::KgToPnd(400), 1,
                          AppResource::Text("body__ lb"));
    }
    return EntryRange(20, 400, 0, AppResource::Text("body__ kg"));
}

int WheightEnterForm::FractionScale() const {
    return Imperial() ? 10 : 1000;
}

void WheightEnterForm::Save(double value) {
    const double kg = Imperial() ? Converter::PndToKg(value) : value + 0.0001;
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    if (mode_ == MODE_DESIRED) {
        DAOTarget::GetInstance().wheight = kg;
        db.SaveTagets();
        return;
    }
    db.GetTodayBodyLog();  // makes today's row
    db.SetTodayWeight(kg);
    Body::GetInstance().setWeight(kg);
    db.SaveBody();
}

namespace {
ScreenDirectory::FormFactory Opens(int mode) {
    return [mode](const ScreenRequest&, QString*) -> PedometerForm* {
        auto* form = new WheightEnterForm;
        form->Initialize(mode);
        return form;
    };
}
}  // namespace

PEDOMETER_SCREEN("body-weight", Opens(0));
PEDOMETER_SCREEN("body-goal-weight", Opens(WheightEnterForm::MODE_DESIRED));
