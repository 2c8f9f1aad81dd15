#pragma once

#include <QFile>
#include <QString>
#include <string>

// Writes accelerometer samples as a CSV recording that AccelerationCsvReader reads back:
//   "Time (s)","Acceleration x (g)","Acceleration y (g)","Acceleration z (g)"
// Times are written in seconds from the first sample, with nanosecond digits; values in
// the shortest text that reads back to the same float. Output is buffered and written
// in large blocks, so appending is cheap enough for the sensor thread.
class AccelerationRecorder {
public:
    enum class Unit { StandardGravity, MetresPerSecondSquared };

    explicit AccelerationRecorder(Unit unit = Unit::StandardGravity);
    ~AccelerationRecorder();
    AccelerationRecorder(const AccelerationRecorder&) = delete;
    AccelerationRecorder& operator=(const AccelerationRecorder&) = delete;

    // Creates (or truncates) the file and writes the header line.
    bool Open(const QString& path, QString* error);
    bool IsOpen() const { return file_.isOpen(); }
    // One sample in the recorder's unit, stamped on any clock that does not run back.
    void Append(qint64 timeNs, float x, float y, float z);
    // Flushes and closes; false (with a message) if any write failed since Open.
    bool Close(QString* error);
    qint64 SampleCount() const { return samples_; }

private:
    void Flush();

    Unit unit_;
    QFile file_;
    std::string buffer_;
    QString writeError_;
    qint64 firstNs_ = 0;
    qint64 samples_ = 0;
};
