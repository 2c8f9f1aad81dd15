#pragma once

#include <QWidget>

#include "DelegatePointer.h"
#include "ITouchEventListener.h"

class TivImagePanel;
class TivLabel;
class UnblockListener;

// The screen lock: a transparent pane over the whole main screen that swallows every
// touch, so a phone in a pocket presses no buttons. A horizontal slide of at least
// 200 pixels (in the 480-wide layout), in either direction and starting anywhere on
// the pane, tells the owner to unlock; vertical movement does not count.
//
// It shows the slide picture ("unlock.png") and the caption "SLIDE_TO_UNLOCK"; while
// the finger slides, the picture follows it sideways (up to the unlock distance) and
// springs back when the finger is lifted short of it.
//
// The owner (the main form) makes it, names it "lock", raises and shows it; on unlock
// it calls BlockPane::Dismiss(pane), which also plays the click.
class BlockPane : public QWidget, public ITouchEventListener {
    Q_OBJECT
public:
    static constexpr int kUnlockDistance = 200;  // pixels in the 480-wide layout
    static constexpr int kPictureY = 360;
    // The free part of the track in "unlock.png": right of the knob, left of the arrows.
    static constexpr int kCaptionLeft = 96;
    static constexpr int kCaptionRight = 372;
    static constexpr int kCaptionFontSize = 36;

    explicit BlockPane(QWidget* parent = nullptr);

    // Remembers `form` (not owned; may be null) and covers the screen, (0, 0, 480, 800)
    // in the 480-wide layout, with the picture and the caption. Always true.
    bool Initialize(UnblockListener* form);

    // The unlock rule: a slide of `dx` pixels unlocks when |dx| >= `distance`.
    static bool IsUnlockSlide(long long dx, int distance);
    // The unlock distance in the current layout (200 in the 480-wide one).
    static int UnlockDistance();
    // Takes a pane off the screen: hides it at once (it stops catching touches), has
    // it destroyed once the current event is over, and plays the click. Null is ignored.
    static void Dismiss(QWidget* pane);

    const TivImagePanel* GetPicture() const { return picture_; }
    const TivLabel* GetCaption() const { return caption_; }
    bool IsUnlocked() const { return unlocked_; }

    void OnTouchPressed(const QWidget& source, const QPoint& point,
                        const TouchEventInfo& info) override;
    void OnTouchMoved(const QWidget& source, const QPoint& point,
                      const TouchEventInfo& info) override;
    void OnTouchReleased(const QWidget& source, const QPoint& point,
                         const TouchEventInfo& info) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void SlidePicture(int offset);

    DelegatePointer<UnblockListener> form_;
    TivImagePanel* picture_ = nullptr;
    TivLabel* caption_ = nullptr;
    int pictureX_ = 0;
    bool unlocked_ = false;
};
