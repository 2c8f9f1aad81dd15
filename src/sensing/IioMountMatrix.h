#pragma once

#include <QString>
#include <array>

// How an accelerometer chip sits in its case: a 3 x 3 matrix that turns the chip's axes
// into the screen's (x to the right, y up, z out of the screen).
//
// The kernel and udev write it as three rows of three numbers, rows split by ';' and
// numbers by ',', e.g. "0, 1, 0; -1, 0, 0; 0, 0, 1" for a chip turned a quarter turn.
class IioMountMatrix {
public:
    // The identity: the chip's axes already are the screen's.
    IioMountMatrix() = default;

    // Reads the written form; false (and `matrix` untouched) for anything that is not
    // nine finite numbers in three rows, or for a matrix that loses an axis (all zeros).
    static bool Parse(const QString& text, IioMountMatrix* matrix);

    // The screen's axes for a reading in the chip's axes.
    std::array<double, 3> Apply(const std::array<double, 3>& chip) const;

private:
    std::array<std::array<double, 3>, 3> rows_{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
};
