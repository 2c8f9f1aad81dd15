#include "DistanceEntry.h"

#include <algorithm>
#include <cmath>

#include "Converter.h"

DistanceEntry DistanceEntry::FromKilometers(double kilometers, bool miles) {
    const double target =
        std::max(miles ? Converter::ConvertKilometersToMiles(kilometers) : kilometers, 0.0);
    const int scale = miles ? 10 : 1000;
    DistanceEntry entry;
    entry.whole = int(std::trunc(std::min(target, 1e6)));
    entry.fraction = int(std::floor((target - entry.whole) * scale + 0.5));
    if (entry.fraction >= scale) {
        entry.whole += 1;
        entry.fraction -= scale;
    }
    return entry;
}

QString DistanceEntry::FractionText(bool miles) const {
    return miles ? QString::number(fraction)
                 : QStringLiteral("%1").arg(fraction, 3, 10, QLatin1Char('0'));
}

double DistanceEntry::ToKilometers(bool miles) {
    if (whole == 0 && fraction == 0) fraction = miles ? 1 : 100;
    return miles ? Converter::ConvertMilesToKilometers(whole + fraction / 10.0)
                 : whole + fraction / 1000.0;
}
