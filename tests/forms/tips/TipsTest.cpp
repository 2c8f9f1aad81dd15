#include <gtest/gtest.h>

#include <QFile>
#include <QFontMetrics>
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

TEST_F(TipsTest, ArticleAreaIsOneSlackForShortOrMissingText) {
    PedArticleArea area;
    area.Initialize(QStringLiteral("Walk daily."));
    EXPECT_EQ(area.size(), QSize(460, 130));

    const QString res = AppPaths::Res();
    AppResource::GetInstance().Language();  // the texts load from the real folder first
    QTemporaryDir empty;
    AppPaths::SetRes(empty.path());
    WheightTips& tips = Push<WheightTips>();
    AppPaths::SetRes(res);
    EXPECT_EQ(tips.GetArticle()->GetText(), QString());
    EXPECT_EQ(tips.GetArticle()->height(), 130);
    EXPECT_EQ(tips.GetHeader()->GetTitleText(), "Weight loss tips");
}

// The shipped articles are read whole and fit the area estimated for them, so no
// reader loses the end to the ellipsis.
TEST_F(TipsTest, ShippedArticlesAreShownWhole) {
    for (const char* language : {"en", "de"}) {
        AppResource::GetInstance().SetLanguage(language);
        QFile file(WheightTips::ArticlePath());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << language;
        const QString text = QString::fromUtf8(file.readAll());
        WheightTips& tips = Push<WheightTips>();
        EXPECT_EQ(tips.GetArticle()->GetText(), text) << language;
        const QFontMetrics metrics(TivUtils::CreateFont(TivUtils::FONT_STYLE_PLAIN, 30));
        const QRect needed = metrics.boundingRect(QRect(0, 0, 460, 100000), Qt::TextWordWrap, text);
        EXPECT_LE(needed.height(), tips.GetArticle()->height()) << language;
        EXPECT_GT(text.size(), 1500) << language;
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
