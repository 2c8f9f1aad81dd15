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
    EXPECT_EQ(tips.GetHeader()->GetTitleText(), "Weight loss tips");
}

// The shipped articles are read whole, with their title and headings set apart from
// the paragraphs, and the panel is tall enough for all of it.
TEST_F(TipsTest, ShippedArticlesAreShownWholeWithTheirHeadings) {
    const struct {
        const char* language;
        const char* title;
        const char* lastHeading;
    } cases[] = {{"en", "Losing weight sensibly", "When to ask a doctor"},
                 {"de", "Vernünftig abnehmen", "Wann zum Arzt"}};
    for (const auto& c : cases) {
        AppResource::GetInstance().SetLanguage(c.language);
        QFile file(WheightTips::ArticlePath());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << c.language;
        const QString text = QString::fromUtf8(file.readAll());
        WheightTips& tips = Push<WheightTips>();
        const PedArticleArea& article = *tips.GetArticle();
        EXPECT_EQ(article.GetText(), text) << c.language;
        ASSERT_EQ(article.GetHeadings().size(), 9) << c.language;
        EXPECT_EQ(article.GetHeadings().front(), QString::fromUtf8(c.title));
        EXPECT_EQ(article.GetHeadings().back(), QString::fromUtf8(c.lastHeading));
        EXPECT_GT(article.height(), 3 * tips.GetScrollArea()->height()) << c.language;
    }
    AppResource::GetInstance().SetLanguage("en");
}

TEST_F(TipsTest, LeavingTheCarryTipsUpdatesThePacer) {
    Options().pacerType = 0;
    Options().pacerFrequency = 120;
    Options().pacerDiff = false;
    Options().pacerOffOnStanding = false;
    Metronome::GetInstance().Start();
    AccelerometerTips& tips = Push<AccelerometerTips>();
    ASSERT_NE(tips.GetBackgroundImage(), nullptr);  // the language's picture
    EXPECT_EQ(tips.GetBackgroundImage()->width(), 480);
    Options().pacerType = 3;  // changed elsewhere while the tips are shown
    EXPECT_EQ(Metronome::GetInstance().GetInterval(), 0);
    QTest::keyClick(frame.get(), Qt::Key_Escape);
    EXPECT_EQ(Metronome::GetInstance().GetInterval(), 500);
    EXPECT_EQ(navigation->GetFormCount(), 1);
    Metronome::GetInstance().Stop();
}

}  // namespace
