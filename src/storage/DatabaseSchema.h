#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

struct sqlite3;

// The layout of one of the app's databases as its own SQL in the resources folder
// ("db/Options.sql", "db/Statistics.sql") makes it, read at run time, so a layout
// changed there is followed without touching this class.
//
// Used to judge a database from elsewhere (a backup): it is accepted only when each of
// its tables is one of ours with columns of ours (an older version of the app may have
// made fewer), each index is one of ours on the same table, each trigger or view is
// one of ours by name, its version is not newer than ours, and it passes
// integrity_check. Its rows are then copied into a fresh database made from the same
// SQL (whose triggers sum the laps anew), so nothing of the foreign file but its rows
// is ever used.
class DatabaseSchema {
public:
    // Reads "db/NAME.sql" for the database file `fileName` ("Statistics.db3");
    // `version` is the layout version the app writes (PRAGMA user_version).
    static bool Load(const QString& fileName, int version, DatabaseSchema* schema, QString* error);

    // Why the open database `db` is not a file of this layout; empty when it is.
    QString Refusal(sqlite3* db) const;

    // Makes a fresh database at `path` from the SQL and copies every row of the
    // accepted database at `source` into it (a table that is empty there keeps the
    // SQL's own rows). False with `error` saying why.
    bool CreateFrom(const QString& source, const QString& path, QString* error) const;

private:
    struct Layout {
        QMap<QString, QStringList> tableColumns;  // lower-case table name -> columns
        QMap<QString, QString> indexTables;       // lower-case index name -> its table
        QStringList others;                       // triggers and views: "trigger NAME"
        int version = 0;
    };
    static bool Read(sqlite3* db, Layout* layout, QString* error);

    QString sql_;
    int version_ = 0;
    Layout layout_;
};
