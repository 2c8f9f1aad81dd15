#pragma once

#include <QString>
#include <memory>

#include "IioAccelerometerSource.h"

class AccelerometerSource;

// Picks the accelerometer source for this run.
//
// Choices: "auto" (Qt Sensors if it has a real backend, else IIO when the machine has
// IIO devices, else none), "qt", "iio", "iio-steps" (the chip's own step counter,
// IioStepCounterSource), "none", or "replay:FILE" to play a recording in
// real time as if it were the sensor. The application sets the choice from its command
// line before the step detector is created; the default is "auto".
//
// An IIO source takes the device chosen in the settings ("sensor-iio-device"), and
// samples at 12.5 Hz or more for the adaptive detector, 33 Hz or more for the classic
// one (StepDetectorFactory::Configured).
class AccelerometerSourceFactory {
public:
    static constexpr double kClassicMinimumHz = 33.0;
    static constexpr double kAdaptiveMinimumHz = 12.5;

    static void SetChoice(const QString& choice);
    static QString Choice();
    // True when `choice` is one of the forms above (the file is not checked).
    static bool IsValidChoice(const QString& choice);

    // A source for the current choice. A replay file that cannot be read gives the
    // "none" source and the reader's message in `error`.
    static std::unique_ptr<AccelerometerSource> Create(QString* error = nullptr);
    static std::unique_ptr<AccelerometerSource> Create(const QString& choice,
                                                       QString* error = nullptr);
    // The IIO options for this run: IioPaths' roots, the preferred device, the rate.
    static IioAccelerometerSource::Options IioOptions();
};
