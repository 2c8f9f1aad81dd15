#include "TivButton.h"

#include <gtest/gtest.h>

#include <QPixmap>
#include <memory>

#include "IActionEventListener.h"
#include "TivLabel.h"
#include "Touch.h"

namespace {

struct Action {
    const QWidget* source;
    int id;
};

class ActionRecorder : public QObject, public IActionEventListener {
public:
    void OnActionPerformed(const QWidget& source, int actionId) override {
        actions.push_back({&source, actionId});
    }
    std::vector<Action> actions;
};

class TouchRecorder : public ITouchEventListener {
public:
    void OnTouchPressed(const QWidget& s, const QPoint&, const TouchEventInfo&) override {
        events.push_back({"pressed", &s});
    }
    void OnTouchReleased(const QWidget& s, const QPoint&, const TouchEventInfo&) override {
        events.push_back({"released", &s});
    }
    void OnTouchMoved(const QWidget& s, const QPoint&, const TouchEventInfo&) override {
        events.push_back({"moved", &s});
    }
    std::vector<std::pair<std::string, const QWidget*>> events;
};

QPixmap Solid(const QColor& color) {
    QPixmap p(40, 20);
    p.fill(color);
    return p;
}

const QColor kNormal(200, 0, 0), kPressed(0, 200, 0), kDisabled(0, 0, 200);

class TivButtonTest : public ::testing::Test {
protected:
    void SetUp() override {
        button.Initialize(QRect(0, 0, 40, 20));
        button.SetActionId(7);
        button.AddActionEventDelegate(&actions);
    }
    void SetAllPictures() {
        const QPixmap n = Solid(kNormal), p = Solid(kPressed), d = Solid(kDisabled);
        button.SetNormalBitmap(&n);
        button.SetPressedBitmap(&p);
        button.SetDisabledBitmap(&d);
    }
    QColor Shown() { return touch::PixelAt(button, QPoint(20, 10)); }

    TivButton button;
    ActionRecorder actions;
};

TEST_F(TivButtonTest, TapShowsPressedPictureAndFiresActionOnRelease) {
    SetAllPictures();
    EXPECT_EQ(Shown(), kNormal);
    touch::Press(button, QPoint(5, 5));
    EXPECT_TRUE(button.IsPressed());
    EXPECT_EQ(Shown(), kPressed);
    EXPECT_TRUE(actions.actions.empty());

    touch::Release(button, QPoint(5, 5));
    EXPECT_FALSE(button.IsPressed());
    EXPECT_EQ(Shown(), kNormal);
    ASSERT_EQ(actions.actions.size(), 1u);
    EXPECT_EQ(actions.actions[0].source, &button);
    EXPECT_EQ(actions.actions[0].id, 7);

    // A release fires wherever the finger is lifted.
    touch::Press(button, QPoint(5, 5));
    touch::Move(button, QPoint(300, 200));
    touch::Release(button, QPoint(300, 200));
    EXPECT_EQ(actions.actions.size(), 2u);
}

TEST_F(TivButtonTest, OnlyNormalPictureIsShownWhilePressed) {
    const QPixmap n = Solid(kNormal);
    button.SetNormalBitmap(&n);
    touch::Press(button, QPoint(5, 5));
    EXPECT_EQ(Shown(), kNormal);
    // Disabled without a disabled picture: the pressed state still draws the normal
    // picture (nothing is drawn over it).
    button.SetButtonEnabled(false);
    EXPECT_EQ(Shown(), kNormal);
    button.SetButtonEnabled(true);
    touch::Release(button, QPoint(5, 5));
    // Not pressed and disabled, with no disabled picture: nothing at all.
    button.SetButtonEnabled(false);
    EXPECT_EQ(Shown().alpha(), 0);
}

TEST_F(TivButtonTest, PressedThenDisabledIgnoresReleaseUntilEnabledAndReleasedAgain) {
    SetAllPictures();
    TouchRecorder delegate;
    button.AddTouchEventDelegate(&delegate);
    touch::Press(button, QPoint(5, 5));
    delegate.events.clear();
    button.SetButtonEnabled(false);
    touch::Release(button, QPoint(5, 5));
    EXPECT_TRUE(actions.actions.empty());
    EXPECT_TRUE(button.IsPressed());
    EXPECT_EQ(Shown(), kDisabled);  // drawn last, over the pressed picture

    // Touches while disabled change nothing and are not forwarded.
    touch::Press(button, QPoint(5, 5));
    touch::Move(button, QPoint(6, 6));
    touch::Release(button, QPoint(6, 6));
    EXPECT_TRUE(actions.actions.empty());
    EXPECT_TRUE(delegate.events.empty());

    button.SetButtonEnabled(true);
    EXPECT_EQ(Shown(), kPressed);
    touch::Press(button, QPoint(5, 5));
    touch::Release(button, QPoint(5, 5));
    EXPECT_EQ(actions.actions.size(), 1u);
    EXPECT_FALSE(button.IsPressed());
    EXPECT_EQ(Shown(), kNormal);
}

TEST_F(TivButtonTest, ChildTouchesActOnTheButtonAndAreForwardedAsTheButtons) {
    TouchRecorder delegate;
    button.AddTouchEventDelegate(&delegate);
    auto* caption = new TivLabel;
    caption->setGeometry(10, 5, 20, 10);
    button.AddControl(*caption);
    EXPECT_EQ(caption->parentWidget(), &button);
    EXPECT_FALSE(caption->isHidden());

    touch::Press(*caption, QPoint(2, 2));
    EXPECT_TRUE(button.IsPressed());
    touch::Move(*caption, QPoint(3, 3));
    touch::Release(*caption, QPoint(3, 3));
    ASSERT_EQ(actions.actions.size(), 1u);
    EXPECT_EQ(actions.actions[0].source, &button);
    ASSERT_EQ(delegate.events.size(), 3u);
    for (const auto& [kind, source] : delegate.events) EXPECT_EQ(source, &button) << kind;
}

TEST_F(TivButtonTest, DestroyedActionDelegateIsForgotten) {
    auto gone = std::make_unique<ActionRecorder>();
    button.AddActionEventDelegate(gone.get());
    gone.reset();
    touch::Tap(button, QPoint(5, 5));  // must not call the destroyed delegate
    EXPECT_FALSE(button.IsPressed());
}

TEST_F(TivButtonTest, InitializeResetsEverything) {
    SetAllPictures();
    button.SetButtonEnabled(false);
    button.Initialize(QRect(10, 20, 40, 20));
    EXPECT_EQ(button.geometry(), QRect(10, 20, 40, 20));
    EXPECT_TRUE(button.IsButtonEnabled());
    EXPECT_EQ(button.GetActionId(), 0);
    EXPECT_EQ(Shown().alpha(), 0);
    touch::Tap(button, QPoint(5, 5));
    EXPECT_TRUE(actions.actions.empty());  // the delegate was cleared too
}

}  // namespace
