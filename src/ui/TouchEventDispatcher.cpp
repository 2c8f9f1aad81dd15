#include "TouchEventDispatcher.h"

#include <QEvent>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWidget>

TouchEventDispatcher::TouchEventDispatcher(QWidget& control)
    : QObject(&control), control_(control) {
    setObjectName(QStringLiteral("TouchEventDispatcher"));
    longPressTimer_.setSingleShot(true);
    connect(&longPressTimer_, &QTimer::timeout, this, &TouchEventDispatcher::OnLongPressTimeout);
    control.installEventFilter(this);
}

TouchEventDispatcher* TouchEventDispatcher::Find(const QWidget& control) {
    return control.findChild<TouchEventDispatcher*>(QString(), Qt::FindDirectChildrenOnly);
}

void TouchEventDispatcher::AddTouchEventListener(QWidget& control, ITouchEventListener& listener) {
    TouchEventDispatcher* dispatcher = Find(control);
    if (dispatcher == nullptr) dispatcher = new TouchEventDispatcher(control);
    if (HasTouchEventListener(control, listener)) return;
    dispatcher->listeners_.append(DelegatePointer<ITouchEventListener>(&listener));
}

void TouchEventDispatcher::RemoveTouchEventListener(QWidget& control,
                                                    ITouchEventListener& listener) {
    TouchEventDispatcher* dispatcher = Find(control);
    if (dispatcher == nullptr) return;
    dispatcher->listeners_.removeIf(
        [&](const DelegatePointer<ITouchEventListener>& e) { return e.Address() == &listener; });
}

bool TouchEventDispatcher::HasTouchEventListener(const QWidget& control,
                                                 const ITouchEventListener& listener) {
    const TouchEventDispatcher* dispatcher = Find(control);
    if (dispatcher == nullptr) return false;
    for (const DelegatePointer<ITouchEventListener>& e : dispatcher->listeners_) {
        if (e.Address() == &listener && !e.IsGone()) return true;
    }
    return false;
}

bool TouchEventDispatcher::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &control_) return false;
    switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseMove:
            return HandleMouse(*static_cast<QMouseEvent*>(event));
        case QEvent::Hide:
            // A control hidden mid-touch forgets it; the release will not come here.
            down_ = false;
            longPressTimer_.stop();
            return false;
        default:
            return false;
    }
}

bool TouchEventDispatcher::HandleMouse(QMouseEvent& event) {
    listeners_.removeIf([](const DelegatePointer<ITouchEventListener>& e) { return e.IsGone(); });
    if (listeners_.isEmpty()) return false;
    event.accept();
    const QPoint point = event.position().toPoint();
    switch (event.type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick: {
            if (event.button() != Qt::LeftButton) return true;
            down_ = true;
            inside_ = true;
            start_ = point;
            last_ = point;
            longPressTimer_.start(QGuiApplication::styleHints()->mousePressAndHoldInterval());
            if (!Notify(Kind::Pressed, point)) return true;
            if (event.type() == QEvent::MouseButtonDblClick) Notify(Kind::DoublePressed, point);
            return true;
        }
        case QEvent::MouseMove: {
            if (!down_) return true;
            last_ = point;
            if ((point - start_).manhattanLength() >=
                QGuiApplication::styleHints()->startDragDistance())
                longPressTimer_.stop();
            const bool inside = control_.rect().contains(point);
            if (inside != inside_) {
                inside_ = inside;
                if (!Notify(inside ? Kind::FocusIn : Kind::FocusOut, point)) return true;
            }
            Notify(Kind::Moved, point);
            return true;
        }
        case QEvent::MouseButtonRelease: {
            if (event.button() != Qt::LeftButton || !down_) return true;
            down_ = false;
            longPressTimer_.stop();
            last_ = point;
            Notify(Kind::Released, point);
            return true;
        }
        default:
            return false;
    }
}

void TouchEventDispatcher::OnLongPressTimeout() {
    if (down_) Notify(Kind::LongPressed, last_);
}

bool TouchEventDispatcher::Notify(Kind kind, const QPoint& point) {
    // A listener may remove listeners or delete the control (and so this dispatcher):
    // walk a copy and stop as soon as the control is gone.
    const QPointer<QWidget> alive(&control_);
    const QVector<DelegatePointer<ITouchEventListener>> listeners = listeners_;
    const TouchEventInfo info(start_, point);
    for (const DelegatePointer<ITouchEventListener>& e : listeners) {
        ITouchEventListener* listener = e.Get();
        if (listener == nullptr) continue;
        ITouchEventListener& l = *listener;
        switch (kind) {
            case Kind::Pressed:
                l.OnTouchPressed(control_, point, info);
                break;
            case Kind::LongPressed:
                l.OnTouchLongPressed(control_, point, info);
                break;
            case Kind::Released:
                l.OnTouchReleased(control_, point, info);
                break;
            case Kind::Moved:
                l.OnTouchMoved(control_, point, info);
                break;
            case Kind::DoublePressed:
                l.OnTouchDoublePressed(control_, point, info);
                break;
            case Kind::FocusIn:
                l.OnTouchFocusIn(control_, point, info);
                break;
            case Kind::FocusOut:
                l.OnTouchFocusOut(control_, point, info);
                break;
        }
        if (alive.isNull()) return false;
    }
    return true;
}
