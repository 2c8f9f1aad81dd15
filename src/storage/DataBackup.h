#pragma once

#include <QString>
#include <QStringList>

// Copies of the whole data folder's databases in one file, and putting one back.
//
// A backup file starts with the line "PEDOMETER-BACKUP 1" followed, for each database,
// by a line "NAME SIZE" and SIZE bytes of an SQLite file. Each copy is taken with
// SQLite's online backup in small steps, so a running app that writes meanwhile waits
// only for one step, and the copy is a consistent snapshot of a committed state.
//
// Restoring refuses any file that is not such a backup, or whose databases are not
// ours or fail SQLite's quick_check, before touching the data folder. The current
// databases are then moved into a folder "aside-YYYYMMDD-HHMMSS" inside the data
// folder, never overwritten. Works on an empty data folder too.
class DataBackup {
public:
    // The databases a backup holds, with the tables each must have.
    struct Entry {
        QString name;
        QStringList requiredTables;
    };
    static const QList<Entry>& Entries();

    // Writes the backup of the databases in `dataDir` to `file`. Missing databases are
    // an error. `longestStepMs`, when given, receives the longest time one copying
    // step held the source database (the longest wait a writer could see).
    static bool Backup(const QString& dataDir, const QString& file, QString* error,
                       double* longestStepMs = nullptr);

    // Replaces the databases in `dataDir` with those in `file`. `asideDir` receives
    // where the previous databases were moved (empty when there were none).
    static bool Restore(const QString& file, const QString& dataDir, QString* error,
                        QString* asideDir = nullptr);
};
