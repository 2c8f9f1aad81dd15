#pragma once

#include <QPoint>

// Where the current touch began and where the finger is now, both in the coordinates of
// the control that was touched (the one holding the touch, even after the finger left it).
class TouchEventInfo {
public:
    TouchEventInfo() = default;
    TouchEventInfo(const QPoint& start, const QPoint& current) : start_(start), current_(current) {}

    QPoint GetStartPosition() const { return start_; }
    QPoint GetCurrentPosition() const { return current_; }

private:
    QPoint start_;
    QPoint current_;
};
