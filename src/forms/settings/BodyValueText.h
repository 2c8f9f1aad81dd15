#pragma once

#include <QString>

// The profile's values as the settings rows show them, in the user's unit system:
// heights in cm or feet and inches, lengths in cm or inches, weights in kg or lb, with
// the locale's decimal sign (Converter). Values are given metric, as stored. Pure;
// any thread.
class BodyValueText {
public:
    struct FeetInches {
        int feet = 0;
        int inches = 0;
    };
    // The height rounded to whole inches, then split; 5' 12" never appears.
    static FeetInches ToFeetInches(double cm);
    static double FromFeetInches(int feet, int inches);

    static QString Height(double cm, bool imperial);
    // One decimal: "71.4 cm", "28.1 in".
    static QString Length(double cm, bool imperial);
    static QString Weight(double kg, bool imperial);
};
