#include "DataFolderLock.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QDir>
#include <cstring>

std::unique_ptr<DataFolderLock> DataFolderLock::Acquire(const QString& folder, QString* error) {
    const QString path = QDir(folder).filePath(QLatin1String(kFileName));
    const QByteArray native = QFile::encodeName(path);
    const int fd = ::open(native.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd < 0) {
        *error = QStringLiteral("cannot make the lock file %1: %2")
                     .arg(path, QString::fromLocal8Bit(std::strerror(errno)));
        return nullptr;
    }
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        const int cause = errno;
        char text[32] = {};
        const ssize_t got = ::pread(fd, text, sizeof text - 1, 0);
        ::close(fd);
        const QString holder = got > 0 ? QString::fromLatin1(text).trimmed() : QString();
        if (cause == EWOULDBLOCK) {
            *error =
                holder.isEmpty()
                    ? QStringLiteral("another pedometer is using the data folder %1").arg(folder)
                    : QStringLiteral(
                          "another pedometer (process %1) is using the data "
                          "folder %2")
                          .arg(holder, folder);
        } else {
            *error = QStringLiteral("cannot lock %1: %2")
                         .arg(path, QString::fromLocal8Bit(std::strerror(cause)));
        }
        return nullptr;
    }
    const QByteArray pid = QByteArray::number(static_cast<qint64>(::getpid())) + '\n';
    if (::ftruncate(fd, 0) == 0) {
        [[maybe_unused]] const ssize_t written = ::pwrite(fd, pid.constData(), pid.size(), 0);
    }
    return std::unique_ptr<DataFolderLock>(new DataFolderLock(fd));
}

DataFolderLock::~DataFolderLock() {
    ::close(fd_);  // closing the only descriptor lets go of the lock
}
