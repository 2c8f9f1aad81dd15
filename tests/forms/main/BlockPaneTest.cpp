#include "BlockPane.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPointer>
#include <QStyleHints>
#include <QTest>

#include "AppResource.h"
#include "FakeSoundPlayer.h"
#include "TestData.h"
#include "TivButton.h"
#include "TivImagePanel.h"
#include "TivLabel.h"
#include "TivUtils.h"
#include "TouchEventDispatcher.h"
#include "UnblockListener.h"

namespace {

const QString kClick = QStringLiteral("click.wav");

// Stands in for the main form: counts touches that reach it and unlocks as it does.
class FakeForm : public QWidget, public UnblockListener, public ITouchEventListener {
public:
    FakeForm() {
        resize(480, 800);
        TouchEventDispatcher::AddTouchEventListener(*this, *this);
    }
    void Unblock(QWidget* pane) override {
        ++unblocks;
        if (dismiss) BlockPane::Dismiss(pane);
    }
    void OnTouchPressed(const QWidget&, const QPoint&, const TouchEventInfo&) override {
        ++touches;
    }
    void OnTouchLongPressed(const QWidget&, const QPoint&, const TouchEventInfo&) override {
        ++touches;
    }

    int unblocks = 0;
    int touches = 0;
    bool dismiss = true;
};

class ActionCounter : public IActionEventListener {
public:
    void OnActionPerformed(const QWidget&, int) override { ++actions; }
    int actions = 0;
};

// A shown "form" with a button under the caption, covered by a lock pane. Touches go
// to whichever widget is under the finger, as the window system would route them, and
// stay with it until the finger is lifted.
class BlockPaneTest : public ::testing::Test {
protected:
    void SetUp() override {
        TivUtils::SetScreenResolution(TivUtils::WVGA_WIDTH);
        AppResource::GetInstance().SetLanguage("en");

        button = new TivButton(&form);
        button->Initialize(QRect(100, 560, 280, 100));
        button->AddActionEventDelegate(&buttonActions);
        pane = new BlockPane(&form);
        pane->Initialize(&form);
        pane->raise();
        form.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    }
    void Press(const QPoint& at) {
        grabber = form.childAt(at);
        if (grabber == nullptr) grabber = &form;
        QTest::mousePress(grabber, Qt::LeftButton, {}, grabber->mapFrom(&form, at));
    }
    void Move(const QPoint& to) {
        if (grabber) QTest::mouseMove(grabber, grabber->mapFrom(&form, to));
    }
    void Release(const QPoint& at) {
        QWidget* target = grabber ? grabber.data() : &form;
        QTest::mouseRelease(target, Qt::LeftButton, {}, target->mapFrom(&form, at));
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    // Presses at `from`, slides by `delta` in a few steps, and lifts the finger there.
    void Slide(const QPoint& from, const QPoint& delta) {
        Press(from);
        for (int step = 1; step <= 4; ++step) Move(from + delta * step / 4);
        Release(from + delta);
    }
    int PictureX() const { return pane->GetPicture()->x(); }

    FakeSounds log;
    FakeForm form;
    TivButton* button = nullptr;
    ActionCounter buttonActions;
    QPointer<BlockPane> pane;
    QPointer<QWidget> grabber;
};

// A slide of 200 pixels either way unlocks, wherever it starts; shorter or vertical slides and
// taps do not, and the picture springs back when the finger is lifted.
TEST_F(BlockPaneTest, OnlyAHorizontalSlideOfTwoHundredPixelsUnlocks) {
    form.dismiss = false;
    for (const QByteArrayList& c : testdata::Table("unlock-slides.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        delete pane;
        pane = new BlockPane(&form);
        pane->Initialize(&form);
        pane->show();
        form.unblocks = 0;
        Slide(QPoint(c[0].toInt(), c[1].toInt()), QPoint(c[2].toInt(), c[3].toInt()));
        EXPECT_EQ(form.unblocks, c[4].toInt());
        if (form.unblocks == 0) {
            EXPECT_EQ(PictureX(), 0);
        }
    }
    TivUtils::SetScreenResolution(TivUtils::HVGA_WIDTH);
    EXPECT_EQ(BlockPane::UnlockDistance(), 133);  // two thirds on the small layout
    TivUtils::SetScreenResolution(TivUtils::WVGA_WIDTH);
}

TEST_F(BlockPaneTest, ASlideOnTheCaptionUnlocksLikeOneOnTheBarePane) {
    form.dismiss = false;
    Press(QPoint(100, 400));
    EXPECT_EQ(grabber, pane->GetCaption());
    Move(QPoint(200, 400));
    EXPECT_EQ(PictureX(), 100) << "the picture follows the finger";
    Move(QPoint(299, 400));
    EXPECT_EQ(form.unblocks, 0);
    Move(QPoint(300, 400));
    EXPECT_EQ(form.unblocks, 1);
    // The finger goes on moving: the form is told once.
    Move(QPoint(350, 400));
    Move(QPoint(20, 400));
    Release(QPoint(20, 400));
    EXPECT_EQ(form.unblocks, 1);
}

TEST_F(BlockPaneTest, TapsAndLongPressesNeverReachTheControlsBelow) {
    // The button lies under the caption; the bare pane lies over the form itself.
    Press(QPoint(200, 600));
    Release(QPoint(200, 600));
    Press(QPoint(200, 600));
    QTest::qWait(QGuiApplication::styleHints()->mousePressAndHoldInterval() + 200);
    Release(QPoint(200, 600));
    Press(QPoint(240, 100));
    QTest::qWait(QGuiApplication::styleHints()->mousePressAndHoldInterval() + 200);
    Release(QPoint(240, 100));
    QTest::mouseDClick(pane.data(), Qt::LeftButton, {}, QPoint(240, 100));
    QTest::mouseRelease(pane.data(), Qt::LeftButton, {}, QPoint(240, 100));
    EXPECT_EQ(buttonActions.actions, 0);
    EXPECT_EQ(form.touches, 0);
    EXPECT_EQ(log.Plays(kClick), 0);
}

TEST_F(BlockPaneTest, UnlockingRemovesThePaneWithAClickAndFreesTheButtons) {
    Slide(QPoint(60, 420), QPoint(260, 0));
    EXPECT_EQ(form.unblocks, 1);
    EXPECT_TRUE(pane.isNull()) << "the pane is destroyed once the touch is over";
    EXPECT_EQ(log.Plays(kClick), 1);
    BlockPane::Dismiss(nullptr);
    EXPECT_EQ(log.Plays(kClick), 1);

    Press(QPoint(200, 600));
    Release(QPoint(200, 600));
    EXPECT_EQ(buttonActions.actions, 1);
}

TEST_F(BlockPaneTest, OddTouchesAndAMissingOwnerDoNothingHarmful) {
    // Moves and releases without a press, other buttons.
    QTest::mouseMove(pane.data(), QPoint(400, 100));
    QTest::mouseRelease(pane.data(), Qt::LeftButton, {}, QPoint(400, 100));
    QTest::mousePress(pane.data(), Qt::RightButton, {}, QPoint(10, 100));
    QTest::mouseRelease(pane.data(), Qt::RightButton, {}, QPoint(400, 100));
    EXPECT_EQ(form.unblocks, 0);

    // A pane without an owner stays, whatever the finger does.
    BlockPane orphan;
    orphan.Initialize(nullptr);
    orphan.show();
    QTest::mousePress(&orphan, Qt::LeftButton, {}, QPoint(10, 100));
    QTest::mouseMove(&orphan, QPoint(470, 100));
    QTest::mouseMove(&orphan, QPoint(-3000, 100));
    QTest::mouseRelease(&orphan, Qt::LeftButton, {}, QPoint(-3000, 100));
    EXPECT_TRUE(orphan.IsUnlocked());
    EXPECT_TRUE(orphan.isVisible());
}

}  // namespace
