#pragma once

// Real mouse events for widget tests, sent straight to the widget as a touch would reach
// the control holding it (a release can land outside the widget).
#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QWidget>

namespace touch {

inline bool Send(QWidget& widget, QEvent::Type type, const QPoint& pos, Qt::MouseButtons held) {
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, QPointF(pos), QPointF(widget.mapToGlobal(pos)), button, held,
                      Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
    return event.isAccepted();
}
inline bool Press(QWidget& w, const QPoint& pos) {
    return Send(w, QEvent::MouseButtonPress, pos, Qt::LeftButton);
}
inline bool DoubleClick(QWidget& w, const QPoint& pos) {
    return Send(w, QEvent::MouseButtonDblClick, pos, Qt::LeftButton);
}
inline bool Move(QWidget& w, const QPoint& pos) {
    return Send(w, QEvent::MouseMove, pos, Qt::LeftButton);
}
inline bool Release(QWidget& w, const QPoint& pos) {
    return Send(w, QEvent::MouseButtonRelease, pos, Qt::NoButton);
}
inline void Tap(QWidget& w, const QPoint& pos) {
    Press(w, pos);
    Release(w, pos);
}

// Runs the event loop for `ms` milliseconds (timers fire, deleteLater happens).
inline void Wait(int ms) {
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < ms) {
        QApplication::processEvents(QEventLoop::AllEvents, 5);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

// What the widget and its children draw now, over transparency: a pixel it leaves
// alone has alpha 0.
inline QImage Render(QWidget& w) {
    QImage image(w.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    w.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}
inline QColor PixelAt(QWidget& w, const QPoint& pos) {
    return Render(w).pixelColor(pos);
}

}  // namespace touch
