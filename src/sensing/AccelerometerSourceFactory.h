#pragma once

#include <QString>
#include <memory>

class AccelerometerSource;

// Picks the accelerometer source for this run.
//
// Choices: "auto" (Qt Sensors if it has a real backend, else IIO sysfs, else none),
// "qt", "iio", "none", or "replay:FILE" to play a recording in real time as if it were
// the sensor. The application sets the choice from its command line before the step
// detector is created; the default is "auto".
class AccelerometerSourceFactory {
public:
    static void SetChoice(const QString& choice);
    static QString Choice();
    // True when `choice` is one of the forms above (the file is not checked).
    static bool IsValidChoice(const QString& choice);

    // A source for the current choice. A replay file that cannot be read gives the
    // "none" source and the reader's message in `error`.
    static std::unique_ptr<AccelerometerSource> Create(QString* error = nullptr);
    static std::unique_ptr<AccelerometerSource> Create(const QString& choice,
                                                       QString* error = nullptr);
};
