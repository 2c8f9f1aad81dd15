#pragma once

#include "KeyCode.h"

class QWidget;

// Told about the hardware keys while the form it listens to is the current screen
// (TivForm::AddKeyEventListener). `source` is that form. A key held for the long-press
// interval gets OnKeyLongPressed between its press and its release.
class IKeyEventListener {
public:
    virtual ~IKeyEventListener() = default;
    virtual void OnKeyPressed(const QWidget& source, KeyCode keyCode) = 0;
    virtual void OnKeyReleased(const QWidget& source, KeyCode keyCode) = 0;
    virtual void OnKeyLongPressed(const QWidget& source, KeyCode keyCode) = 0;
};
