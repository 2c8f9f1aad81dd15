#include "DataFolderLock.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <cstring>

#include "UserDataFile.h"

namespace {
// Opens the lock file without following a link planted at its name.
int openLockFile(const QString& path, QString* error) {
    const int fd =
        ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (fd < 0) {
        const int cause = errno;
        const QString link = UserDataFile::LinkRefusal(path);
        *error = !link.isEmpty() ? QStringLiteral("cannot lock the data folder: %1").arg(link)
                                 : QStringLiteral("cannot make the lock file %1: %2")
                                       .arg(path, UserDataFile::Reason(cause));
    }
    return fd;
}

// Takes the lock on `fd` and writes our process id into it; false with `error` naming
// the holder when another process has it.
bool lockAndSign(int fd, const QString& path, const QString& folder, QString* error) {
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        const int cause = errno;
        char text[32] = {};
        const ssize_t got = ::pread(fd, text, sizeof text - 1, 0);
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
                         .arg(path, UserDataFile::Reason(cause));
        }
        return false;
    }
    const QByteArray pid = QByteArray::number(static_cast<qint64>(::getpid())) + '\n';
    if (::ftruncate(fd, 0) == 0) {
        [[maybe_unused]] const ssize_t written = ::pwrite(fd, pid.constData(), pid.size(), 0);
    }
    return true;
}
}  // namespace

std::unique_ptr<DataFolderLock> DataFolderLock::Acquire(const QString& folder, QString* error) {
    const QString path = QDir(folder).filePath(QLatin1String(kFileName));
    const int fd = openLockFile(path, error);
    if (fd < 0) return nullptr;
    if (!lockAndSign(fd, path, folder, error)) {
        ::close(fd);
        return nullptr;
    }
    return std::unique_ptr<DataFolderLock>(new DataFolderLock(fd, folder));
}

bool DataFolderLock::Reclaim(QString* error) {
    const QString path = QDir(folder_).filePath(QLatin1String(kFileName));
    struct stat held {};
    struct stat named {};
    if (::fstat(fd_, &held) == 0 &&
        ::lstat(QFile::encodeName(path).constData(), &named) == 0 && held.st_dev == named.st_dev &&
        held.st_ino == named.st_ino) {
        return true;  // still the file this lock holds
    }
    // Deleted or replaced: a new file at the name would let a second writer in.
    ::unlink(QFile::encodeName(path).constData());
    const int fd = openLockFile(path, error);
    if (fd < 0) return false;
    if (!lockAndSign(fd, path, folder_, error)) {
        ::close(fd);
        return false;
    }
    ::close(fd_);
    fd_ = fd;
    return true;
}

DataFolderLock::~DataFolderLock() {
    ::close(fd_);  // closing the only descriptor lets go of the lock
}
