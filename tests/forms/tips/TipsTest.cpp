#include <gtest/gtest.h>

#include <QFile>
#include <QScrollArea>
#include <QTest>

#include "../goals/GoalScreenTest.h"
#include "AccelerometerTips.h"
#include "AppPaths.h"
#include "AppResource.h"
#include "Metronome.h"
#include "PedArticleArea.h"
#include "TivUtils.h"
#include "WheightTips.h"

namespace {

using TipsTest = GoalScreenTest;

TEST_F(TipsTest, AMissingArticleShowsAnEmptyArea) {
    const QString res = AppPaths::Res();
    AppResource::GetInstance().Language();  // the texts load from the real folder first
    QTemporaryDir empty;
    AppPaths::SetRes(empty.path());
    WheightTips& tips = Push<WheightTips>();
    AppPaths::SetRes(res);
    EXPECT_EQ(tips.GetArticle()->GetText(), QString());
    EXPECT_TRUE(tips.GetArticle()->GetHeadings().isEmpty());
}

// A shipped article is read whole, with its title and headings set apart from the
// paragraphs, and the panel is tall enough for all of it.
TEST_F(TipsTest, AShippedArticleIsShownWholeWithItsHeadings) {
    QFile file(WheightTips::ArticlePath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    WheightTips& tips = Push<WheightTips>();
    const PedArticleArea& article = *tips.GetArticle();
    EXPECT_EQ(article.GetText(), QString::fromUtf8(file.readAll()));
    ASSERT_EQ(article.GetHeadings().size(), 9);
    EXPECT_EQ(article.GetHeadings().front(), "Losing weight sensibly");
    EXPECT_GT(article.height(), 3 * tips.GetScrollArea()->height());
}

TEST_F(TipsTest, LeavingTheCarryTipsUpdatesThePacer) {
    Options().pacerType = 0;
    Options().pacerFrequency = 120;
    Options().pacerDiff = false;
    Options().pacerOffOnStanding = false;
    Metronome::GetInstance().Start();
    AccelerometerTips& tips = Push<AccelerometerTips>();
    ASSERT_NE(tips.GetBackgroundImage(), nullptr);  // the language's picture
    Options().pacerType = 3;  // changed elsewhere while the tips are shown
    EXPECT_EQ(Metronome::GetInstance().GetInterval(), 0);
    QTest::keyClick(frame.get(), Qt::Key_Escape);
    EXPECT_EQ(Metronome::GetInstance().GetInterval(), 500);
    EXPECT_EQ(navigation->GetFormCount(), 1);
    Metronome::GetInstance().Stop();
}

}  // namespace
