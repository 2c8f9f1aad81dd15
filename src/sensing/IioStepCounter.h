#pragma once

#include <QString>
#include <QtGlobal>

// The step counter some accelerometers keep in hardware (the bma400, bmi270 and bmi323
// drivers expose it as in_steps_input, switched on by in_steps_en). It counts while the
// system sleeps as long as the chip stays powered.
//
// Enable switches it on and takes the count as the starting point; each Read gives the
// steps since the read before. A count below the last one means the counter started
// again from zero (the chip was reset or lost power), so the new count is all new steps.
// One thread at a time.
class IioStepCounter {
public:
    // The first device under `devicesRoot` with a step counter; empty when none.
    static QString FindDevice(const QString& devicesRoot);

    explicit IioStepCounter(const QString& device) : device_(device) {}

    // Switches the counter on; false (with the errno's text in `why`) when it cannot be
    // switched on or read.
    bool Enable(QString* why);
    // The steps since the last read; -1 when the counter cannot be read.
    int Read();

private:
    const QString device_;
    qint64 last_ = 0;
};
