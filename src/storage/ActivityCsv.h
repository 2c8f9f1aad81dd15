#pragma once

#include <SQLiteCpp/SQLiteCpp.h>
#include <QByteArray>
#include <QDate>
#include <QIODevice>
#include <QString>

// The recorded activity as CSV files, out of and back into the statistics database.
//
// Three tables, each with a header line: one row per day, per lap or per minute of a
// lap. Dates are ISO ("2024-03-14", "2024-03-14 10:30:00", local time), numbers use
// '.' whatever the locale, and fractions are written in full so that totals survive
// the round trip. Laps and minutes say whether the lap was entered by hand ("manual",
// 0 or 1; files without that column are read as counted). A lap is known by its start: importing skips every lap (or, for a
// days file, every day) the database already has, so importing a file twice adds
// nothing. An import runs in one transaction: a bad line is reported with its number
// and nothing of the file is stored.
class ActivityCsv {
public:
    enum class Kind { Days, Laps, Minutes };
    static const char* Header(Kind kind);
    // "days", "laps" or "minutes"; false for anything else.
    static bool KindFromName(const QString& name, Kind* kind);

    // Writes the laps that start between `from` and `to` (whole days; an invalid date
    // leaves that end open). Returns the number of rows written, -1 when `out` failed.
    static qint64 Export(SQLite::Database& db, Kind kind, const QDate& from, const QDate& to,
                         QIODevice& out);

    struct ImportResult {
        qint64 rows = 0;         // data lines read
        qint64 lapsAdded = 0;    // laps created
        qint64 lapsSkipped = 0;  // laps (or days) already present
    };
    // Reads a file written by Export. False with `error` ("line N: why") on bad input;
    // the database is then unchanged. SQLite errors are thrown. With `store` false the
    // import is rolled back at the end: `result` tells what it would add.
    static bool Import(SQLite::Database& db, QIODevice& in, ImportResult* result, QString* error,
                       bool store = true);
};
