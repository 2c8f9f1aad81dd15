#include "DatabaseConnection.h"

#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <chrono>

#include "AppPaths.h"
#include "UserDataFile.h"

namespace {
bool onReadOnlyFileSystem(const QString& path) {
    struct statvfs fs {};  // stays zero, "not read-only", when the call fails
    ::statvfs(QFile::encodeName(path).constData(), &fs);
    return (fs.f_flag & ST_RDONLY) != 0;
}

void hideFromOthers(const QString& path) {
    const QFile::Permissions permissions = QFile::permissions(path);
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                      QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    if (permissions & others) QFile::setPermissions(path, permissions & ~others);
}

bool isDamage(int code) {
    const int primary = code & 0xff;
    return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB;
}

// "ok", or the problems SQLite found.
QString quickCheck(SQLite::Database& db) {
    SQLite::Statement check(db, "PRAGMA quick_check");
    return check.executeStep() ? QString::fromUtf8(check.getColumn(0).getText()) : QString();
}

// The first problem a verdict names, past a banner such as "*** in database main ***".
QString firstProblem(const QString& verdict) {
    for (const QString& line : verdict.split(QLatin1Char('\n'))) {
        if (!line.startsWith(QLatin1String("***"))) return line;
    }
    return verdict;
}
}  // namespace

DatabaseConnection::DatabaseConnection(QString fileName, QStringList requiredTables,
                                       QStringList upgrades)
    : fileName_(std::move(fileName)),
      requiredTables_(std::move(requiredTables)),
      upgrades_(std::move(upgrades)) {}

DatabaseConnection::~DatabaseConnection() = default;

DatabaseStatus DatabaseConnection::Status() {
    std::lock_guard lock(mutex_);
    UsableLocked(true);
    return status_;
}

DatabaseStatus DatabaseConnection::StatusSoFar() {
    std::lock_guard lock(mutex_);
    UsableLocked(false);
    return status_;
}

void DatabaseConnection::Close() {
    std::lock_guard lock(mutex_);
    verdict_ = {};  // waits for a check still running
    database_.reset();
    attempted_ = false;
    damageFound_ = false;
    status_ = {};
}

void DatabaseConnection::SetReadOnly(bool readOnly) {
    std::lock_guard lock(mutex_);
    readOnly_ = readOnly;
}

bool DatabaseConnection::UsableLocked(bool waitForCheck) {
    return EnsureOpenLocked() && TakeVerdictLocked(waitForCheck);
}

bool DatabaseConnection::EnsureOpenLocked() {
    if (database_) return true;
    if (attempted_) return false;
    attempted_ = true;
    status_ = {};  // not open: OpenLocked() says so only when all went well
    if (OpenLocked()) return true;
    database_.reset();
    return false;
}

bool DatabaseConnection::OpenLocked() {
    const QString home = AppPaths::Home();
    if (home.isEmpty()) {
        status_.error = AppPaths::HomeError();
        if (status_.error.isEmpty()) status_.error = QStringLiteral("no data folder");
        return false;
    }
    // Folders above the data folder may be links (a moved home folder, /home on another
    // partition): the path is resolved, and only the database file itself may not be one.
    const QString folder = QFileInfo(home).canonicalFilePath();
    status_.path = (folder.isEmpty() ? home : folder) + '/' + fileName_;
    if (const QString link = UserDataFile::LinkRefusal(status_.path); !link.isEmpty()) {
        status_.error = link;
        return false;
    }
    if (!QFileInfo::exists(status_.path)) {
        if (readOnly_) {
            status_.error = QStringLiteral("%1 does not exist").arg(status_.path);
            return false;
        }
        if (!SeedLocked()) return false;
    }

    try {
        // Run() already keeps other threads out, so SQLite's own per-call locking
        // (serialized mode) would only cost time on every column read.
        int flags = (readOnly_ ? SQLite::OPEN_READONLY : SQLite::OPEN_READWRITE) |
                    SQLite::OPEN_NOMUTEX | SQLITE_OPEN_NOFOLLOW;
        std::string target = QFile::encodeName(status_.path).toStdString();
        // On a read-only file system (a mounted card, a locked-down phone) a WAL file cannot
        // get the shared-memory file its readers need; nothing can change it there, so it is
        // read as immutable.
        if (readOnly_ && onReadOnlyFileSystem(status_.path)) {
            target = QUrl::fromLocalFile(status_.path).toEncoded().toStdString() + "?immutable=1";
            flags |= SQLITE_OPEN_URI;
        }
        // Health data: nobody but the owner may read it, whatever an older version left.
        // Permissions are only ever taken away: a file the user made read-only stays so.
        if (!readOnly_) hideFromOthers(status_.path);
        database_ = std::make_unique<SQLite::Database>(target, flags, kBusyTimeoutMs);
        // Reading the schema proves that the file is a database at all, and ours,
        // before anything is written to it.
        QStringList tables;
        SQLite::Statement query(*database_, "SELECT name FROM sqlite_master WHERE type='table'");
        while (query.executeStep()) tables << QString::fromUtf8(query.getColumn(0).getText());
        for (const QString& table : requiredTables_) {
            if (!tables.contains(table, Qt::CaseInsensitive)) {
                status_.error =
                    QStringLiteral("%1 is not a pedometer database (table %2 is missing)")
                        .arg(status_.path, table);
                return false;
            }
        }

        // WAL keeps every committed transaction when the process is killed; NORMAL
        // syncs at checkpoints only, which is enough for that and keeps the
        // per-interval commits cheap. A file opened read-only keeps its journal mode.
        if (sqlite3_db_readonly(database_->getHandle(), "main") == 0) {
            database_->exec("PRAGMA journal_mode=WAL");
        }
        database_->exec("PRAGMA synchronous=NORMAL");
        if (!CheckAndUpgradeLocked()) return false;
    } catch (const SQLite::Exception& e) {
        status_.error = QStringLiteral("%1 cannot be opened: %2")
                            .arg(status_.path, QString::fromUtf8(e.what()));
        return false;
    }

    status_.open = true;
    status_.writable =
        sqlite3_db_readonly(database_->getHandle(), "main") == 0 && !status_.olderApp;
    if (!status_.writable && !status_.olderApp) {
        status_.error = QStringLiteral("%1 is read-only: changes are not saved").arg(status_.path);
    }
    return true;
}

bool DatabaseConnection::CheckAndUpgradeLocked() {
    const int version = database_->execAndGet("PRAGMA user_version").getInt();
    const int current = static_cast<int>(upgrades_.size());
    const bool writable = sqlite3_db_readonly(database_->getHandle(), "main") == 0;
    if (version > current) {
        status_.error =
            QStringLiteral("%1 was written by a newer version of the app").arg(status_.path);
        status_.olderApp = true;
        // Our writes could break what the newer version relies on.
        database_->exec("PRAGMA query_only=1");
    }
    // An upgrade writes at once, so the file is checked first; so is a file the check's
    // own connection cannot read. Otherwise the check runs beside the first reads.
    const bool upgrade = version < current && writable;
    if (!upgrade) StartCheckLocked();
    if (verdict_.valid()) {
        sqlite3_set_authorizer(database_->getHandle(), &DatabaseConnection::Authorize, this);
    } else {
        NoteVerdictLocked(quickCheck(*database_));
        if (damageFound_) return false;
    }
    if (!upgrade) return true;
    SQLite::Transaction transaction(*database_);
    for (int i = version; i < current; ++i) database_->exec(upgrades_[i].toStdString());
    database_->exec("PRAGMA user_version=" + std::to_string(current));
    transaction.commit();
    return true;
}

void DatabaseConnection::StartCheckLocked() {
    try {
        auto checker = std::make_unique<SQLite::Database>(
            QFile::encodeName(status_.path).toStdString(),
            SQLite::OPEN_READONLY | SQLite::OPEN_NOMUTEX | SQLITE_OPEN_NOFOLLOW, kBusyTimeoutMs);
        checker->execAndGet("SELECT count(*) FROM sqlite_master");  // it can read the file
        verdict_ = std::async(std::launch::async, [checker = std::move(checker)] {
            // The lowest priority (the kernel takes the bound as its lowest nice value):
            // reading the whole file must not hold back the first paint of the window on
            // a phone's few cores.
            setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), PRIO_MAX);
            try {
                return quickCheck(*checker);
            } catch (const std::exception& e) {
                return QStringLiteral("the check stopped: %1").arg(QString::fromUtf8(e.what()));
            }
        });
    } catch (const std::exception&) {
        // No second connection or no thread: verdict_ stays empty, the caller checks at once.
    }
}

bool DatabaseConnection::TakeVerdictLocked(bool wait) {
    if (verdict_.valid() &&
        (wait || verdict_.wait_for(std::chrono::seconds(0)) == std::future_status::ready)) {
        NoteVerdictLocked(verdict_.get());
    }
    return !damageFound_;
}

void DatabaseConnection::NoteVerdictLocked(const QString& verdict) {
    if (verdict == QLatin1String("ok")) return;
    NoteDamageLocked(QStringLiteral("%1 is damaged (%2); it is left as it is")
                         .arg(status_.path, firstProblem(verdict)));
}

void DatabaseConnection::NoteDamageLocked(const QString& error) {
    damageFound_ = true;
    status_.open = status_.writable = false;
    status_.error = error;
}

int DatabaseConnection::Authorize(void* connection, int action, const char*, const char*,
                                  const char*, const char*) {
    switch (action) {
        case SQLITE_READ:
        case SQLITE_SELECT:
        case SQLITE_FUNCTION:
        case SQLITE_TRANSACTION:
        case SQLITE_SAVEPOINT:
        case SQLITE_RECURSIVE:
            return SQLITE_OK;
        default:
            // A change: called while Run() holds the lock, before anything is written.
            // The connection is busy preparing the statement, so a refused one is let go
            // when Run() sees the statement fail.
            return static_cast<DatabaseConnection*>(connection)->TakeVerdictLocked(true)
                       ? SQLITE_OK
                       : SQLITE_DENY;
    }
}

bool DatabaseConnection::SeedLocked() {
    const QString seed = AppPaths::ResFile(fileName_);
    if (!QFileInfo::exists(seed)) {
        status_.error = QStringLiteral("the seed database %1 is missing").arg(seed);
        return false;
    }
    // Copied under a private name, then renamed into place: the file appears complete
    // or not at all. Qt renames without replacing, so a file another process placed
    // meanwhile is kept (and opened). A failed copy leaves no file behind.
    const QString temporary =
        QStringLiteral("%1.seed-%2").arg(status_.path).arg(QCoreApplication::applicationPid());
    QFile::remove(temporary);  // left by a killed run with the same process id
    QFile source(seed);
    if (!source.copy(temporary)) {
        status_.error = QStringLiteral("cannot copy the seed database %1 to %2: %3")
                            .arg(seed, status_.path, source.errorString());
        return false;
    }
    if (!QFile::rename(temporary, status_.path)) QFile::remove(temporary);
    return true;
}

void DatabaseConnection::NoteFailureLocked(int sqliteCode, const QString& message) {
    if (isDamage(sqliteCode)) {
        // Stop using a damaged file; it is left exactly as it is for the user.
        NoteDamageLocked(QStringLiteral("%1 is damaged: %2").arg(status_.path, message));
    } else {
        status_.lastFailure = message;
    }
}
