#include "DatabaseSchema.h"

#include <sqlite3.h>

#include <QFile>
#include <memory>

#include "AppPaths.h"

namespace {
struct DbCloser {
    void operator()(sqlite3* db) const { sqlite3_close(db); }
};
using Db = std::unique_ptr<sqlite3, DbCloser>;

QString text(sqlite3_stmt* stmt, int column) {
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, column)));
}

// Every row of `sql` (one text column per row); false on an SQL error.
bool rows(sqlite3* db, const QString& sql, QList<QStringList>* out) {
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &stmt, nullptr) != SQLITE_OK)
        return false;
    int rc;
    while ((rc = sqlite3_step(stmt)) == SQLITE_ROW) {
        QStringList row;
        for (int i = 0; i < sqlite3_column_count(stmt); ++i) row << text(stmt, i);
        out->append(row);
    }
    sqlite3_finalize(stmt);
    return rc == SQLITE_DONE;
}

QString quoted(const QString& name) {
    return QLatin1Char('"') + QString(name).replace('"', QStringLiteral("\"\"")) +
           QLatin1Char('"');
}

QString lastError(sqlite3* db) {
    return QString::fromUtf8(sqlite3_errmsg(db));
}
}  // namespace

bool DatabaseSchema::Load(const QString& fileName, int version, DatabaseSchema* schema,
                          QString* error) {
    const QString sqlPath =
        AppPaths::ResFile(QStringLiteral("db/%1.sql").arg(fileName.section('.', 0, 0)));
    QFile file(sqlPath);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("the app's layout %1 cannot be read: %2")
                     .arg(sqlPath, file.errorString());
        return false;
    }
    schema->sql_ = QString::fromUtf8(file.readAll());
    schema->version_ = version;
    sqlite3* raw = nullptr;
    sqlite3_open(":memory:", &raw);
    Db db(raw);
    if (sqlite3_exec(db.get(), schema->sql_.toUtf8().constData(), nullptr, nullptr, nullptr) !=
            SQLITE_OK ||
        !Read(db.get(), &schema->layout_, error)) {
        *error = QStringLiteral("the app's layout %1 is broken: %2").arg(sqlPath, lastError(raw));
        return false;
    }
    return true;
}

bool DatabaseSchema::Read(sqlite3* db, Layout* layout, QString* error) {
    QList<QStringList> objects;
    QList<QStringList> version;
    if (!rows(db, QStringLiteral("SELECT type, name, tbl_name FROM sqlite_master"), &objects) ||
        !rows(db, QStringLiteral("PRAGMA user_version"), &version)) {
        *error = lastError(db);
        return false;
    }
    layout->version = version.value(0).value(0).toInt();
    for (const QStringList& object : objects) {
        const QString type = object[0];
        const QString name = object[1].toLower();
        if (type == QLatin1String("table")) {
            if (name.startsWith(QLatin1String("sqlite_"))) continue;  // SQLite's own
            QList<QStringList> columns;
            if (!rows(db, QStringLiteral("SELECT name FROM pragma_table_info(%1)")
                              .arg(quoted(object[1]).replace('"', '\'')),
                      &columns)) {
                *error = lastError(db);
                return false;
            }
            QStringList names;
            for (const QStringList& column : columns) names << column[0].toLower();
            layout->tableColumns.insert(name, names);
        } else if (type == QLatin1String("index")) {
            // Indexes SQLite makes for UNIQUE and PRIMARY KEY belong to their table.
            if (!name.startsWith(QLatin1String("sqlite_autoindex_")))
                layout->indexTables.insert(name, object[2].toLower());
        } else {
            layout->others << type + QLatin1Char(' ') + object[1];
        }
    }
    return true;
}

QString DatabaseSchema::Refusal(sqlite3* db) const {
    Layout found;
    QString error;
    if (!Read(db, &found, &error)) return QStringLiteral("it cannot be read (%1)").arg(error);
    if (found.version > version_) {
        return QStringLiteral("it was written by a newer version of the app (layout %1, this app "
                              "reads up to %2); update the app first")
            .arg(found.version)
            .arg(version_);
    }
    for (const QString& other : found.others) {
        if (!layout_.others.contains(other, Qt::CaseInsensitive))
            return QStringLiteral("it holds a %1, which the app never makes").arg(other);
    }
    for (auto table = found.tableColumns.cbegin(); table != found.tableColumns.cend(); ++table) {
        if (!layout_.tableColumns.contains(table.key()))
            return QStringLiteral("it holds a table %1 the app does not know").arg(table.key());
        const QStringList& ours = layout_.tableColumns[table.key()];
        for (const QString& column : table.value()) {
            if (!ours.contains(column)) {
                return QStringLiteral("its table %1 has a column %2 the app does not know")
                    .arg(table.key(), column);
            }
        }
    }
    for (auto index = found.indexTables.cbegin(); index != found.indexTables.cend(); ++index) {
        if (layout_.indexTables.value(index.key()) != index.value())
            return QStringLiteral("it holds an index %1 the app does not know").arg(index.key());
    }
    QList<QStringList> verdict;
    if (!rows(db, QStringLiteral("PRAGMA integrity_check"), &verdict) || verdict.isEmpty())
        return QStringLiteral("it cannot be checked (%1)").arg(lastError(db));
    if (verdict.first().value(0) != QLatin1String("ok"))
        return QStringLiteral("it is damaged (%1)").arg(verdict.first().value(0).left(80));
    return {};
}

bool DatabaseSchema::CreateFrom(const QString& source, const QString& path, QString* error) const {
    sqlite3* raw = nullptr;
    const int rc = sqlite3_open_v2(QFile::encodeName(path).constData(), &raw,
                                   SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOFOLLOW,
                                   nullptr);
    Db db(raw);
    auto fail = [&](const QString& step) {
        *error = QStringLiteral("cannot make %1 (%2): %3").arg(path, step, lastError(db.get()));
        return false;
    };
    if (rc != SQLITE_OK) return fail(QStringLiteral("opening"));
    if (sqlite3_exec(db.get(), sql_.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        return fail(QStringLiteral("layout"));
    const QString attach =
        QStringLiteral("ATTACH DATABASE %1 AS source").arg(quoted(source).replace('"', '\''));
    if (sqlite3_exec(db.get(), attach.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        return fail(QStringLiteral("reading the backup"));
    QString copy = QStringLiteral("BEGIN;");
    Layout found;
    QString why;
    {
        // The source's own layout, through the attached name.
        sqlite3* sourceRaw = nullptr;
        sqlite3_open_v2(QFile::encodeName(source).constData(), &sourceRaw, SQLITE_OPEN_READONLY,
                        nullptr);
        Db sourceDb(sourceRaw);
        if (!Read(sourceDb.get(), &found, &why)) {
            *error = QStringLiteral("cannot read %1: %2").arg(source, why);
            return false;
        }
    }
    for (auto table = found.tableColumns.cbegin(); table != found.tableColumns.cend(); ++table) {
        QStringList columns;
        for (const QString& column : table.value()) columns << quoted(column);
        const QString name = quoted(table.key());
        copy += QStringLiteral(
                    "DELETE FROM main.%1 WHERE EXISTS (SELECT 1 FROM source.%1);"
                    "INSERT INTO main.%1 (%2) SELECT %2 FROM source.%1;")
                    .arg(name, columns.join(','));
    }
    copy += QStringLiteral("PRAGMA user_version=%1; COMMIT;").arg(version_);
    if (sqlite3_exec(db.get(), copy.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        return fail(QStringLiteral("copying the rows"));
    if (sqlite3_exec(db.get(), "DETACH DATABASE source", nullptr, nullptr, nullptr) != SQLITE_OK)
        return fail(QStringLiteral("closing the backup"));
    if (sqlite3_close(db.release()) != SQLITE_OK) {
        *error = QStringLiteral("cannot close %1").arg(path);
        return false;
    }
    return true;
}
