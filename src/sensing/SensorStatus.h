#pragma once

#include <QString>

// Why the accelerometer delivers nothing or delivers poorly, for the window's notice:
// the device is busy in another program, or its sampling rate cannot be set. The
// sensor thread reports and clears; the notice reads every few seconds. A busy device
// outranks a fixed rate. Any thread.
class SensorStatus {
public:
    enum class Problem { Busy, RateFixed };

    // Raises `problem` with `detail` (a device or rate, shown in the message).
    static void Report(Problem problem, const QString& detail);
    static void Clear(Problem problem);
    // The text key and detail of the most pressing problem; an empty key when none.
    static void Current(QString* key, QString* detail);
    static const char* Key(Problem problem);
};
