#pragma once

#include <QString>
#include <string_view>

class AccelerationRecording;

// Reads accelerometer recordings in the CSV layout phone sensor-recording apps export.
//
// The first line names each column with its unit in parentheses, for example
//   "Time (s)","Acceleration x (m/s^2)","Acceleration y (m/s^2)","Acceleration z (m/s^2)"
// Time may be in s, ms, us or ns; accelerations in m/s^2 or g (stored as g). Quotes
// around names and values are optional, other columns are ignored, blank lines are
// skipped. Times must not decrease.
//
// The whole file is parsed before anything is returned: on a malformed file the
// recording is left empty and the message names the file, the line and the problem.
// Large files are read in big blocks and parsed in place, without per-line strings.
class AccelerationCsvReader {
public:
    static bool ReadFile(const QString& path, AccelerationRecording* recording, QString* error);
    // Parses text already in memory; `name` stands for the file in messages.
    static bool ReadText(std::string_view text, const QString& name,
                         AccelerationRecording* recording, QString* error);
};
