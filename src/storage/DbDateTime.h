#pragma once

#include <QDateTime>
#include <string>

// The stored text form of date-time columns: "YYYY-MM-DD HH:MM:SS" in local time.
//
// Fixed-width fields from the year down make text order equal chronological order,
// which the queries rely on (BETWEEN ranges, ORDER BY). Conversion is hand-written
// because history screens convert thousands of values and QDateTime::fromString is
// several times slower.
class DbDateTime {
public:
    // The text of `when` at one-second resolution; empty for an invalid date-time.
    static std::string ToText(const QDateTime& when);
    // Reads "YYYY-MM-DD HH:MM:SS" (a 'T' in place of the blank, or the date alone,
    // is accepted too). Anything else gives an invalid QDateTime.
    static QDateTime FromText(const char* text);

    // `when`'s calendar day at 00:00:00.
    static QDateTime DayStart(const QDateTime& when);
    // The day after `when`'s calendar day, at 00:00:00.
    static QDateTime NextDayStart(const QDateTime& when);

    // The default of a date-time field that has not been set: 0001-01-01 00:00:00.
    static QDateTime Unset();
};
