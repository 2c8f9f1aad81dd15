#pragma once

#include <SQLiteCpp/SQLiteCpp.h>
#include <QString>
#include <QStringList>
#include <exception>
#include <future>
#include <memory>
#include <mutex>

#include "DatabaseStatus.h"

// One of the application's database files in the data folder, shared by threads.
//
// The file is opened on first use: if it is missing it is first copied from the seed
// of the same name in the resources folder (never over an existing file), then opened
// without permission to create it, in WAL mode with synchronous=NORMAL, so a killed
// process loses no committed transaction and leaves a consistent file.
//
// Before anything is written the file passes SQLite's quick_check, so a damaged file is
// never written to. The check takes tens of milliseconds on years of history, so it runs
// on a read-only connection of its own while the first screens are read; the first
// statement that would change the file waits for its verdict, Run() takes the verdict
// as soon as it is in, and Status() waits for it (an upgrade in place checks first,
// before it writes). A file the second connection cannot open is checked at once.
// The file loses any permission for group and others at opening (never gains one: a
// read-only file stays read-only and is reported so). Links in the folders above the
// data folder are resolved; a database file that is itself a symbolic link is refused,
// naming the link, rather than followed out of the folder. PRAGMA user_version holds
// the layout's version: an older file is brought up to date in place, in one
// transaction, and a file from a newer version is opened read-only.
//
// A file that cannot be opened (missing seed, not a database, damaged, tables
// missing, folder not accessible) is never deleted or replaced: the connection
// becomes unusable, Run() does nothing and Status() says why. The same happens when a
// statement later reports the file damaged.
//
// Run() holds the connection's mutex for the whole piece of work, so a transaction
// of the updater thread never interleaves with statements of the GUI thread. SQLite
// exceptions end at Run(); callers see only whether the work completed.
class DatabaseConnection {
public:
    // `fileName` is the name in the data folder and in the resources folder;
    // `requiredTables` must all exist for the file to be accepted. `upgrades[i]` is the
    // SQL that turns a version-i file into version i+1; the current version is their
    // number.
    DatabaseConnection(QString fileName, QStringList requiredTables, QStringList upgrades = {});
    ~DatabaseConnection();
    DatabaseConnection(const DatabaseConnection&) = delete;
    DatabaseConnection& operator=(const DatabaseConnection&) = delete;

    // Runs work(SQLite::Database&) under the lock. False when the connection is
    // unusable or the work failed; a failed transaction has been rolled back.
    template <typename Work>
    bool Run(Work&& work);

    // Opens the file if that has not been tried yet, and reports the outcome, the
    // damage check's verdict included (waiting for it).
    DatabaseStatus Status();
    // The same without waiting: damage found by a check still running is not known yet.
    DatabaseStatus StatusSoFar();

    // Closes the file; the next use opens it again under the current data folder.
    void Close();
    // Read-only: the file is opened without write access and never seeded; every
    // change fails and has no effect. Takes effect at the next opening.
    void SetReadOnly(bool readOnly);
    // The layout version this app writes (PRAGMA user_version).
    int Version() const { return static_cast<int>(upgrades_.size()); }

    // How long a statement waits for another connection's lock: long enough for another
    // process's checkpoint or transaction, short enough that the user does not wait
    // noticeably.
    static constexpr int kBusyTimeoutMs = 3000;

private:
    bool EnsureOpenLocked();
    // Opens the file if needed and takes the check's verdict (waiting for it or only
    // when it is in); a damaged file is let go. False when the file cannot be used.
    bool UsableLocked(bool waitForCheck);
    bool OpenLocked();
    bool SeedLocked();
    bool CheckAndUpgradeLocked();
    // Starts the quick_check on a connection of its own, its verdict to come in verdict_;
    // leaves verdict_ empty when that connection cannot read the file.
    void StartCheckLocked();
    // Takes the check's verdict: waiting for it, or only when it is already in. False
    // once the file was found damaged.
    bool TakeVerdictLocked(bool wait);
    void NoteVerdictLocked(const QString& verdict);
    // Stops using the file for good, saying why; the file is left as it is.
    void NoteDamageLocked(const QString& error);
    // SQLite's authorizer: lets reads through, and holds any change until the check passed.
    static int Authorize(void* connection, int action, const char*, const char*, const char*,
                         const char*);
    void NoteFailureLocked(int sqliteCode, const QString& message);

    const QString fileName_;
    const QStringList requiredTables_;
    const QStringList upgrades_;
    std::mutex mutex_;
    std::unique_ptr<SQLite::Database> database_;
    bool attempted_ = false;
    std::future<QString> verdict_;  // the quick_check running in the background
    bool damageFound_ = false;      // the quick_check failed: the file is not used again
    bool readOnly_ = false;
    DatabaseStatus status_;
};

template <typename Work>
bool DatabaseConnection::Run(Work&& work) {
    std::lock_guard lock(mutex_);
    if (!UsableLocked(false)) return false;
    try {
        work(*database_);
        return true;
    } catch (const SQLite::Exception& e) {
        NoteFailureLocked(e.getErrorCode(), QString::fromUtf8(e.what()));
    } catch (const std::exception& e) {
        NoteFailureLocked(0, QString::fromUtf8(e.what()));
    }
    return false;
}
