#include "SettingsStore.h"

#include <string>
#include <type_traits>
#include <variant>

#include "Body.h"
#include "OptionsColumns.h"
#include "StoreStatements.h"

SettingsStore::SettingsStore(DatabaseConnection& options) : options_(options) {}

void SettingsStore::LoadOptions(PedometerOptions& o) {
    // Each table holds one row, read on its own: the sound switches still load when the
    // settings row is missing (and are not saved back with their defaults).
    options_.Run([&](SQLite::Database& db) {
        for (const std::string table : {"SOUNDS", "SCREEN"}) {
            std::string sql;
            for (const OptionsColumns::Column& column : OptionsColumns::All()) {
                if (column.table == table)
                    sql += std::string(sql.empty() ? "SELECT " : ",") + column.name;
            }
            SQLite::Statement select(db, sql + " FROM " + table);
            if (!select.executeStep()) continue;
            int index = 0;
            for (const OptionsColumns::Column& column : OptionsColumns::All()) {
                if (column.table != table) continue;
                const SQLite::Column value = select.getColumn(index++);
                std::visit(
                    [&](auto member) {
                        using Value =
                            typename std::remove_reference_t<decltype(o.*member)>::value_type;
                        if constexpr (std::is_same_v<Value, bool>) {
                            o.*member = value.getInt() == 1;  // set only when exactly 1
                        } else if constexpr (std::is_same_v<Value, int>) {
                            o.*member = value.getInt();
                        } else {
                            o.*member = value.getDouble();
                        }
                    },
                    column.member);
            }
        }
    });
}

void SettingsStore::SaveOptions(const PedometerOptions& o) {
    // Both tables in one transaction: the settings are saved whole or not at all.
    options_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        for (const std::string table : {"SOUNDS", "SCREEN"}) {
            std::string sql;
            for (const OptionsColumns::Column& column : OptionsColumns::All()) {
                if (column.table != table) continue;
                sql += std::string(sql.empty() ? "UPDATE " + table + " SET " : ",") + column.name +
                       "=?";
            }
            SQLite::Statement update(db, sql);
            int index = 1;
            for (const OptionsColumns::Column& column : OptionsColumns::All()) {
                if (column.table != table) continue;
                std::visit(
                    [&](auto member) {
                        const auto value = (o.*member).load();
                        if constexpr (std::is_same_v<decltype(value), const bool>) {
                            update.bind(index++, value ? 1 : 0);
                        } else {
                            update.bind(index++, value);
                        }
                    },
                    column.member);
            }
            update.exec();
        }
        transaction.commit();
    });
}

void SettingsStore::LoadBody(Body& body) {
    options_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(db,
                                 "SELECT MEN,AGE,HEIGHT,WEIGHT,WALK_SIZE,JOG_SIZE,RUN_SIZE,"
                                 "WALK_COEF,JOG_COEF,RUN_COEF FROM BODY");
        if (!select.executeStep()) return;
        body.setMen(select.getColumn(0).getInt());
        body.setAge(select.getColumn(1).getInt());
        body.setHeight(select.getColumn(2).getDouble());
        body.setWeight(select.getColumn(3).getDouble());
        body.setWalkStepSize(select.getColumn(4).getDouble());
        body.setJogStepSize(select.getColumn(5).getDouble());
        body.setRunStepSize(select.getColumn(6).getDouble());
        body.setWalkCoef(select.getColumn(7).getDouble());
        body.setJogCoef(select.getColumn(8).getDouble());
        body.setRunCoef(select.getColumn(9).getDouble());
    });
}

void SettingsStore::SaveBody(const Body& body) {
    StoreStatements::ExecInTransaction(
        options_,
        "UPDATE BODY SET  MEN=?,AGE=?,HEIGHT=?,WEIGHT=?,WALK_SIZE=?,JOG_SIZE=?,RUN_SIZE=?,"
        "WALK_COEF=?,JOG_COEF=?,RUN_COEF=?",
        body.storedMen(), body.storedAge(), body.storedHeight(), body.storedWeight(),
        body.storedWalkStepSize(), body.storedJogStepSize(), body.storedRunStepSize(),
        body.storedWalkCoef(), body.storedJogCoef(), body.storedRunCoef());
}

std::unique_ptr<DAOSocial> SettingsStore::GetDAOSocialN() {
    auto social = std::make_unique<DAOSocial>();
    options_.Run([&](SQLite::Database& db) {
        SQLite::Statement select(
            db, "SELECT EXPORT,SHARE,TWIT_LOGIN,TWIT_PASS,FACEB_LOGIN,FACEB_PASS FROM SOCIAL");
        if (!select.executeStep()) return;
        int index = 0;
        for (QString* field : {&social->export_, &social->share, &social->twitLogin,
                               &social->twitPass, &social->facebLogin, &social->facebPass})
            *field = QString::fromUtf8(select.getColumn(index++).getText());
    });
    return social;
}

void SettingsStore::SetSocial(const DAOSocial& social) {
    StoreStatements::ExecInTransaction(
        options_,
        "UPDATE SOCIAL SET  EXPORT=?,SHARE=?,TWIT_LOGIN=?,TWIT_PASS=?,FACEB_LOGIN=?,FACEB_PASS=?",
        social.export_.toStdString(), social.share.toStdString(), social.twitLogin.toStdString(),
        social.twitPass.toStdString(), social.facebLogin.toStdString(),
        social.facebPass.toStdString());
}

QString SettingsStore::GetPreference(const QString& name, const QString& fallback) {
    QString value = fallback;
    options_.Run([&](SQLite::Database& db) {
        if (!db.tableExists("Preferences")) return;
        SQLite::Statement select(db, "SELECT value FROM Preferences WHERE name=?");
        select.bind(1, name.toStdString());
        if (select.executeStep()) value = QString::fromUtf8(select.getColumn(0).getText());
    });
    return value;
}

bool SettingsStore::SetPreference(const QString& name, const QString& value) {
    return options_.Run([&](SQLite::Database& db) {
        SQLite::Transaction transaction(db);
        // Files seeded by earlier versions have no such table yet.
        db.exec(
            "CREATE TABLE IF NOT EXISTS Preferences (name TEXT PRIMARY KEY, value TEXT "
            "NOT NULL)");
        SQLite::Statement upsert(db,
                                 "INSERT OR REPLACE INTO Preferences (name, value) VALUES (?, ?)");
        SQLite::bind(upsert, name.toStdString(), value.toStdString());
        upsert.exec();
        transaction.commit();
    });
}
