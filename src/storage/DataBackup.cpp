#include "DataBackup.h"

#include <sqlite3.h>
#include <stdio.h>
#include <stdlib.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <memory>

#include "Clock.h"
#include "DatabaseSchema.h"
#include "PedometerDBManager.h"
#include "UserDataFile.h"

namespace {
const QByteArray kMagic = QByteArrayLiteral("PEDOMETER-BACKUP 1\n");
// Pages copied per step: small enough that a writer waits a few milliseconds at most.
constexpr int kPagesPerStep = 64;
// Larger than any database of ours; bounds what a damaged header can make us read.
constexpr qint64 kMaxEntryBytes = qint64(4) << 30;
const QString kStagingPrefix = QStringLiteral(".restore-");
const QStringList kSuffixes{QString(), QStringLiteral("-wal"), QStringLiteral("-shm"),
                            QStringLiteral("-journal")};

struct DbCloser {
    void operator()(sqlite3* db) const { sqlite3_close(db); }
};
using Db = std::unique_ptr<sqlite3, DbCloser>;

Db openDb(const QString& path, int flags, QString* error) {
    sqlite3* raw = nullptr;
    const int rc = sqlite3_open_v2(QFile::encodeName(path).constData(), &raw, flags, nullptr);
    Db db(raw);
    if (rc != SQLITE_OK) {
        *error = QStringLiteral("%1 cannot be opened: %2")
                     .arg(path, QString::fromUtf8(raw ? sqlite3_errmsg(raw) : sqlite3_errstr(rc)));
        return nullptr;
    }
    sqlite3_busy_timeout(db.get(), DatabaseConnection::kBusyTimeoutMs);
    return db;
}

// Copies `from` into `to` in steps; the source is locked only during a step. A step
// waits for a writer as long as the connections' busy timeout; a lock held longer than
// that fails the copy ("database is locked") rather than waiting without end.
bool copyDatabase(sqlite3* from, sqlite3* to, QString* error, double* longestStepMs) {
    sqlite3_backup* backup = sqlite3_backup_init(to, "main", from, "main");
    if (backup == nullptr) {
        *error = QString::fromUtf8(sqlite3_errmsg(to));
        return false;
    }
    int rc = SQLITE_OK;
    while (rc == SQLITE_OK) {
        const auto started = std::chrono::steady_clock::now();
        rc = sqlite3_backup_step(backup, kPagesPerStep);
        const std::chrono::duration<double, std::milli> step =
            std::chrono::steady_clock::now() - started;
        if (longestStepMs != nullptr) *longestStepMs = std::max(*longestStepMs, step.count());
    }
    sqlite3_backup_finish(backup);
    if (rc != SQLITE_DONE) {
        *error = QString::fromUtf8(sqlite3_errstr(rc));
        return false;
    }
    return true;
}

// Sign-in secrets kept in the settings when no keyring runs: they stay on this device,
// never in a backup or a folder of replaced databases (a restored device signs in again).
void dropSecrets(sqlite3* db) {
    sqlite3_exec(db, "DELETE FROM Preferences WHERE name LIKE 'sns-secret-%'", nullptr, nullptr,
                 nullptr);
}

void dropSecrets(const QString& path) {
    QString ignored;  // a missing file is not created
    if (Db db = openDb(path, SQLITE_OPEN_READWRITE, &ignored)) dropSecrets(db.get());
}

// The bytes of a consistent copy of the database at `path`, as a self-contained file.
bool snapshot(const QString& path, QByteArray* bytes, QString* error, double* longestStepMs) {
    Db from = openDb(path, SQLITE_OPEN_READONLY, error);
    Db to = from ? openDb(QStringLiteral(":memory:"), SQLITE_OPEN_READWRITE, error) : nullptr;
    if (!to || !copyDatabase(from.get(), to.get(), error, longestStepMs)) return false;
    dropSecrets(to.get());
    sqlite3_int64 size{};
    const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> data(
        sqlite3_serialize(to.get(), "main", &size, 0), &sqlite3_free);
    if (data == nullptr) {
        *error = QStringLiteral("out of memory");
        return false;
    }
    *bytes = QByteArray(reinterpret_cast<const char*>(data.get()), static_cast<qsizetype>(size));
    // Bytes 18 and 19 say "write-ahead log" for a copy of a WAL file; the copy has
    // none, so mark it a plain rollback-journal file. Even an empty database is given a
    // page, of at least 512 bytes.
    (*bytes)[18] = (*bytes)[19] = 1;
    return true;
}

bool renameOver(const QString& from, const QString& to) {
    return ::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

// "aside-YYYYMMDD-HHMMSS", with "-2", "-3"... when a restore in the same second took it.
// The data folder's lock keeps other restores out, so a free name stays free.
QString asideName(const QDir& data) {
    const QString base =
        QStringLiteral("aside-%1").arg(Clock::Now().toString(QStringLiteral("yyyyMMdd-HHmmss")));
    QString name = base;
    for (int n = 2; data.exists(name); ++n) name = QStringLiteral("%1-%2").arg(base).arg(n);
    return name;
}

// Puts the staged databases of `staging` in place, moving what is there into `aside`.
// Each step is a rename that is skipped when done, so running it again after a kill
// finishes the same switch.
bool switchDatabases(const QDir& data, const QString& staging, const QString& aside,
                     QString* error) {
    QList<std::pair<QString, QString>> moves;
    for (const DataBackup::Entry& entry : DataBackup::Entries()) {
        const QString staged = data.filePath(staging + '/' + entry.name);
        if (!QFileInfo::exists(staged)) continue;  // already in place
        for (const QString& suffix : kSuffixes) {
            const QString current = data.filePath(entry.name + suffix);
            if (QFileInfo(current).exists() || QFileInfo(current).isSymLink())
                moves.append({current, data.filePath(aside + '/' + entry.name + suffix)});
        }
        moves.append({staged, data.filePath(entry.name)});
    }
    for (const auto& [from, to] : moves) {
        if (!renameOver(from, to)) {
            *error = QStringLiteral("cannot move %1 to %2: %3")
                         .arg(from, to, QString::fromLocal8Bit(std::strerror(errno)));
            return false;
        }
    }
    UserDataFile::SyncFolder(data.path());
    return true;
}

// Unpacks the next database of the backup `in` into `target`.
bool unpack(QFile& in, const DataBackup::Entry& entry, const QString& target, QString* error) {
    const QList<QByteArray> header = in.readLine(256).trimmed().split(' ');
    const qint64 size = header.value(1).toLongLong();  // 0 when it is no number
    if (header.size() != 2 || header.value(0) != entry.name.toUtf8() || size <= 0 ||
        size > kMaxEntryBytes) {
        *error = QStringLiteral("%1 is not a complete pedometer backup (%2 expected)")
                     .arg(in.fileName(), entry.name);
        return false;
    }
    // A file that cannot be made, or a failed write, leaves `part` closed; Commit() says why.
    UserDataFile part(target);
    part.Open();
    for (qint64 left = size; left > 0 && part.isOpen();) {
        const QByteArray chunk = in.read(qMin<qint64>(left, 1 << 20));
        if (chunk.isEmpty()) {
            *error = QStringLiteral("%1 is cut short inside %2").arg(in.fileName(), entry.name);
            return false;
        }
        part.write(chunk);
        left -= chunk.size();
    }
    const bool written = part.Commit();
    if (!written) *error = part.ErrorText();
    return written;
}

int appVersion(const QString& name) {
    PedometerDBManager& manager = PedometerDBManager::GetInstance();
    return name == QLatin1String("Options.db3") ? manager.OptionsConnection().Version()
                                                : manager.StatisticsConnection().Version();
}

// Judges the unpacked `unpacked` and makes the fresh database `fresh` from its rows.
bool stage(const DataBackup::Entry& entry, const QString& unpacked, const QString& fresh,
           QString* error) {
    DatabaseSchema schema;
    if (!DatabaseSchema::Load(entry.name, appVersion(entry.name), &schema, error)) return false;
    {
        Db db = openDb(unpacked, SQLITE_OPEN_READONLY, error);
        if (!db) return false;
        // A foreign file's schema may name functions and triggers: never let them run.
        sqlite3_db_config(db.get(), SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
        sqlite3_db_config(db.get(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
        QString refusal = schema.Refusal(db.get());
        for (const QString& table : entry.requiredTables) {
            if (refusal.isEmpty() &&
                sqlite3_table_column_metadata(db.get(), "main", table.toUtf8().constData(), nullptr,
                                              nullptr, nullptr, nullptr, nullptr,
                                              nullptr) != SQLITE_OK) {
                refusal = QStringLiteral("the table %1 is missing").arg(table);
            }
        }
        if (!refusal.isEmpty()) {
            *error = QStringLiteral("%1 in the backup is refused: %2").arg(entry.name, refusal);
            return false;
        }
    }
    // An empty file first, so the database is 0600 from its first byte.
    if (!UserDataFile::Write(fresh, QByteArray(), error) ||
        !schema.CreateFrom(unpacked, fresh, error)) {
        return false;
    }
    dropSecrets(fresh);
    return UserDataFile::SyncFile(fresh);
}
}  // namespace

const QList<DataBackup::Entry>& DataBackup::Entries() {
    static const QList<Entry> entries{
        {QStringLiteral("Options.db3"), {"SOCIAL", "BODY", "SOUNDS", "SCREEN"}},
        {QStringLiteral("Statistics.db3"),
         {"Lap", "LapMinutes", "LastFiveMinutes", "SygnalValues", "BODYLOGS", "TargetValues"}},
    };
    return entries;
}

bool DataBackup::Backup(const QString& dataDir, const QString& file, QString* error,
                        double* longestStepMs) {
    // The data folder's own files are never replaced by a backup of them.
    const QFileInfo target(file);
    const QString targetFolder = QFileInfo(target.absolutePath()).canonicalFilePath();
    if (targetFolder == QFileInfo(dataDir).canonicalFilePath()) {
        for (const Entry& entry : Entries()) {
            for (const QString& suffix : kSuffixes) {
                if (target.fileName() == entry.name + suffix) {
                    *error = QStringLiteral(
                                 "%1 is the app's own database; write the backup to another "
                                 "file")
                                 .arg(file);
                    return false;
                }
            }
        }
    }
    UserDataFile out(file);
    if (!out.Open()) {
        *error = out.ErrorText();
        return false;
    }
    out.write(kMagic);
    for (const Entry& entry : Entries()) {
        const QString source = QDir(dataDir).filePath(entry.name);
        if (!QFileInfo(source).isFile()) {
            *error = QStringLiteral("%1 does not exist").arg(source);
            return false;
        }
        QByteArray bytes;
        QString why;
        if (!snapshot(source, &bytes, &why, longestStepMs)) {
            *error = QStringLiteral("cannot copy %1: %2").arg(source, why);
            return false;
        }
        out.write(QStringLiteral("%1 %2\n").arg(entry.name).arg(bytes.size()).toUtf8());
        out.write(bytes);
    }
    if (!out.Commit()) {
        *error = out.ErrorText();
        return false;
    }
    return true;
}

bool DataBackup::Restore(const QString& file, const QString& folder, QString* error,
                         QString* asideDir) {
    if (asideDir != nullptr) asideDir->clear();
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot read %1: %2").arg(file, in.errorString());
        return false;
    }
    if (in.read(kMagic.size()) != kMagic) {
        *error = QStringLiteral("%1 is not a pedometer backup").arg(file);
        return false;
    }
    if (!QFileInfo(folder).isDir() && !QDir().mkpath(folder)) {
        *error = QStringLiteral("cannot create the data folder %1").arg(folder);
        return false;
    }
    // Links above the data folder are resolved: the files made inside it are opened
    // without following any link.
    const QString dataDir = QFileInfo(folder).canonicalFilePath();
    QDir data(dataDir);
    if (!Recover(dataDir, error)) return false;

    // Unpack, judge and rebuild both databases before anything in the data folder changes.
    QByteArray folderName =
        QFile::encodeName(data.filePath(kStagingPrefix + QStringLiteral("XXXXXX")));
    if (::mkdtemp(folderName.data()) == nullptr) {  // made 0700
        *error = QStringLiteral("cannot create a folder in %1: %2")
                     .arg(dataDir, QString::fromLocal8Bit(std::strerror(errno)));
        return false;
    }
    const QString staging = QFile::decodeName(folderName);
    bool staged = true;
    for (const Entry& entry : Entries()) {
        const QString unpacked = staging + '/' + entry.name + QStringLiteral(".unpacked");
        staged = staged && unpack(in, entry, unpacked, error) &&
                 stage(entry, unpacked, staging + '/' + entry.name, error);
        QFile::remove(unpacked);
    }
    const QString aside = asideName(data);
    const QByteArray journal = (QFileInfo(staging).fileName() + '\n' + aside + '\n').toUtf8();
    // From here on the switch can always be finished: the journal says what goes where.
    // Writing it syncs the data folder, so the staging folder is there after a power cut
    // (the staged files' own names were synced as they were written).
    if (!staged ||
        !UserDataFile::Write(data.filePath(QLatin1String(kJournalName)), journal, error)) {
        QDir(staging).removeRecursively();
        return false;
    }
    const bool switched = Recover(dataDir, error);
    if (switched && asideDir != nullptr && data.exists(aside)) *asideDir = data.filePath(aside);
    return switched;
}

bool DataBackup::Recover(const QString& dataDir, QString* error) {
    QDir data(dataDir);
    const QString journalPath = data.filePath(QLatin1String(kJournalName));
    if (QFileInfo::exists(journalPath)) {
        QFile journal(journalPath);
        const QStringList lines =
            journal.open(QIODevice::ReadOnly)
                ? QString::fromUtf8(journal.readAll()).split('\n', Qt::SkipEmptyParts)
                : QStringList();
        const QString staging = lines.value(0);
        const QString aside = lines.value(1);
        if (lines.size() != 2 || !staging.startsWith(kStagingPrefix) ||
            !aside.startsWith(QLatin1String("aside-")) || (staging + aside).contains('/')) {
            *error = QStringLiteral("%1 cannot be read; move it away to use the data folder")
                         .arg(journalPath);
            return false;
        }
        // Private: it keeps the previous databases.
        if (!data.mkdir(aside, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner) &&
            !QFileInfo(data.filePath(aside)).isDir()) {
            *error = QStringLiteral("cannot create %1").arg(data.filePath(aside));
            return false;
        }
        if (!switchDatabases(data, staging, aside, error)) {
            *error = QStringLiteral("a restore could not be finished: %1").arg(*error);
            return false;
        }
        dropSecrets(data.filePath(aside + QStringLiteral("/Options.db3")));
        // Neither checked nor synced: should the journal stay or come back after a power
        // cut, finishing the switch again changes nothing.
        QFile::remove(journalPath);
        data.rmdir(aside);  // kept only when it holds the previous databases
    }
    // The finished restore's staging folder, and those of restores killed before their switch.
    for (const QString& left :
         data.entryList({kStagingPrefix + '*'}, QDir::Dirs | QDir::Hidden | QDir::NoSymLinks)) {
        QDir(data.filePath(left)).removeRecursively();
    }
    return true;
}
