#pragma once

#include <QIODevice>
#include <QString>

// Writes a file holding the user's data (an export, a backup, the body CSV) so that
// nothing is lost and nothing is let in:
//
// - the new contents go to a temporary file in the same folder, created 0600 from the
//   first byte whatever the umask, with O_EXCL|O_NOFOLLOW|O_CLOEXEC;
// - every write, the flush to disk and the close are checked; Commit() then renames
//   the temporary file over the name, so the previous file stays whole until the new
//   one is complete, and a failure leaves it untouched;
// - a symbolic link at the name is refused (named in the message), never followed.
//
// Not committed, the temporary file is removed when the object goes. ErrorText() says
// "cannot write PATH: reason" for the user.
class UserDataFile : public QIODevice {
public:
    explicit UserDataFile(QString path);
    ~UserDataFile() override;
    UserDataFile(const UserDataFile&) = delete;
    UserDataFile& operator=(const UserDataFile&) = delete;

    // Starts the temporary file; false with ErrorText() when it cannot be made.
    bool Open();
    // Flushes, closes and renames into place; false with ErrorText() on any failure.
    bool Commit();
    QString ErrorText() const { return error_; }

    // The whole file at once: Open, write `bytes`, Commit.
    static bool Write(const QString& path, const QByteArray& bytes, QString* error);

    // Makes what was written to the file `path` (opened without following a link), or the
    // names in `folder`, survive a power cut; false when the file cannot be synced.
    static bool SyncFile(const QString& path);
    static void SyncFolder(const QString& folder);

    // Why `path` may not be opened as a file the app creates itself: a symbolic link
    // there is named; empty when it is no link (or does not exist).
    static QString LinkRefusal(const QString& path);
    // What an errno from writing means to the user, and what to do about it.
    static QString Reason(int cause);

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override;

private:
    void Fail(int cause);
    void Discard();

    const QString path_;
    QString temporary_;
    QString error_;
    int fd_ = -1;
};
