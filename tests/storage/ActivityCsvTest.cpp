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
        {kMinutes + "2024-03-14 08:00:00,,1,9223372036854775807,0,0,0\n", "line 5: more than"},
        {kMinutes + "2024-03-14 08:00:00,,1,5,1e308,0,0\n", "line 5: more than"},
        {kMinutes + "2024-03-14 08:00:00,,1,5,0,0,9000000000000000000\n", "line 5: more than"},
        {kMinutes + "2024-03-14 08:00:00,,0,5,0,0,0\n", "line 5: minute 0 is outside"},
        {kMinutes + "2024-03-14 08:00:00,2024-03-14 08:30:00,32,5,0,0,0\n", "line 5: minute 32"},
        {kMinutes + QByteArray("2024-03-14 08:00:00,,1,10\0,0,0,0\n", 33), "line 5: a NUL"},
        {"lap_start,lap_end,steps,calories_kcal,distance_m,active_s\n"
         "2024-03-14 08:00:00,2024-03-14 08:01:00,1201,0,0,0\n",
         "line 2: more than"},
        {kMinutes.left(63) + ",manual\n2024-03-14 08:00:00,,1,5,0,0,0,2\n", "line 2: manual must"},
        {kMinutes.left(63) + ",manual\n2024-03-14 08:00:00,,1,-9223372036854775808,0,0,0,1\n",
         "line 2: steps"},
        {"", "the file is empty"},
    };
    for (const auto& c : cases) {
        ActivityCsv::ImportResult result;
        QString error;
        EXPECT_FALSE(Import(c.csv, &result, &error)) << c.error;
        EXPECT_TRUE(error.startsWith(QLatin1String(c.error))) << error.toStdString();
        EXPECT_EQ(QueryInt(StatisticsPath(), "SELECT count(*) FROM Lap"), 0) << c.error;
    }
}

}  // namespace
