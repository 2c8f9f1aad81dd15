#include "ActivityCsv.h"

#include <QBuffer>

#include "DataBackup.h"
#include "StorageTestSupport.h"

using storagetest::Moment;
using storagetest::StorageTest;

namespace {

class ActivityCsvTest : public StorageTest {
protected:
    QByteArray Export(ActivityCsv::Kind kind, QDate from = {}, QDate to = {}) {
        QBuffer out;
        out.open(QIODevice::WriteOnly);
        manager().StatisticsConnection().Run(
            [&](SQLite::Database& db) { ActivityCsv::Export(db, kind, from, to, out); });
        return out.data();
    }
    bool Import(QByteArray csv, ActivityCsv::ImportResult* result, QString* error) {
        QBuffer in(&csv);
        in.open(QIODevice::ReadOnly);
        bool ok = false;
        manager().StatisticsConnection().Run(
            [&](SQLite::Database& db) { ok = ActivityCsv::Import(db, in, result, error); });
        return ok;
    }
};

const QByteArray kMinutes =
    "lap_start,lap_end,minute,steps,calories_kcal,distance_m,seconds\n"
    "2024-03-13 08:00:00,2024-03-13 08:02:00,1,100,3.25,70.5,60\n"
    "2024-03-13 08:00:00,2024-03-13 08:02:00,2,90,0.1,60.25,45\n"
    "2024-03-13 23:59:59,,1,7,0.2,5,30\n";

TEST_F(ActivityCsvTest, MinutesRoundTripIntoAnEmptyFolderAndImportTwiceAddsNothing) {
    ActivityCsv::ImportResult result;
    QString error;
    ASSERT_TRUE(Import(kMinutes, &result, &error)) << error.toStdString();
    EXPECT_EQ(result.lapsAdded, 2);
    EXPECT_EQ(Export(ActivityCsv::Kind::Minutes), kMinutes);
    EXPECT_EQ(Export(ActivityCsv::Kind::Days),
              "day,laps,steps,calories_kcal,distance_m,active_s\n"
              "2024-03-13,2,197,3.55,135.75,135\n");
    EXPECT_EQ(Export(ActivityCsv::Kind::Laps, QDate(2024, 3, 14)),
              "lap_start,lap_end,steps,calories_kcal,distance_m,active_s\n");

    ASSERT_TRUE(Import(kMinutes, &result, &error));
    EXPECT_EQ(result.lapsAdded, 0);
    EXPECT_EQ(result.lapsSkipped, 2);
    // A day that already has laps is not added again from a file of days.
    ASSERT_TRUE(Import(Export(ActivityCsv::Kind::Days), &result, &error));
    EXPECT_EQ(result.lapsAdded, 0);
}

TEST_F(ActivityCsvTest, ABadLineIsNamedAndNothingOfTheFileIsStored) {
    const struct {
        QByteArray csv;
        const char* error;
    } cases[] = {
        {"steps\n", "line 1: not an activity export"},
        {kMinutes + "2024-03-14 08:00:00,,1,-5,0,0,0\n", "line 5: steps"},
        {kMinutes + "2024-03-14 08:00:00,,1,5,nan,0,0\n", "line 5: steps"},
        {kMinutes + "2024-03-14 8:00,,1,5,0,0,0\n", "line 5: '2024-03-14 8:00' is not a start"},
        {kMinutes + "2024-03-14 08:00:00,2024-03-14 07:00:00,1,5,0,0,0\n", "line 5: the lap ends"},
        {kMinutes + "2024-03-13 08:00:00,2024-03-13 08:02:00,2,1,0,0,0\n", "line 5: minute 2"},
        {kMinutes + QByteArray(5000, '1'), "line 5: the line is too long"},
    };
    for (const auto& c : cases) {
        ActivityCsv::ImportResult result;
        QString error;
        EXPECT_FALSE(Import(c.csv, &result, &error)) << c.error;
        EXPECT_TRUE(error.startsWith(QLatin1String(c.error))) << error.toStdString();
        EXPECT_EQ(QueryInt(StatisticsPath(), "SELECT count(*) FROM Lap"), 0) << c.error;
    }
}

TEST_F(ActivityCsvTest, RestoreRefusesForeignFilesAndKeepsTheCurrentDataAside) {
    ActivityCsv::ImportResult result;
    QString error;
    ASSERT_TRUE(Import(kMinutes, &result, &error));
    manager().OptionsStatus();  // both files exist
    const QString backup = folder_->filePath("all.backup");
    ASSERT_TRUE(DataBackup::Backup(home_, backup, &error)) << error.toStdString();
    QFile file(backup);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll();

    const QString other = folder_->filePath("other");
    for (const QByteArray& foreign : {QByteArray("hello\n"), whole.left(whole.size() - 10)}) {
        QFile bad(other);
        ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
        bad.write(foreign);
        bad.close();
        EXPECT_FALSE(DataBackup::Restore(other, home_, &error));
        EXPECT_TRUE(QDir(home_).entryList({"aside-*"}, QDir::Dirs).isEmpty());
    }
    const QString fresh = folder_->filePath("new");
    QString aside;
    ASSERT_TRUE(DataBackup::Restore(backup, fresh, &error, &aside)) << error.toStdString();
    EXPECT_TRUE(aside.isEmpty());
    ASSERT_TRUE(DataBackup::Restore(backup, home_, &error, &aside));
    EXPECT_TRUE(QFileInfo(aside + "/Statistics.db3").isFile());
    for (const QString& dir : {fresh, home_}) {
        AppPaths::SetHome(dir);
        manager().Reopen();
        EXPECT_EQ(Export(ActivityCsv::Kind::Minutes), kMinutes);
    }
}

}  // namespace
