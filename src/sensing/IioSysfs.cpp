#include "IioSysfs.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>

int IioSysfs::Read(const QString& path, QByteArray* text) {
    const int fd = ::open(path.toLocal8Bit().constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return errno;
    char buffer[4096];
    const ssize_t got = ::read(fd, buffer, sizeof buffer);
    const int error = got < 0 ? errno : 0;
    ::close(fd);
    if (error != 0) return error;
    *text = QByteArray(buffer, int(got)).trimmed();
    return 0;
}

QByteArray IioSysfs::Text(const QString& path) {
    QByteArray text;
    return Read(path, &text) == 0 ? text : QByteArray();
}

bool IioSysfs::Number(const QString& path, double* value) {
    bool ok = false;
    const double read = Text(path).toDouble(&ok);
    if (ok) *value = read;
    return ok;
}

int IioSysfs::Write(const QString& path, const QByteArray& text) {
    const int fd = ::open(path.toLocal8Bit().constData(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    if (fd < 0) return errno;
    const QByteArray line = text + '\n';
    const ssize_t put = ::write(fd, line.constData(), size_t(line.size()));
    const int error = put < 0 ? errno : 0;
    ::close(fd);
    return error;
}

int IioSysfs::ReadInteger(int fd, long long* value) {
    // sysfs attributes are read from the start for a fresh value; a pipe standing in for
    // a slow attribute cannot seek and is read as it comes.
    char text[32];
    ssize_t got = ::pread(fd, text, sizeof text, 0);
    if (got < 0 && errno == ESPIPE) got = ::read(fd, text, sizeof text);
    if (got < 0) return errno;
    const char* begin = text;
    const char* end = text + got;
    while (end != begin && (end[-1] == '\n' || end[-1] == ' ')) --end;
    const auto [next, ec] = std::from_chars(begin, end, *value);
    return ec != std::errc() || next != end || begin == end ? EINVAL : 0;
}
