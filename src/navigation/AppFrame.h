#pragma once

#include <QPointer>
#include <QVector>
#include <QWidget>

#include "KeyCode.h"
#include "Timer.h"

class SoftkeyBar;
class TivForm;

// The application's one window: it holds the forms, shows the current one above a
// bottom soft-key bar, and turns the keyboard into the phone's keys.
//
// The window takes any size from 320 x 480 up; it starts at ScreenSize(). Its size sets
// the layout's scale (ReferenceLayout::ScaleFor): the soft-key bar and the forms fill a
// column as wide as the scaled reference layout, centred on the background in a wide
// window, the forms the client area above the bar. Every resize lays out every held form
// again (ReferenceLayout::Apply), keeping the stack and each form's state.
// Keys go to the current form:
//   Escape, Backspace, Back     -> the form's back listener (nothing without one)
//   Menu, F1                    -> the form's option key
//   Volume Up, Page Up, '+'     -> side key up   (KEY_SIDE_UP)
//   Volume Down, Page Down, '-' -> side key down (KEY_SIDE_DOWN)
// A side key gives OnKeyPressed at once, OnKeyLongPressed when still held after
// kLongPressMs (on the Timer, so tests can use virtual time) and OnKeyReleased; the
// keyboard's auto-repeat is ignored. A key that a focused child (a text field) takes
// never reaches the frame.
//
// Forms: AddControl adopts a form (hidden) and calls its OnInitializing() the first
// time; SetCurrentForm shows it and hides the others; RemoveControl calls the form's
// OnTerminating(), hides it and destroys it with deleteLater(). Removing is therefore
// safe from inside the form's own callbacks (its back key, a button of its own): the
// form is gone once control returns to the event loop. Forms still held when the
// frame is destroyed are terminated and deleted with it, newest first.
class AppFrame : public QWidget {
    Q_OBJECT
public:
    static constexpr int WVGA_HEIGHT = 800;
    static constexpr int HVGA_HEIGHT = 480;
    static constexpr QSize kSmallestSize{320, 480};
    // The application's window on a desktop: a phone's proportions, a little taller.
    static constexpr QSize kDesktopSize{480, 860};
    static constexpr int kLongPressMs = 600;

    explicit AppFrame(QWidget* parent = nullptr);
    ~AppFrame() override;

    // The window's first size: 480 x 800, or 320 x 480 with the 320-wide start-up layout.
    static QSize ScreenSize();
    // The first size of windows made from now on (the command line's --size); an empty
    // size goes back to ScreenSize().
    static void SetStartSize(const QSize& size);
    // Reads "WxH" of at least kSmallestSize; false (and `size` untouched) otherwise.
    static bool ParseSize(const QString& text, QSize* size);

    void AddControl(TivForm& form);
    void RemoveControl(TivForm& form);
    void SetCurrentForm(TivForm& form);
    TivForm* GetCurrentForm() const { return current_; }
    // Repaints the current form and the bar.
    void RequestRedraw(bool show = true);

    // Lays the form's controls out for the window again: after it built more of them.
    void PlaceForm(TivForm& form);
    bool HasControl(const TivForm& form) const;
    int GetControlCount() const;
    // Where forms sit: everything above the soft-key bar.
    QRect GetClientAreaBounds() const;
    SoftkeyBar& GetSoftkeyBar() const { return *bar_; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    // Takes the scale and the column from the window's size and places the bar and forms.
    void Relayout();
    static QSize& StartSize();
    static KeyCode SideKeyOf(const QKeyEvent& event);
    void OnSoftkey(int softkey);
    void OnOptionkey();
    void OnBackKey();
    void OnLongPress();

    QVector<QPointer<TivForm>> forms_;
    QPointer<TivForm> current_;
    SoftkeyBar* bar_ = nullptr;
    QRect client_;
    Timer longPressTimer_;
    KeyCode heldKey_ = KEY_INVALID;
    QPointer<TivForm> heldForm_;
};
