#pragma once

#include <QWidget>

#include "DelegatePointer.h"
#include "IActionEventListener.h"

class TivButton;
class TivLabel;

// A message over the whole screen: a dimmed backdrop, a card with the text and one
// button (or two side by side), which reports its action id to the listener (the screen hides the popup).
// Taps on the backdrop are swallowed. GUI thread only.
class ReportPopup : public QWidget {
    Q_OBJECT
public:
    explicit ReportPopup(QWidget* parent = nullptr);
    // Covers the parent; hidden until Show. The listener is not owned.
    void Initialize(int actionId, const QString& buttonText, IActionEventListener* listener);
    // A second button beside the first (a choice: do it, or not). The listener is not
    // owned.
    void AddSecondButton(int actionId, const QString& buttonText, IActionEventListener* listener);
    // Sets the text, covers the parent and raises itself.
    void Show(const QString& text);
    QString GetText() const;
    int GetActionId() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QRect Card() const;
    void PlaceContent();

    TivLabel* text_ = nullptr;
    TivButton* button_ = nullptr;
    TivButton* second_ = nullptr;
};
