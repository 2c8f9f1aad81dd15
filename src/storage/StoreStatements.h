#pragma once

#include <SQLiteCpp/SQLiteCpp.h>
#include <SQLiteCpp/VariadicBind.h>
#include <QDateTime>
#include <optional>
#include <tuple>

#include "DatabaseConnection.h"

// What the storage sections share: date-time columns in their stored text form,
// "now" and "today" at the resolution the database keeps, reading a row into
// fields, and writes of a single statement.
class StoreStatements {
public:
    // Today from 00:00:00 to tomorrow 00:00:00; queries include both ends.
    struct DayRange {
        QDateTime from;
        QDateTime to;
    };
    static DayRange TodayRange();
    // Now, at the one-second resolution the database keeps.
    static QDateTime NowToTheSecond();

    static void BindDate(SQLite::Statement& statement, int index, const QDateTime& when);
    // A date-time column; Unset() when it does not hold one.
    static QDateTime DateColumn(const SQLite::Column& column);
    // Nothing for NULL or text that is no date-time.
    static std::optional<QDateTime> OptionalDateColumn(const SQLite::Column& column);

    // The current row's first columns, in order, into the given fields.
    template <typename... Fields>
    static void ReadColumns(SQLite::Statement& row, Fields&... fields) {
        std::tie(fields...) =
            row.getColumns<std::tuple<Fields...>, static_cast<int>(sizeof...(Fields))>();
    }

    // Runs one data-changing statement with these values bound in its own transaction.
    template <typename... Values>
    static void ExecInTransaction(DatabaseConnection& connection, const char* sql,
                                  const Values&... values) {
        connection.Run([&](SQLite::Database& db) {
            SQLite::Transaction transaction(db);
            SQLite::Statement statement(db, sql);
            SQLite::bind(statement, values...);
            statement.exec();
            transaction.commit();
        });
    }
};
