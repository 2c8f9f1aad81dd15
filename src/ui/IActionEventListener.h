#pragma once

class QWidget;

// Told when a control is activated (a button released, a menu item chosen). Screens
// tell their controls apart by the numeric action id they gave each one.
class IActionEventListener {
public:
    virtual ~IActionEventListener() = default;
    virtual void OnActionPerformed(const QWidget& source, int actionId) = 0;
};
