#include "UserDataFile.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cstdlib>
#include <cstring>

QString UserDataFile::Reason(int cause) {
    switch (cause) {
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return QStringLiteral("the disk is full; free some space and try again");
        case EROFS:
            return QStringLiteral("the file system is read-only; choose another place");
        case EACCES:
        case EPERM:
            return QStringLiteral("permission denied; choose a folder you may write to");
        default:
            return QString::fromLocal8Bit(std::strerror(cause));
    }
}

UserDataFile::UserDataFile(QString path) : path_(std::move(path)) {}

UserDataFile::~UserDataFile() {
    Discard();
}

QString UserDataFile::LinkRefusal(const QString& path) {
    struct stat info {};
    if (::lstat(QFile::encodeName(path).constData(), &info) != 0 || !S_ISLNK(info.st_mode))
        return {};
    return QStringLiteral("%1 is a symbolic link (to %2); remove it, it is not followed")
        .arg(path, QFileInfo(path).symLinkTarget());
}

bool UserDataFile::Open() {
    Discard();
    error_.clear();
    if (path_.isEmpty()) {
        error_ = QStringLiteral("cannot write a file without a name");
        return false;
    }
    if (const QString link = LinkRefusal(path_); !link.isEmpty()) {
        error_ = QStringLiteral("cannot write: %1").arg(link);
        return false;
    }
    if (QFileInfo(path_).isDir()) {
        error_ = QStringLiteral("cannot write %1: it is a folder").arg(path_);
        return false;
    }
    QByteArray name = QFile::encodeName(path_ + QStringLiteral(".tmp-XXXXXX"));
    // mkostemp creates the file 0600 with O_EXCL: never an existing file or a link.
    fd_ = ::mkostemp(name.data(), O_CLOEXEC);
    if (fd_ < 0) {
        Fail(errno);
        return false;
    }
    temporary_ = QFile::decodeName(name);
    if (::fchmod(fd_, S_IRUSR | S_IWUSR) != 0) {
        Fail(errno);
        return false;
    }
    return QIODevice::open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

qint64 UserDataFile::writeData(const char* data, qint64 size) {
    if (fd_ < 0) return -1;
    for (qint64 done = 0; done < size;) {
        const ssize_t written = ::write(fd_, data + done, static_cast<size_t>(size - done));
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) {
            Fail(written < 0 ? errno : ENOSPC);
            return -1;
        }
        done += written;
    }
    return size;
}

bool UserDataFile::Commit() {
    if (fd_ < 0) {
        if (error_.isEmpty()) error_ = QStringLiteral("cannot write %1: not open").arg(path_);
        return false;
    }
    if (!error_.isEmpty()) return false;
    if (::fsync(fd_) != 0) {
        Fail(errno);
        return false;
    }
    const int fd = fd_;
    fd_ = -1;
    if (::close(fd) != 0) {
        fd_ = -1;
        Fail(errno);
        return false;
    }
    QIODevice::close();
    // A link planted since Open() is replaced by the rename, not followed.
    if (::rename(QFile::encodeName(temporary_).constData(), QFile::encodeName(path_).constData()) !=
        0) {
        Fail(errno);
        return false;
    }
    temporary_.clear();
    SyncFolder(QFileInfo(path_).absolutePath());  // the new name survives a power cut too
    return true;
}

bool UserDataFile::SyncFile(const QString& path) {
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (fd < 0) return false;
    const bool synced = ::fsync(fd) == 0;
    return ::close(fd) == 0 && synced;
}

void UserDataFile::SyncFolder(const QString& folder) {
    const int fd = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    ::fsync(fd);
    ::close(fd);
}

bool UserDataFile::Write(const QString& path, const QByteArray& bytes, QString* error) {
    UserDataFile file(path);
    const bool written = file.Open() && file.write(bytes) == bytes.size() && file.Commit();
    if (!written && error != nullptr) *error = file.ErrorText();
    return written;
}

void UserDataFile::Fail(int cause) {
    if (error_.isEmpty()) error_ = QStringLiteral("cannot write %1: %2").arg(path_, Reason(cause));
    setErrorString(error_);
    Discard();
}

void UserDataFile::Discard() {
    if (fd_ >= 0) ::close(fd_);
    fd_ = -1;
    if (!temporary_.isEmpty()) ::unlink(QFile::encodeName(temporary_).constData());
    temporary_.clear();
    if (isOpen()) QIODevice::close();
}
