#pragma once

#include <QByteArray>
#include <QString>

// Reading and writing sysfs attributes with the kernel's own error numbers, which say
// what went wrong (EBUSY: the buffer is on; EACCES: root-writable; EIO: the chip did not
// answer) where an empty read would not. Plain POSIX calls, so the sensor thread can use
// them without an event loop. Any thread.
class IioSysfs {
public:
    // The attribute's text, trimmed; 0 or the errno of the failed open or read.
    static int Read(const QString& path, QByteArray* text);
    // The attribute's text, trimmed; empty when it cannot be read.
    static QByteArray Text(const QString& path);
    // The attribute as a number; false when missing, unreadable or not a number.
    static bool Number(const QString& path, double* value);
    // Writes `text` and a newline; 0 or the errno of the failed open or write.
    static int Write(const QString& path, const QByteArray& text);
    // Reads an already open attribute from its start as a whole number: 0, the errno of
    // the failed read, or EINVAL for text that is not a number.
    static int ReadInteger(int fd, long long* value);
};
