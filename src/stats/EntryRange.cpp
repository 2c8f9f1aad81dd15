#include "EntryRange.h"

#include <QRegularExpression>
#include <cmath>

#include "AppResource.h"
#include "Converter.h"

EntryRange::EntryRange(double min, double max, int decimals, const QString& unit)
    : decimals_(decimals), unit_(unit) {
    const double scale = std::pow(10.0, decimals);
    // The small slack keeps 30.0 from rounding up to 30.1 through binary noise.
    min_ = std::ceil(min * scale - 1e-6) / scale;
    max_ = std::floor(max * scale + 1e-6) / scale;
}

EntryRange EntryRange::Centimetres(double minCm, double maxCm, bool inches) {
    AppResource& texts = AppResource::GetInstance();
    if (inches) {
        return EntryRange(Converter::CmToInch(minCm), Converter::CmToInch(maxCm), 1,
                          texts.GetString(QStringLiteral("settings__ in")));
    }
    return EntryRange(minCm, maxCm, 0, texts.GetString(QStringLiteral("body__ cm")));
}

EntryRange EntryRange::GoalCalories() {
    return EntryRange(10, 9999, 0,
                      AppResource::GetInstance().GetString(QStringLiteral("today_goal__ Cal")));
}

EntryRange EntryRange::GoalMinutes() {
    return EntryRange(5, 999, 0,
                      AppResource::GetInstance().GetString(QStringLiteral("today_goal__ min")));
}

EntryRange EntryRange::GoalSteps() {
    return EntryRange(100, 99999, 0,
                      AppResource::GetInstance().GetString(QStringLiteral("today_goal__ steps")));
}

EntryRange EntryRange::GoalDistance(bool miles) {
    AppResource& texts = AppResource::GetInstance();
    return miles ? EntryRange(0.1, 99.9, 1, texts.GetString(QStringLiteral("today_goal__ ml")))
                 : EntryRange(0.1, 99.999, 1, texts.GetString(QStringLiteral("today_goal__ km")));
}

EntryRange::Verdict EntryRange::Check(double value) const {
    // Compared at a hair's width below the shown precision: 11.8 in is accepted when the
    // lower bound shows as 11.8, whatever the conversion's last bits.
    const double slack = 1e-9;
    if (value < min_ - slack) return Verdict::TOO_SMALL;
    if (value > max_ + slack) return Verdict::TOO_LARGE;
    return Verdict::VALID;
}

EntryRange::Reading EntryRange::Read(const QString& whole, const QString& fraction,
                                     int fractionScale) const {
    static const QRegularExpression digits(QStringLiteral("^[0-9]*$"));
    const QString w = whole.trimmed();
    const QString f = fractionScale != 0 ? fraction.trimmed() : QString();
    if (w.isEmpty() && f.isEmpty()) return {Verdict::EMPTY, 0.0};
    if (!digits.match(w).hasMatch() || !digits.match(f).hasMatch() || w.size() > 9 ||
        f.size() > 9) {
        return {Verdict::NOT_A_NUMBER, 0.0};
    }
    double value = w.isEmpty() ? 0.0 : w.toDouble();
    if (!f.isEmpty()) value += f.toDouble() / fractionScale;
    return {Check(value), value};
}

QString EntryRange::Shown(double value) const {
    return Converter::GetLocalStringN(value, decimals_);
}

QString EntryRange::Hint() const {
    return AppResource::GetInstance().GetString(QStringLiteral("entry__ From %@ to %@ %@"),
                                                {Shown(min_), Shown(max_), unit_});
}

QString EntryRange::Message(Verdict verdict) const {
    AppResource& texts = AppResource::GetInstance();
    switch (verdict) {
        case Verdict::EMPTY:
            return texts.GetString(QStringLiteral("entry__ Please enter a number."));
        case Verdict::NOT_A_NUMBER:
            return texts.GetString(QStringLiteral("entry__ Not a number: please use digits only."));
        case Verdict::TOO_SMALL:
            return texts.GetString(QStringLiteral("entry__ Too small: at least %@ %@."),
                                   {Shown(min_), unit_});
        case Verdict::TOO_LARGE:
            return texts.GetString(QStringLiteral("entry__ Too large: at most %@ %@."),
                                   {Shown(max_), unit_});
        case Verdict::VALID:
            break;
    }
    return {};
}
