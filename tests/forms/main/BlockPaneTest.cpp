#include "BlockPane.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QPointer>
#include <QStyleHints>
#include <QTest>

#include "AppResource.h"
#include "FakeSoundPlayer.h"
#include "GraphicBlue.h"
#include "TivButton.h"
#include "TivImagePanel.h"
#include "TivLabel.h"
#include "TivUtils.h"
#include "Touch.h"
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
        pane->setObjectName("lock");
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

TEST_F(BlockPaneTest, CoversTheScreenWithPictureAndCaption) {
    EXPECT_EQ(pane->geometry(), QRect(0, 0, 480, 800));
    EXPECT_EQ(pane->GetPicture()->pos(), QPoint(0, 360));
    ASSERT_NE(pane->GetPicture()->GetImage(), nullptr);
    EXPECT_EQ(pane->GetPicture()->size(), QSize(480, 120));
    const TivLabel& caption = *pane->GetCaption();
    // On the slide track, between its knob and its arrows.
    EXPECT_TRUE(pane->GetPicture()->geometry().contains(caption.geometry()));
    EXPECT_GE(caption.x(), 96);
    EXPECT_EQ(caption.GetText(), "Slide to unlock");
    EXPECT_EQ(caption.GetTextColor(), QColor(Qt::white));
    EXPECT_EQ(caption.GetBackColor().alpha(), 0);
    EXPECT_EQ(form.findChild<BlockPane*>("lock"), pane.data());

    // The pane itself is transparent: where it has no picture or text, it draws nothing.
    const QImage image = touch::Render(*pane);
    EXPECT_EQ(image.pixelColor(240, 100).alpha(), 0);
    EXPECT_GT(image.pixelColor(62, 420).alpha(), 0);  // the knob of the picture
}

TEST_F(BlockPaneTest, UnlocksFromTwoHundredPixelsEitherWay) {
    EXPECT_TRUE(BlockPane::IsUnlockSlide(200, 200));
    EXPECT_TRUE(BlockPane::IsUnlockSlide(-200, 200));
    EXPECT_FALSE(BlockPane::IsUnlockSlide(199, 200));
    EXPECT_FALSE(BlockPane::IsUnlockSlide(-199, 200));

    form.dismiss = false;
    Slide(QPoint(100, 100), QPoint(199, 0));
    EXPECT_EQ(form.unblocks, 0);
    EXPECT_EQ(PictureX(), 0) << "the picture springs back when the finger is lifted";
    Slide(QPoint(300, 100), QPoint(-199, 30));
    EXPECT_EQ(form.unblocks, 0);

    Slide(QPoint(100, 100), QPoint(200, 0));
    EXPECT_EQ(form.unblocks, 1);
}

TEST_F(BlockPaneTest, SlidingLeftAlsoUnlocks) {
    form.dismiss = false;
    Slide(QPoint(400, 200), QPoint(-200, 0));
    EXPECT_EQ(form.unblocks, 1);
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

TEST_F(BlockPaneTest, VerticalSlidesAndTapsDoNotUnlock) {
    Slide(QPoint(240, 50), QPoint(0, 700));
    Slide(QPoint(240, 700), QPoint(150, -600));
    Press(QPoint(240, 600));
    Release(QPoint(240, 600));
    EXPECT_EQ(form.unblocks, 0);
    EXPECT_FALSE(pane.isNull());
    EXPECT_EQ(PictureX(), 0);
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
    EXPECT_EQ(form.findChild<QWidget*>("lock"), nullptr);
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

TEST_F(BlockPaneTest, FollowsTheLayoutOnTheSmallScreen) {
    TivUtils::SetScreenResolution(TivUtils::HVGA_WIDTH);
    BlockPane small;
    small.Initialize(nullptr);
    EXPECT_EQ(small.geometry(), QRect(0, 0, 320, 480));
    EXPECT_EQ(small.GetPicture()->pos(), QPoint(0, 240));
    EXPECT_EQ(BlockPane::UnlockDistance(), 133);
    TivUtils::SetScreenResolution(TivUtils::WVGA_WIDTH);
    EXPECT_EQ(BlockPane::UnlockDistance(), 200);
}

}  // namespace
