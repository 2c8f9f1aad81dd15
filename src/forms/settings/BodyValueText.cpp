#include "BodyValueText.h"

#include <algorithm>
#include <cmath>

#include "AppResource.h"
#include "Converter.h"

namespace {
QString Unit(const char* key) {
    return AppResource::GetInstance().GetString(QString::fromUtf8(key));
}
}  // namespace

BodyValueText::FeetInches BodyValueText::ToFeetInches(double cm) {
    const long total = std::lround(Converter::CmToInch(std::max(0.0, cm)));
    return {int(total / 12), int(total % 12)};
}

double BodyValueText::FromFeetInches(int feet, int inches) {
    return Converter::InchToCm(feet * 12.0 + inches);
}

QString BodyValueText::Height(double cm, bool imperial) {
    if (!imperial) return Converter::GetLocalStringN(cm, 0) + QLatin1Char(' ') + Unit("body__ cm");
    const FeetInches split = ToFeetInches(cm);
    return QStringLiteral("%1\u2032 %2\u2033").arg(split.feet).arg(split.inches);
}

QString BodyValueText::Length(double cm, bool imperial) {
    if (!imperial) return Converter::GetLocalStringN(cm, 1) + QLatin1Char(' ') + Unit("body__ cm");
    return Converter::GetLocalStringN(Converter::CmToInch(cm), 1) + QLatin1Char(' ') +
           Unit("settings__ in");
}

QString BodyValueText::Weight(double kg, bool imperial) {
    if (!imperial) {
        // As precise as it was typed: whole grams are stored, so 82.005 shows as such and
        // 82.5 keeps one decimal.
        const long long grams = std::llround(kg * 1000.0);
        const int decimals = grams % 100 == 0 ? 1 : grams % 10 == 0 ? 2 : 3;
        return Converter::GetLocalStringN(grams / 1000.0, decimals) + QLatin1Char(' ') +
               Unit("body__ kg");
    }
    return Converter::GetLocalStringN(Converter::KgToPnd(kg), 1) + QLatin1Char(' ') +
           Unit("body__ lb");
}
