#include "TapThroughGuard.h"

#include <QCoreApplication>
#include <QEvent>
#include <QInputEvent>
#include <QWidget>

TapThroughGuard::TapThroughGuard(QObject* parent) : QObject(parent) {
    if (QCoreApplication* app = QCoreApplication::instance()) app->installEventFilter(this);
}

TapThroughGuard::~TapThroughGuard() {
    if (QCoreApplication* app = QCoreApplication::instance()) app->removeEventFilter(this);
}

bool TapThroughGuard::eventFilter(QObject* watched, QEvent* event) {
    // Each mouse event reaches the filter once per widget it is offered to (it climbs to
    // the parents when ignored): only the first, the widget under the finger, counts.
    auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr) return false;
    switch (event->type()) {
        case QEvent::MouseButtonPress: {
            const quint64 time = static_cast<QInputEvent*>(event)->timestamp();
            if (!event->spontaneous() || (pressed_ && time == pressTime_)) break;
            pressed_ = widget;
            pressTime_ = time;
            dropRelease_ = false;
            break;
        }
        case QEvent::MouseButtonDblClick:
            if (!event->spontaneous()) break;
            if (pressed_ != widget && !(pressed_ && pressed_->isAncestorOf(widget)) &&
                !(pressed_ && widget->isAncestorOf(pressed_))) {
                dropRelease_ = true;
                return true;
            }
            break;
        case QEvent::MouseButtonRelease:
            if (dropRelease_) {
                dropRelease_ = false;
                return true;
            }
            break;
        default:
            break;
    }
    return false;
}
