#pragma once

#include <QRect>
#include <QString>

class IActionEventListener;
class QWidget;
class TivButton;

// Makes the body screens' text buttons (Save, Export, OK): a 200 x 72 picture button
// ("btn-green.png", "btn-blue.png" with their "-pressed" pictures) with a bold caption
// that is part of the button. GUI thread only.
class CaptionButton {
public:
    // A button owned by `parent` with its top-left at `at` (already scaled), reporting
    // `actionId` to `listener` (not owned).
    static TivButton* Create(QWidget* parent, const QString& picture, const QPoint& at,
                             int actionId, IActionEventListener* listener, const QString& caption);
    // The button's size in the current layout.
    static QSize Size();
};
