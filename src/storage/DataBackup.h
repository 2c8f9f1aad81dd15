#pragma once

#include <QString>
#include <QStringList>

// Copies of the whole data folder's databases in one file, and putting one back.
//
// A backup file starts with the line "PEDOMETER-BACKUP 1" followed, for each database,
// by a line "NAME SIZE" and SIZE bytes of an SQLite file. Each copy is taken with
// SQLite's online backup in small steps into memory, so a running app that writes
// meanwhile waits only for one step, and the copy is a consistent snapshot of a
// committed state. The file is written through UserDataFile (0600, whole or not at all).
//
// Restoring is all or nothing. Both databases are unpacked into a folder ".restore-*"
// inside the data folder and judged by DatabaseSchema (our layout exactly, no trigger or
// view, integrity_check passing, a version this app reads); their rows are copied into
// fresh databases made from the app's own layout. Only then the journal
// "restore.journal" names that folder and the folder "aside-DATE-TIME[-N]" that receives
// the current databases, and the files are switched by renames. Recover() finishes a
// switch a killed process left half done (the journal is written only once both new
// databases are complete, so it can always go forward) and removes staging folders of
// runs killed before the switch. The previous databases are never overwritten.
class DataBackup {
public:
    // The databases a backup holds, with the tables each must have.
    struct Entry {
        QString name;
        QStringList requiredTables;
    };
    static const QList<Entry>& Entries();
    static constexpr const char* kJournalName = "restore.journal";

    // Writes the backup of the databases in `dataDir` to `file`. Missing databases are
    // an error, and so is a `file` that is one of the data folder's own files.
    // `longestStepMs`, when given, receives the longest time one copying step held the
    // source database (the longest wait a writer could see).
    static bool Backup(const QString& dataDir, const QString& file, QString* error,
                       double* longestStepMs = nullptr);

    // Replaces the databases in `dataDir` with those in `file`; on failure `error` says
    // why for the user and the data folder is as it was. `asideDir` receives where the
    // previous databases were moved (empty when there were none). The caller holds the
    // data folder's lock.
    static bool Restore(const QString& file, const QString& dataDir, QString* error,
                        QString* asideDir = nullptr);

    // Finishes a restore that was interrupted in `dataDir` and removes what killed
    // restores left. Called by every writer after taking the data folder's lock, before
    // the databases are opened. False with `error` when a switch cannot be finished.
    static bool Recover(const QString& dataDir, QString* error);
};
