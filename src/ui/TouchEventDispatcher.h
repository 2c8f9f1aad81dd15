#pragma once

#include <QObject>
#include <QPoint>
#include <QTimer>
#include <QVector>

#include "DelegatePointer.h"
#include "ITouchEventListener.h"

class QWidget;
class QMouseEvent;

// Turns the mouse events of one widget into touch callbacks for its listeners.
//
// Any widget can have touch listeners: a button listens to itself and to the captions
// laid over it, the lock pane to itself and its label. The first listener added to a
// widget installs a dispatcher (a child object of the widget, filtering its events):
//
//   left press        -> OnTouchPressed; held still for the press-and-hold interval
//                        -> OnTouchLongPressed
//   move while down   -> OnTouchMoved, plus OnTouchFocusOut / OnTouchFocusIn when the
//                        finger crosses the widget's edge
//   release           -> OnTouchReleased (wherever the finger is lifted)
//   double click      -> OnTouchPressed then OnTouchDoublePressed (the second tap of a
//                        double tap still acts as a tap)
//
// A widget with listeners consumes its mouse events, so they do not reach its parent.
// Listeners are not owned. A listener that is also a QObject is dropped automatically
// when it is destroyed; any other listener must outlive the widget or be removed. A
// listener may delete the widget it listens to, preferably with deleteLater().
class TouchEventDispatcher : public QObject {
    Q_OBJECT
public:
    static void AddTouchEventListener(QWidget& control, ITouchEventListener& listener);
    static void RemoveTouchEventListener(QWidget& control, ITouchEventListener& listener);
    static bool HasTouchEventListener(const QWidget& control, const ITouchEventListener& listener);
    // Whether any listener was ever added to the control (it takes touches).
    static bool IsTouched(const QWidget& control) { return Find(control) != nullptr; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Kind { Pressed, LongPressed, Released, Moved, DoublePressed, FocusIn, FocusOut };

    explicit TouchEventDispatcher(QWidget& control);
    static TouchEventDispatcher* Find(const QWidget& control);

    bool HandleMouse(QMouseEvent& event);
    void OnLongPressTimeout();
    // Calls every live listener; false when the control died during a callback.
    bool Notify(Kind kind, const QPoint& point);

    QWidget& control_;
    QVector<DelegatePointer<ITouchEventListener>> listeners_;
    QTimer longPressTimer_;
    bool down_ = false;
    bool inside_ = false;
    QPoint start_;
    QPoint last_;
};
