#include "TouchEventDispatcher.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QStyleHints>
#include <memory>

#include "Touch.h"

namespace {

class Log : public QObject, public ITouchEventListener {
public:
    void OnTouchPressed(const QWidget&, const QPoint& p, const TouchEventInfo&) override {
        Add("pressed", p);
    }
    void OnTouchLongPressed(const QWidget&, const QPoint& p, const TouchEventInfo&) override {
        Add("long", p);
    }
    void OnTouchReleased(const QWidget&, const QPoint& p, const TouchEventInfo& info) override {
        Add("released", p);
        start = info.GetStartPosition();
        if (deleteOnRelease != nullptr) deleteOnRelease->deleteLater();
    }
    void OnTouchMoved(const QWidget&, const QPoint& p, const TouchEventInfo&) override {
        Add("moved", p);
    }
    void OnTouchDoublePressed(const QWidget&, const QPoint& p, const TouchEventInfo&) override {
        Add("double", p);
    }
    void OnTouchFocusIn(const QWidget&, const QPoint& p, const TouchEventInfo&) override {
        Add("in", p);
    }
    void OnTouchFocusOut(const QWidget&, const QPoint& p, const TouchEventInfo&) override {
        Add("out", p);
    }
    void Add(const char* kind, const QPoint&) { events << QString::fromLatin1(kind); }

    QStringList events;
    QPoint start;
    QWidget* deleteOnRelease = nullptr;
};

class TouchEventDispatcherTest : public ::testing::Test {
protected:
    void SetUp() override {
        parent.resize(200, 200);
        child = new QWidget(&parent);
        child->setGeometry(10, 10, 50, 50);
        TouchEventDispatcher::AddTouchEventListener(*child, log);
    }

    QWidget parent;
    QWidget* child = nullptr;
    Log log;
};

TEST_F(TouchEventDispatcherTest, MapsMouseEventsToTouchesAndConsumesThem) {
    EXPECT_TRUE(touch::Press(*child, QPoint(5, 5)));
    touch::Move(*child, QPoint(20, 5));
    touch::Move(*child, QPoint(80, 5));  // leaves the control
    touch::Move(*child, QPoint(30, 5));  // and comes back
    touch::Release(*child, QPoint(30, 6));
    EXPECT_EQ(log.events,
              (QStringList{"pressed", "moved", "out", "moved", "in", "moved", "released"}));
    EXPECT_EQ(log.start, QPoint(5, 5));

    // Without a press, moves and releases mean nothing.
    log.events.clear();
    touch::Move(*child, QPoint(1, 1));
    touch::Release(*child, QPoint(1, 1));
    EXPECT_TRUE(log.events.isEmpty());
}

TEST_F(TouchEventDispatcherTest, SecondTapOfADoubleTapIsAlsoAPress) {
    touch::Tap(*child, QPoint(5, 5));
    touch::DoubleClick(*child, QPoint(5, 5));
    touch::Release(*child, QPoint(5, 5));
    EXPECT_EQ(log.events, (QStringList{"pressed", "released", "pressed", "double", "released"}));
}

TEST_F(TouchEventDispatcherTest, HoldingStillIsALongPress) {
    QStyleHints* hints = QGuiApplication::styleHints();
    const int saved = hints->mousePressAndHoldInterval();
    hints->setMousePressAndHoldInterval(30);
    touch::Press(*child, QPoint(5, 5));
    touch::Wait(120);
    touch::Release(*child, QPoint(5, 5));
    touch::Press(*child, QPoint(5, 5));
    touch::Move(*child, QPoint(40, 40));  // dragging cancels the long press
    touch::Wait(120);
    touch::Release(*child, QPoint(40, 40));
    hints->setMousePressAndHoldInterval(saved);
    EXPECT_EQ(log.events.count(QStringLiteral("long")), 1);
}

TEST_F(TouchEventDispatcherTest, ListenersComeAndGo) {
    Log second;
    TouchEventDispatcher::AddTouchEventListener(*child, second);
    TouchEventDispatcher::AddTouchEventListener(*child, second);  // once only
    touch::Tap(*child, QPoint(5, 5));
    EXPECT_EQ(second.events.size(), 2);

    TouchEventDispatcher::RemoveTouchEventListener(*child, second);
    EXPECT_FALSE(TouchEventDispatcher::HasTouchEventListener(*child, second));
    touch::Tap(*child, QPoint(5, 5));
    EXPECT_EQ(second.events.size(), 2);
    EXPECT_EQ(log.events.size(), 4);

    auto gone = std::make_unique<Log>();
    TouchEventDispatcher::AddTouchEventListener(*child, *gone);
    gone.reset();
    touch::Tap(*child, QPoint(5, 5));  // the destroyed listener is skipped
    EXPECT_EQ(log.events.size(), 6);
}

TEST_F(TouchEventDispatcherTest, ListenerMayDeleteTheControl) {
    log.deleteOnRelease = child;
    touch::Tap(*child, QPoint(5, 5));
    touch::Wait(10);
    EXPECT_TRUE(parent.findChildren<QWidget*>().isEmpty());
}

}  // namespace
