#pragma once

#include <QString>

// A distance target as two entry fields: a whole part and a fraction, which is three
// digits of metres in metric and one digit of tenths of a mile in imperial. Targets are
// kept in kilometres either way. Pure arithmetic, usable on any thread.
struct DistanceEntry {
    int whole = 0;
    int fraction = 0;

    // Splits `kilometers` for display in the user's unit; a fraction that rounds up to
    // a whole unit carries (2.9996 km shows as 3 km 000 m). Negative targets show as 0.
    static DistanceEntry FromKilometers(double kilometers, bool miles);
    // The fraction field's text: "005" for 5 m in metric, "3" for 0.3 mile.
    QString FractionText(bool miles) const;
    // The target in km; nothing at all becomes the least distance, 0.1 km or 0.1 mile,
    // and sets `fraction` to match.
    double ToKilometers(bool miles);
};
