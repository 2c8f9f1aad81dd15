#include "TivUtils.h"

#include <gtest/gtest.h>

#include <QPainter>

#include "AppPaths.h"
#include "TestData.h"

namespace {

// Restores the WVGA layout and the resources folder after each test.
class TivUtilsTest : public ::testing::Test {
protected:
    void TearDown() override {
        TivUtils::SetScreenResolution(TivUtils::WVGA_WIDTH);
        AppPaths::SetRes(savedRes_);
    }

private:
    QString savedRes_ = AppPaths::Res();
};

TEST_F(TivUtilsTest, LayoutQueries) {
    EXPECT_TRUE(TivUtils::IsHiRes());
    const int wvgaFont = TivUtils::GetSystemFontSize();

    TivUtils::SetScreenResolution(TivUtils::HVGA_WIDTH);
    EXPECT_FALSE(TivUtils::IsHiRes());
    EXPECT_DOUBLE_EQ(TivUtils::GetScale(), 2.0 / 3.0);
    EXPECT_LT(TivUtils::GetSystemFontSize(), wvgaFont);

    TivUtils::SetScreenResolution(0);  // ignored
    EXPECT_EQ(TivUtils::GetScreenResolution(), TivUtils::HVGA_WIDTH);
}

// The largest size from 8 to 30 that fits (8 when none does), in a few probes (each
// makes a font), never probing the floor.
TEST_F(TivUtilsTest, LargestFittingSize) {
    for (const auto& [limit, expected] :
         {std::pair{40, 30}, {30, 30}, {29, 29}, {17, 17}, {9, 9}, {8, 8}, {2, 8}}) {
        QList<int> asked;
        const auto fits = [&](int size) {
            asked << size;
            return size <= limit;
        };
        EXPECT_EQ(TivUtils::LargestFittingSize(8, 30, fits), expected) << limit;
        EXPECT_LE(asked.size(), 6) << limit;
        EXPECT_FALSE(asked.contains(8)) << limit;
    }
}

TEST_F(TivUtilsTest, EachCallerOwnsAnIndependentPicture) {
    auto first = TivUtils::GetBitmapWithRightResolutionN(QStringLiteral("btn-green.png"));
    ASSERT_TRUE(first);
    first->fill(Qt::magenta);  // the cache must not see this
    auto second = TivUtils::GetBitmapWithRightResolutionN(QStringLiteral("btn-green.png"));
    ASSERT_TRUE(second);
    EXPECT_NE(second->toImage().pixelColor(100, 36), QColor(Qt::magenta));
}

TEST_F(TivUtilsTest, MissingOrBrokenPicturesGiveNull) {
    EXPECT_EQ(TivUtils::GetBitmapWithRightResolutionN(QStringLiteral("no-such-picture.png")),
              nullptr);
    EXPECT_EQ(TivUtils::GetBitmapWithRightResolutionN(QString()), nullptr);

    auto dir = testdata::MakeTempDir();
    QDir(dir->path()).mkpath(QStringLiteral("images"));
    ASSERT_TRUE(testdata::WriteFile(dir->path() + "/images/broken.svg", "<svg><rect"));
    ASSERT_TRUE(testdata::WriteFile(dir->path() + "/images/empty.svg", ""));
    ASSERT_TRUE(
        testdata::WriteFile(dir->path() + "/images/zero.svg",
                            R"(<svg xmlns="http://www.w3.org/2000/svg" width="0" height="0"/>)"));
    AppPaths::SetRes(dir->path());
    for (const char* name : {"broken.png", "empty.png", "zero.png", "btn-green.png"}) {
        EXPECT_EQ(TivUtils::GetBitmapWithRightResolutionN(QString::fromLatin1(name)), nullptr)
            << name;
    }
}

TEST_F(TivUtilsTest, OnlyTheFileNameChoosesTheArtwork) {
    const QString res = AppPaths::Res();
    EXPECT_EQ(TivUtils::GetArtworkPath(QStringLiteral("btn-start.png")),
              res + "/images/btn-start.svg");
    EXPECT_EQ(TivUtils::GetArtworkPath(QStringLiteral("../../secret/daily-goal-full.png")),
              res + "/images/daily-goal-full.svg");
    EXPECT_TRUE(TivUtils::GetArtworkPath(QStringLiteral("../")).isEmpty());
}

}  // namespace
