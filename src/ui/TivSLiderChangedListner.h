#pragma once

// Told when the user drags a TivSlider's knob; `value` is the new position, 0 to 100.
class TivSLiderChangedListner {
public:
    virtual ~TivSLiderChangedListner() = default;
    virtual void SliderValueChanged(int value) = 0;
};
