#include "AccelerometerSourceFactory.h"

#include <gtest/gtest.h>

#include "AccelerometerSource.h"
#include "CsvReplaySource.h"
#include "TestData.h"

namespace {

TEST(AccelerometerSourceFactoryTest, ChoicesNameTheirSources) {
    EXPECT_TRUE(AccelerometerSourceFactory::IsValidChoice(QStringLiteral("auto")));
    EXPECT_TRUE(AccelerometerSourceFactory::IsValidChoice(QStringLiteral("replay:/x.csv")));
    EXPECT_FALSE(AccelerometerSourceFactory::IsValidChoice(QStringLiteral("replay:")));
    EXPECT_FALSE(AccelerometerSourceFactory::IsValidChoice(QStringLiteral("gps")));

    QString error;
    EXPECT_FALSE(AccelerometerSourceFactory::Create(QStringLiteral("none"), &error)->IsAvailable());
    EXPECT_TRUE(error.isEmpty());
    EXPECT_FALSE(AccelerometerSourceFactory::Create(QStringLiteral("gps"), &error)->IsAvailable());
    EXPECT_EQ(error, QStringLiteral("unknown accelerometer source \"gps\""));
}

TEST(AccelerometerSourceFactoryTest, ReplayChoicePlaysTheFileOrReportsWhyNot) {
    const auto dir = testdata::MakeTempDir();
    const QString good = dir->filePath(QStringLiteral("good.csv"));
    ASSERT_TRUE(testdata::WriteFile(good,
                                    "Time (ms),Acceleration x (g),Acceleration y (g),"
                                    "Acceleration z (g)\n0,0,0,1\n30,0,0,1.5\n"));
    QString error;
    AccelerometerSourceFactory::SetChoice(QStringLiteral("replay:") + good);
    const auto source = AccelerometerSourceFactory::Create(&error);
    AccelerometerSourceFactory::SetChoice(QStringLiteral("auto"));
    ASSERT_NE(dynamic_cast<CsvReplaySource*>(source.get()), nullptr);
    EXPECT_TRUE(source->IsAvailable());
    EXPECT_TRUE(error.isEmpty());

    const auto missing = AccelerometerSourceFactory::Create(
        QStringLiteral("replay:") + dir->filePath(QStringLiteral("missing.csv")), &error);
    EXPECT_FALSE(missing->IsAvailable());
    EXPECT_TRUE(error.contains(QStringLiteral("missing.csv: cannot open"))) << error.toStdString();
}

}  // namespace
