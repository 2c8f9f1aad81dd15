#pragma once

#include <QPoint>

#include "TouchEventInfo.h"

class QWidget;

// Receives the touches of the controls it is registered with (TouchEventDispatcher).
//
// `source` is the control that was touched, `point` the finger's position in its
// coordinates. Every callback does nothing by default, so a listener overrides only
// what it needs.
class ITouchEventListener {
public:
    virtual ~ITouchEventListener() = default;

    virtual void OnTouchPressed(const QWidget& /*source*/, const QPoint& /*point*/,
                                const TouchEventInfo& /*info*/) {}
    virtual void OnTouchLongPressed(const QWidget& /*source*/, const QPoint& /*point*/,
                                    const TouchEventInfo& /*info*/) {}
    virtual void OnTouchReleased(const QWidget& /*source*/, const QPoint& /*point*/,
                                 const TouchEventInfo& /*info*/) {}
    virtual void OnTouchMoved(const QWidget& /*source*/, const QPoint& /*point*/,
                              const TouchEventInfo& /*info*/) {}
    virtual void OnTouchDoublePressed(const QWidget& /*source*/, const QPoint& /*point*/,
                                      const TouchEventInfo& /*info*/) {}
    // The finger, still down, came back over the control / left it.
    virtual void OnTouchFocusIn(const QWidget& /*source*/, const QPoint& /*point*/,
                                const TouchEventInfo& /*info*/) {}
    virtual void OnTouchFocusOut(const QWidget& /*source*/, const QPoint& /*point*/,
                                 const TouchEventInfo& /*info*/) {}
};
