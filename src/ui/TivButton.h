#pragma once

#include <QPixmap>
#include <QPointer>
#include <QWidget>
#include <optional>

#include "DelegatePointer.h"
#include "IActionEventListener.h"
#include "IRescalable.h"
#include "ITouchEventListener.h"

// A picture button: normal, pressed and disabled pictures, an action id, and an action
// delegate told on release.
//
// The button is its own touch listener and becomes the touch listener of every child
// added with AddControl, so a tap on a caption laid over the button acts on the button.
// Touches are forwarded to the touch delegate naming the button as their source. A
// release fires the action wherever the finger is lifted: a tap that slides off still
// counts. While disabled (SetButtonEnabled(false)) the button ignores touches; it stays
// a live QWidget so that it keeps receiving them.
class TivButton : public QWidget, public ITouchEventListener, public IRescalable {
    Q_OBJECT
public:
    explicit TivButton(QWidget* parent = nullptr);

    // Places the button and resets it: not pressed, enabled, no pictures, no delegates,
    // action id 0. Always 0 (success).
    int Initialize(const QRect& bounds);

    // Each setter keeps its own copy of the picture; null clears it.
    void SetNormalBitmap(const QPixmap* bitmap);
    void SetPressedBitmap(const QPixmap* bitmap);
    void SetDisabledBitmap(const QPixmap* bitmap);
    // The named picture, and as the pressed picture its "-pressed" twin (the same name
    // with "-pressed" before ".png"). The picture is rendered when the button is first
    // painted and its twin when it is first pressed, so that a screen full of buttons
    // opens quickly, and one opened beneath another draws nothing. An empty name clears both.
    void SetPictures(const QString& picture);

    void SetActionId(int actionId) { actionId_ = actionId; }
    int GetActionId() const { return actionId_; }
    // Not owned; may be null. A delegate that is a QObject is forgotten when destroyed.
    void AddActionEventDelegate(IActionEventListener* listener) { actionDelegate_.Set(listener); }
    void AddTouchEventDelegate(ITouchEventListener* listener) { touchDelegate_.Set(listener); }
    // Remembers the container the button belongs to. Informational only: it does not
    // reparent the widget (the QWidget parent does that).
    void SetParent(QWidget* container) { container_ = container; }
    QWidget* GetParentContainer() const { return container_; }

    // Stores the state and redraws. A disabled button shows its disabled picture (or,
    // without one, nothing), and keeps its pressed state until enabled and released.
    void SetButtonEnabled(bool enabled);
    bool IsButtonEnabled() const { return enabled_; }
    bool IsPressed() const { return pressed_; }

    // Makes `child` part of the button: the button listens to its touches, then adopts
    // and shows it (unless it was explicitly hidden).
    void AddControl(QWidget& child);

    void OnTouchPressed(const QWidget& source, const QPoint& point,
                        const TouchEventInfo& info) override;
    void OnTouchLongPressed(const QWidget& source, const QPoint& point,
                            const TouchEventInfo& info) override;
    void OnTouchReleased(const QWidget& source, const QPoint& point,
                         const TouchEventInfo& info) override;
    void OnTouchMoved(const QWidget& source, const QPoint& point,
                      const TouchEventInfo& info) override;
    void OnTouchDoublePressed(const QWidget& source, const QPoint& point,
                              const TouchEventInfo& info) override;
    void OnTouchFocusIn(const QWidget& source, const QPoint& point,
                        const TouchEventInfo& info) override;
    void OnTouchFocusOut(const QWidget& source, const QPoint& point,
                         const TouchEventInfo& info) override;

    // Renders the pictures again at the new scale.
    void OnRescaled(double from, double to) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    static void Copy(std::optional<QPixmap>& target, const QPixmap* source);
    // Notes whether a picture drawn at `drawn` was made for the whole button.
    void NoteDrawnSize(const QSize& drawn);
    // Renders the pictures again at the button's size when they fill it and it changed.
    void FitPictures();
    // Renders the picture `name` still names into `target` (see SetPictures).
    void RenderPending(QString& name, std::optional<QPixmap>& target);

    QPointer<QWidget> container_;
    bool pressed_ = false;
    bool enabled_ = true;
    std::optional<QPixmap> normal_;
    QString normalName_;         // the normal picture still to render, see SetPictures
    bool picturesFill_ = false;  // the normal picture was made for the whole button
    std::optional<QPixmap> pressedBitmap_;
    QString pressedName_;  // the pressed picture still to render, see SetPictures
    std::optional<QPixmap> disabled_;
    DelegatePointer<ITouchEventListener> touchDelegate_;
    DelegatePointer<IActionEventListener> actionDelegate_;
    int actionId_ = 0;
};
