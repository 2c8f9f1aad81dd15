#pragma once

#include <QString>

// Unit conversions and number formatting for display.
//
// Everything is stored metric; screens convert to the user's units only when they
// show or read a value. Numbers are formatted in the default QLocale (set once at
// start-up from the system or --locale), with its grouping and decimal separator.
class Converter {
public:
    static double ConvertMilesToKilometers(double x) { return x * 1.609344; }
    static double ConvertKilometersToMiles(double x) { return x / 1.609344; }
    static double CmToInch(double x) { return x / 2.54; }
    static double InchToCm(double x) { return x * 2.54; }
    static double KgToPnd(double x) { return x / 0.45359237; }
    static double PndToKg(double x) { return x * 0.45359237; }

    // Average speed in km/h; 0 when no time has passed or no distance was covered.
    static double GetAverageSpeedKMH(double metres, int seconds);

    // The value with exactly `decimals` fraction digits, in the locale's format.
    static QString GetLocalStringN(double value, int decimals);
    // A whole number in the locale's format, grouped: "1,079,498" or "1.079.498".
    static QString GetCountString(long long value);
    // A number and its unit with one blank between, however the unit's text is padded.
    static QString WithUnit(const QString& number, const QString& unit);
    // "mm:ss", minutes at least two digits and never folded into hours (7500 s is 125:00).
    static QString GetTimeStringN(int seconds);
};
