#include "DataBackup.h"

#include <sqlite3.h>

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryDir>
#include <memory>

namespace {
const QByteArray kMagic = QByteArrayLiteral("PEDOMETER-BACKUP 1\n");
// Pages copied per step: small enough that a writer waits a few milliseconds at most.
constexpr int kPagesPerStep = 64;
// Larger than any database of ours; bounds what a damaged header can make us read.
constexpr qint64 kMaxEntryBytes = qint64(4) << 30;

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
    sqlite3_busy_timeout(db.get(), 3000);
    return db;
}

// Copies `from` into `to` in steps; the source is locked only during a step.
bool copyDatabase(sqlite3* from, sqlite3* to, QString* error, double* longestStepMs) {
    sqlite3_backup* backup = sqlite3_backup_init(to, "main", from, "main");
    if (backup == nullptr) {
        *error = QString::fromUtf8(sqlite3_errmsg(to));
        return false;
    }
    int rc = SQLITE_OK;
    QElapsedTimer timer;
    while (rc == SQLITE_OK || rc == SQLITE_BUSY || rc == SQLITE_LOCKED) {
        timer.start();
        rc = sqlite3_backup_step(backup, kPagesPerStep);
        const double ms = timer.nsecsElapsed() / 1e6;
        if (longestStepMs != nullptr && ms > *longestStepMs) *longestStepMs = ms;
        if (rc == SQLITE_BUSY || rc == SQLITE_LOCKED) sqlite3_sleep(5);
    }
    sqlite3_backup_finish(backup);
    if (rc != SQLITE_DONE) {
        *error = QString::fromUtf8(sqlite3_errstr(rc));
        return false;
    }
    return true;
}

// Whether `path` is an intact database holding all `tables`; `error` says why not.
bool checkDatabase(const QString& path, const QStringList& tables, QString* error) {
    Db db = openDb(path, SQLITE_OPEN_READONLY, error);
    if (!db) return false;
    QStringList found;
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(db.get(), "SELECT name FROM sqlite_master WHERE type='table'", -1, &stmt,
                           nullptr) != SQLITE_OK) {
        *error = QString::fromUtf8(sqlite3_errmsg(db.get()));
        return false;
    }
    while (sqlite3_step(stmt) == SQLITE_ROW) {
        found << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)));
    }
    sqlite3_finalize(stmt);
    for (const QString& table : tables) {
        if (!found.contains(table, Qt::CaseInsensitive)) {
            *error = QStringLiteral("table %1 is missing").arg(table);
            return false;
        }
    }
    QString verdict;
    if (sqlite3_prepare_v2(db.get(), "PRAGMA quick_check", -1, &stmt, nullptr) == SQLITE_OK) {
        if (sqlite3_step(stmt) == SQLITE_ROW) {
            verdict =
                QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)));
        }
        sqlite3_finalize(stmt);
    }
    if (verdict != QLatin1String("ok")) {
        *error =
            QStringLiteral("it is damaged (%1)")
                .arg(verdict.isEmpty() ? QString::fromUtf8(sqlite3_errmsg(db.get())) : verdict);
        return false;
    }
    return true;
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
    QTemporaryDir work;
    if (!work.isValid()) {
        *error = QStringLiteral("cannot create a temporary folder: %1").arg(work.errorString());
        return false;
    }
    QSaveFile out(file);
    if (!out.open(QIODevice::WriteOnly)) {
        *error = QStringLiteral("cannot write %1: %2").arg(file, out.errorString());
        return false;
    }
    out.write(kMagic);
    for (const Entry& entry : Entries()) {
        const QString source = QDir(dataDir).filePath(entry.name);
        if (!QFileInfo(source).isFile()) {
            *error = QStringLiteral("%1 does not exist").arg(source);
            return false;
        }
        const QString copy = work.filePath(entry.name);
        {
            QString why;
            Db from = openDb(source, SQLITE_OPEN_READONLY, &why);
            Db to = from ? openDb(copy, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, &why) : nullptr;
            if (!to || !copyDatabase(from.get(), to.get(), &why, longestStepMs)) {
                *error = QStringLiteral("cannot copy %1: %2").arg(source, why);
                return false;
            }
            // A self-contained file: no write-ahead log beside it.
            sqlite3_exec(to.get(), "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr);
        }
        QFile part(copy);
        if (!part.open(QIODevice::ReadOnly)) {
            *error = QStringLiteral("cannot read %1: %2").arg(copy, part.errorString());
            return false;
        }
        const QByteArray bytes = part.readAll();
        out.write(QStringLiteral("%1 %2\n").arg(entry.name).arg(bytes.size()).toUtf8());
        out.write(bytes);
    }
    if (!out.commit()) {
        *error = QStringLiteral("cannot write %1: %2").arg(file, out.errorString());
        return false;
    }
    QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
    return true;
}

bool DataBackup::Restore(const QString& file, const QString& dataDir, QString* error,
                         QString* asideDir) {
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot read %1: %2").arg(file, in.errorString());
        return false;
    }
    if (in.read(kMagic.size()) != kMagic) {
        *error = QStringLiteral("%1 is not a pedometer backup").arg(file);
        return false;
    }
    QTemporaryDir work;
    if (!work.isValid()) {
        *error = QStringLiteral("cannot create a temporary folder: %1").arg(work.errorString());
        return false;
    }
    // Unpack and check every database before anything in the data folder changes.
    for (const Entry& entry : Entries()) {
        const QList<QByteArray> header = in.readLine(256).trimmed().split(' ');
        bool sized = false;
        const qint64 size = header.size() == 2 ? header[1].toLongLong(&sized) : -1;
        if (header.value(0) != entry.name.toUtf8() || !sized || size <= 0 ||
            size > kMaxEntryBytes) {
            *error = QStringLiteral("%1 is not a complete pedometer backup (%2 expected)")
                         .arg(file, entry.name);
            return false;
        }
        QFile part(work.filePath(entry.name));
        if (!part.open(QIODevice::WriteOnly)) {
            *error = QStringLiteral("cannot unpack %1: %2").arg(entry.name, part.errorString());
            return false;
        }
        for (qint64 left = size; left > 0;) {
            const QByteArray chunk = in.read(qMin<qint64>(left, 1 << 20));
            if (chunk.isEmpty()) {
                *error = QStringLiteral("%1 is cut short inside %2").arg(file, entry.name);
                return false;
            }
            if (part.write(chunk) != chunk.size()) {
                *error = QStringLiteral("cannot unpack %1: %2").arg(entry.name, part.errorString());
                return false;
            }
            left -= chunk.size();
        }
        part.close();
        QString why;
        if (!checkDatabase(part.fileName(), entry.requiredTables, &why)) {
            *error = QStringLiteral("%1 in %2 is not usable: %3").arg(entry.name, file, why);
            return false;
        }
    }

    QDir data(dataDir);
    if (!data.exists() && !QDir().mkpath(dataDir)) {
        *error = QStringLiteral("cannot create the data folder %1").arg(dataDir);
        return false;
    }
    QFile::setPermissions(dataDir, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    // Keep the current databases (with their journals) in a folder of their own.
    const QString aside =
        QStringLiteral("aside-%1")
            .arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss")));
    bool movedAny = false;
    for (const Entry& entry : Entries()) {
        for (const QString& suffix : {QString(), QStringLiteral("-wal"), QStringLiteral("-shm")}) {
            const QString name = entry.name + suffix;
            if (!data.exists(name)) continue;
            if (!movedAny && !data.mkpath(aside)) {
                *error = QStringLiteral("cannot create %1").arg(data.filePath(aside));
                return false;
            }
            if (!movedAny) {
                QFile::setPermissions(data.filePath(aside),
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
            }
            movedAny = true;
            if (!data.rename(name, aside + '/' + name)) {
                *error = QStringLiteral("cannot move %1 aside").arg(data.filePath(name));
                return false;
            }
        }
    }
    if (asideDir != nullptr) *asideDir = movedAny ? data.filePath(aside) : QString();
    for (const Entry& entry : Entries()) {
        const QString target = data.filePath(entry.name);
        if (!QFile::copy(work.filePath(entry.name), target)) {
            *error = QStringLiteral("cannot write %1; the previous databases are in %2")
                         .arg(target, data.filePath(aside));
            return false;
        }
        QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
    }
    return true;
}
