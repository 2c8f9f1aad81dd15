#include "DbDateTime.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

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

TEST(DbDateTimeTest, TextOrderIsTimeOrder) {
    const QDateTime times[] = {
        DbDateTime::Unset(),
        QDateTime(QDate(999, 12, 31), QTime(23, 59, 59)),
        QDateTime(QDate(2023, 12, 31), QTime(23, 59, 59)),
        QDateTime(QDate(2024, 1, 1), QTime(0, 0, 0)),
        QDateTime(QDate(2024, 1, 1), QTime(0, 0, 1)),
        QDateTime(QDate(2024, 1, 1), QTime(9, 0, 0)),
        QDateTime(QDate(2024, 1, 1), QTime(10, 0, 0)),
        QDateTime(QDate(2024, 1, 10), QTime(0, 0, 0)),
        QDateTime(QDate(2024, 10, 1), QTime(0, 0, 0)),
    };
    for (size_t i = 1; i < std::size(times); ++i) {
        EXPECT_LT(DbDateTime::ToText(times[i - 1]), DbDateTime::ToText(times[i])) << i;
    }
}

TEST(DbDateTimeTest, MalformedTextGivesAnInvalidDateTime) {
    for (const char* text :
         {"", "2024", "2024-03-09 07:05", "2024-03-09 07:05:03.5", "2024-13-01 00:00:00",
          "2023-02-29 00:00:00", "2024-03-09 24:00:00", "2024-03-09 07:60:00",
          "2024/03/09 07:05:03", "20x4-03-09 07:05:03", "-024-03-09 07:05:03",
          "0000-01-01 00:00:00", "2024-03-09x07:05:03", "1710000000"}) {
        EXPECT_FALSE(DbDateTime::FromText(text).isValid()) << text;
    }
    EXPECT_FALSE(DbDateTime::FromText(nullptr).isValid());
}

}  // namespace
