#include "DbDateTime.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

#include "TestData.h"

namespace {

TEST(DbDateTimeTest, TextIsLocalTimeToTheSecondAndReadsBack) {
    const QDateTime when(QDate(2024, 3, 9), QTime(7, 5, 3, 999));
    EXPECT_EQ(DbDateTime::ToText(when), "2024-03-09 07:05:03");
    EXPECT_EQ(DbDateTime::FromText("2024-03-09 07:05:03"),
              QDateTime(QDate(2024, 3, 9), QTime(7, 5, 3)));
    EXPECT_EQ(DbDateTime::FromText("2024-03-09T07:05:03"),
              QDateTime(QDate(2024, 3, 9), QTime(7, 5, 3)));
    EXPECT_EQ(DbDateTime::FromText("2024-03-09"), QDate(2024, 3, 9).startOfDay());
    EXPECT_EQ(DbDateTime::ToText(DbDateTime::Unset()), "0001-01-01 00:00:00");
    EXPECT_EQ(DbDateTime::FromText("0001-01-01 00:00:00"), DbDateTime::Unset());
    EXPECT_EQ(DbDateTime::ToText(QDateTime()), "");
}

TEST(DbDateTimeTest, TimeInTheSpringGapIsReadAsTheZoneRulesSay) {
    const QByteArray zone = qgetenv("TZ");
    qputenv("TZ", "Europe/Berlin");
    tzset();
    EXPECT_EQ(DbDateTime::FromText("2026-03-29 02:30:00"),
              QDateTime(QDate(2026, 3, 29), QTime(3, 30)));
    EXPECT_EQ(DbDateTime::FromText("2026-03-29 03:30:00"),
              QDateTime(QDate(2026, 3, 29), QTime(3, 30)));
    if (zone.isNull())
        qunsetenv("TZ");
    else
        qputenv("TZ", zone);
    tzset();
}

// The texts of tests/data/db-date-times.tsv.
TEST(DbDateTimeTest, TextOrderIsTimeOrderAndMalformedTextIsInvalid) {
    QDateTime previous;
    for (const QByteArrayList& row : testdata::Table("db-date-times.tsv")) {
        const QDateTime when = DbDateTime::FromText(row[0].constData());
        if (row[1] == "invalid") {
            EXPECT_FALSE(when.isValid()) << row[0].constData();
            continue;
        }
        EXPECT_EQ(DbDateTime::ToText(when), row[0].toStdString());
        if (previous.isValid()) {
            EXPECT_LT(DbDateTime::ToText(previous), row[0].toStdString());
            EXPECT_LT(previous, when) << row[0].constData();
        }
        previous = when;
    }
    EXPECT_FALSE(DbDateTime::FromText(nullptr).isValid());
}

}  // namespace
