#pragma once

#include <QString>
#include <memory>

// One writer per data folder: an exclusive lock on the file "pedometer.lock" in it,
// held for as long as this object lives.
//
// The kernel lets go of the lock when the holder ends, however it ends (kill -9
// included), so a stale lock never keeps the user out. Readers (history, export,
// backup) need no lock: SQLite keeps them consistent. The locking process writes its
// id into the file, so the refusal can name it.
class DataFolderLock {
public:
    static constexpr const char* kFileName = "pedometer.lock";

    // Locks `folder`; null with `error` saying why when another process holds it or the
    // lock file cannot be made.
    static std::unique_ptr<DataFolderLock> Acquire(const QString& folder, QString* error);
    ~DataFolderLock();
    DataFolderLock(const DataFolderLock&) = delete;
    DataFolderLock& operator=(const DataFolderLock&) = delete;

private:
    explicit DataFolderLock(int fd) : fd_(fd) {}
    int fd_;
};
