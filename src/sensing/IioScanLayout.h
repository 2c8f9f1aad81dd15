#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>
#include <array>
#include <cstdint>
#include <vector>

// How one scan (one sample of every enabled channel) lies in the bytes read from an IIO
// buffer, taken from the device's scan_elements folder.
//
// Each enabled channel's "*_type" reads "[be|le]:[s|u]bits/storagebits[Xrepeat]>>shift";
// channels follow in the order of their "*_index", each aligned to its own storage size,
// and a scan is padded to the largest of them. The accelerometer's x, y and z and the
// timestamp are located by name; other enabled channels are stepped over.
class IioScanLayout {
public:
    struct Channel {
        QByteArray name;  // "accel_x", "timestamp", ...
        int index = 0;
        bool bigEndian = false;
        bool isSigned = false;
        int bits = 0;
        int storageBits = 0;
        int repeat = 1;
        int shift = 0;
        int offset = 0;  // byte offset in the scan, set by Arrange
    };

    // One "*_type" text to a channel's format; false for anything else.
    static bool ParseType(const QByteArray& text, Channel* channel);
    // The enabled channels of `device`; false (with the reason) when the folder cannot be
    // read or the accelerometer's three axes are not all enabled.
    static bool Read(const QString& device, IioScanLayout* layout, QString* error);
    // Lays out `channels` (any order) as the kernel does; false without x, y and z.
    bool Arrange(std::vector<Channel> channels);

    int ScanBytes() const { return scanBytes_; }
    bool HasTimestamp() const { return timestamp_ >= 0; }
    // The raw x, y and z of one scan, and its timestamp in ns when it has one.
    void Decode(const std::uint8_t* scan, std::array<long long, 3>* axes, qint64* timeNs) const;

private:
    long long Value(const std::uint8_t* scan, const Channel& channel) const;

    std::vector<Channel> channels_;
    std::array<int, 3> axes_{-1, -1, -1};
    int timestamp_ = -1;
    int scanBytes_ = 0;
};
