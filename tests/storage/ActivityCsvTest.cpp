#include "ActivityCsv.h"

#include <QBuffer>

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
    // Files from before the manual mark come back with it: counted laps.
    EXPECT_EQ(Export(ActivityCsv::Kind::Minutes),
              "lap_start,lap_end,minute,steps,calories_kcal,distance_m,seconds,manual\n"
              "2024-03-13 08:00:00,2024-03-13 08:02:00,1,100,3.25,70.5,60,0\n"
              "2024-03-13 08:00:00,2024-03-13 08:02:00,2,90,0.1,60.25,45,0\n"
              "2024-03-13 23:59:59,,1,7,0.2,5,30,0\n");
    EXPECT_EQ(Export(ActivityCsv::Kind::Days),
              "day,laps,steps,calories_kcal,distance_m,active_s\n"
              "2024-03-13,2,197,3.55,135.75,135\n");
    EXPECT_EQ(Export(ActivityCsv::Kind::Laps, QDate(2024, 3, 14)),
              "lap_start,lap_end,steps,calories_kcal,distance_m,active_s,manual\n");

    ASSERT_TRUE(Import(kMinutes, &result, &error));
    EXPECT_EQ(result.lapsAdded, 0);
    EXPECT_EQ(result.lapsSkipped, 2);
    // A day that already has laps is not added again from a file of days.
    ASSERT_TRUE(Import(Export(ActivityCsv::Kind::Days), &result, &error));
    EXPECT_EQ(result.lapsAdded, 0);
}

TEST_F(ActivityCsvTest, ABadLineIsNamedAndNothingOfTheFileIsStored) {
    QList<QByteArrayList> cases = testdata::Table("activity-csv-bad-lines.tsv");
    cases.append({"+" + QByteArray(5000, '1'), "line 5: the line is too long"});
    for (const QByteArrayList& c : cases) {
        ActivityCsv::ImportResult result;
        QString error;
        const QByteArray csv = c[0].startsWith('+') ? kMinutes + c[0].mid(1) : c[0];
        EXPECT_FALSE(Import(csv, &result, &error)) << c[1].constData();
        EXPECT_TRUE(error.startsWith(QString::fromUtf8(c[1]))) << error.toStdString();
        EXPECT_EQ(QueryInt(StatisticsPath(), "SELECT count(*) FROM Lap"), 0) << c[1].constData();
    }
}

}  // namespace
