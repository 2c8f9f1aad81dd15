#pragma once

#include <QWidget>

#include "DelegatePointer.h"
#include "ITouchEventListener.h"
#include "TivSLiderChangedListner.h"

class TivImagePanel;

// A horizontal percentage slider made of three pictures: the track ("sliderBlack.png"),
// the fill left of the knob ("sliderGreen.png") and the knob ("sliderButton.png").
//
// The knob runs from x 0 to (slider width - knob width); a position p in 0..100 puts it
// at trunc((width - knob width) * p / 100) and the fill is 2 pixels wider than that, so
// its end hides under the knob. Dragging the knob reports the new position to the
// listener; SetValue does not. The track is full width, so its picture should be at
// least as wide as the slider (the artwork is 440 wide).
class TivSlider : public QWidget, public ITouchEventListener {
    Q_OBJECT
public:
    explicit TivSlider(QWidget* parent = nullptr);

    // Places the slider and builds its pictures with the knob at `value` (0..100).
    // Always true; missing pictures leave empty parts.
    bool Initialize(const QRect& bounds, int value);
    // Moves the knob to `value` (clamped to 0..100) without telling the listener.
    void SetValue(int value);
    // Not owned; may be null.
    void SetListener(TivSLiderChangedListner* listener) { listener_.Set(listener); }

    const TivImagePanel* GetKnob() const { return knob_; }
    const TivImagePanel* GetFill() const { return fill_; }
    const TivImagePanel* GetTrack() const { return track_; }

    void OnTouchMoved(const QWidget& source, const QPoint& point,
                      const TouchEventInfo& info) override;

private:
    int KnobTravel() const;
    void PlaceKnob(int x);

    TivImagePanel* track_ = nullptr;
    TivImagePanel* fill_ = nullptr;
    TivImagePanel* knob_ = nullptr;
    DelegatePointer<TivSLiderChangedListner> listener_;
};
