#include "Converter.h"
#include "TestData.h"

#include <gtest/gtest.h>

#include <QLocale>

namespace {

// Sets the default locale for one test and restores the test program's default.
class LocaleScope {
public:
    explicit LocaleScope(const QLocale& locale) : saved_(QLocale()) { QLocale::setDefault(locale); }
    ~LocaleScope() { QLocale::setDefault(saved_); }

private:
    QLocale saved_;
};

TEST(ConverterTest, AverageSpeed) {
    EXPECT_DOUBLE_EQ(Converter::GetAverageSpeedKMH(1000, 0), 0.0);
    EXPECT_DOUBLE_EQ(Converter::GetAverageSpeedKMH(0, 600), 0.0);
    EXPECT_DOUBLE_EQ(Converter::GetAverageSpeedKMH(1000, 600), 6.0);
    EXPECT_NEAR(Converter::GetAverageSpeedKMH(0.1, 36), 0.01, 1e-12);  // a shuffle still moves
}

TEST(ConverterTest, TimeStringKeepsMinutesUnfolded) {
    for (const QByteArrayList& c : testdata::Table("time-strings.tsv"))
        EXPECT_EQ(Converter::GetTimeStringN(c[0].toInt()), QString::fromUtf8(c[1]));
}

TEST(ConverterTest, LocalStringHasExactFractionDigitsAndLocaleSeparators) {
    {
        LocaleScope english(QLocale(QLocale::English, QLocale::UnitedStates));
        EXPECT_EQ(Converter::GetLocalStringN(2.5, 2), QStringLiteral("2.50"));
        EXPECT_EQ(Converter::GetLocalStringN(2.456, 1), QStringLiteral("2.5"));
        EXPECT_EQ(Converter::GetLocalStringN(12345.678, 0), QStringLiteral("12,346"));
        EXPECT_EQ(Converter::GetLocalStringN(1234567.5, 2), QStringLiteral("1,234,567.50"));
        EXPECT_EQ(Converter::GetCountString(1079498), QStringLiteral("1,079,498"));
    }
    {
        LocaleScope german(QLocale(QLocale::German, QLocale::Germany));
        EXPECT_EQ(Converter::GetLocalStringN(2.5, 2), QStringLiteral("2,50"));
        EXPECT_EQ(Converter::GetLocalStringN(12345.678, 1), QStringLiteral("12.345,7"));
        EXPECT_EQ(Converter::GetCountString(1079498), QStringLiteral("1.079.498"));
    }
    // One blank between a number and its unit, however the unit's text is padded.
    EXPECT_EQ(Converter::WithUnit(QStringLiteral("106.5"), QStringLiteral(" steps/min")),
              QStringLiteral("106.5 steps/min"));
}

}  // namespace
