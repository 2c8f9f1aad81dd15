#pragma once

#include <QString>
#include <memory>

// One writer per data folder: an exclusive lock on the file "pedometer.lock" in it,
// held for as long as this object lives.
//
// The kernel lets go of the lock when the holder ends, however it ends (kill -9
// included), so a stale lock never keeps the user out. Readers (history, export,
// backup) need no lock: SQLite keeps them consistent. The locking process writes its
// id into the file, so the refusal can name it. The lock file is opened with
// O_NOFOLLOW: a link planted at its name is refused and named, never followed.
class DataFolderLock {
public:
    static constexpr const char* kFileName = "pedometer.lock";

    // Locks `folder`; null with `error` saying why when another process holds it or the
    // lock file cannot be made.
    static std::unique_ptr<DataFolderLock> Acquire(const QString& folder, QString* error);
    ~DataFolderLock();

    // Takes the lock back when the lock file was deleted or replaced under it (the lock
    // would no longer keep a second writer out). False with `error` when another
    // process got in first or the file cannot be made again.
    bool Reclaim(QString* error);
    DataFolderLock(const DataFolderLock&) = delete;
    DataFolderLock& operator=(const DataFolderLock&) = delete;

private:
    DataFolderLock(int fd, QString folder) : fd_(fd), folder_(std::move(folder)) {}
    int fd_;
    const QString folder_;
};
