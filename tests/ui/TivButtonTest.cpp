#include "TivButton.h"

#include <gtest/gtest.h>

#include <QMap>
#include <QPixmap>
#include <memory>

#include "IActionEventListener.h"
#include "TestData.h"
#include "TivLabel.h"
#include "TivUtils.h"
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

// The disabled picture is drawn last, over the pressed one; without pressed or disabled
// pictures the normal one stands in while pressed, and a disabled button draws nothing.
TEST_F(TivButtonTest, DrawsThePictureOfItsState) {
    const QMap<QByteArray, QColor> colours{{"normal", kNormal},
                                           {"pressed", kPressed},
                                           {"disabled", kDisabled},
                                           {"none", QColor(0, 0, 0, 0)}};
    for (const QByteArrayList& c : testdata::Table("button-pictures.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        button.Initialize(QRect(0, 0, 40, 20));
        if (c[0] == "all") SetAllPictures();
        const QPixmap normal = Solid(kNormal);
        button.SetNormalBitmap(&normal);
        if (c[1] == "1") touch::Press(button, QPoint(5, 5));
        button.SetButtonEnabled(c[2] == "1");
        EXPECT_EQ(Shown().alpha() == 0 ? colours["none"] : Shown(), colours.value(c[3]));
    }
}

// A release fires the action wherever the finger is lifted; a button disabled while pressed
// stays pressed, ignores and does not forward touches until enabled and released again.
TEST_F(TivButtonTest, ReleaseFiresTheActionButNotWhileDisabled) {
    TouchRecorder delegate;
    button.AddTouchEventDelegate(&delegate);
    touch::Press(button, QPoint(5, 5));
    EXPECT_TRUE(button.IsPressed());
    EXPECT_TRUE(actions.actions.empty());
    touch::Move(button, QPoint(300, 200));
    touch::Release(button, QPoint(300, 200));
    EXPECT_FALSE(button.IsPressed());
    ASSERT_EQ(actions.actions.size(), 1u);
    EXPECT_EQ(actions.actions[0].source, &button);
    EXPECT_EQ(actions.actions[0].id, 7);

    touch::Press(button, QPoint(5, 5));
    delegate.events.clear();
    button.SetButtonEnabled(false);
    touch::Release(button, QPoint(5, 5));
    EXPECT_TRUE(button.IsPressed());
    touch::Press(button, QPoint(5, 5));
    touch::Move(button, QPoint(6, 6));
    touch::Release(button, QPoint(6, 6));
    EXPECT_EQ(actions.actions.size(), 1u);
    EXPECT_TRUE(delegate.events.empty());

    button.SetButtonEnabled(true);
    touch::Press(button, QPoint(5, 5));
    touch::Release(button, QPoint(5, 5));
    EXPECT_EQ(actions.actions.size(), 2u);
    EXPECT_FALSE(button.IsPressed());
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

// A named picture is drawn once the button paints; one made for the whole button keeps
// filling it when a layout stretches the button, one made smaller stays its own size.
TEST_F(TivButtonTest, NamedPictureIsDrawnAndStretchesOnlyWhenMadeForTheButton) {
    const QSize drawn = TivUtils::ScaledSize(QStringLiteral("btn-red.png"));
    ASSERT_FALSE(drawn.isEmpty());
    for (const int madeWider : {0, 1}) {
        SCOPED_TRACE(madeWider);
        button.Initialize(QRect(QPoint(0, 0), drawn + QSize(madeWider * 100, 0)));
        button.SetPictures(QStringLiteral("btn-red.png"));
        EXPECT_GT(touch::PixelAt(button, QPoint(drawn.width() / 2, drawn.height() / 2)).alpha(), 0);
        button.resize(drawn.width() * 2 + 100, drawn.height());
        const QPoint farRight(drawn.width() * 2, drawn.height() / 2);
        EXPECT_EQ(touch::PixelAt(button, farRight).alpha() > 0, madeWider == 0);
    }
}
