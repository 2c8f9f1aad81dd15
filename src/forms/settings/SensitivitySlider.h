#pragma once

#include <QWidget>
#include <functional>

#include "TivSLiderChangedListner.h"

class TivLabel;
class TivSlider;

// One gait's sensitivity (1 walk, 2 jog, 3 run): a caption in the gait's meter colour,
// the slider and its position. Dragging writes the threshold the position stands for
// (Body::WalkCoefForSlider and the others) into the body profile, saves it at once and
// tells `changed`. A detector reads its thresholds when it is made, so the new value
// counts from the next start of the application. GUI thread only.
class SensitivitySlider : public QWidget, public TivSLiderChangedListner {
    Q_OBJECT
public:
    static QColor GaitColor(int gait);
    // The body profile's threshold for `gait` and the slider position closest to it
    // (0..100; a threshold outside the slider's range gives its nearer end).
    static double Threshold(int gait);
    static int PositionFor(int gait, double threshold);
    static double ThresholdFor(int gait, int position);

    SensitivitySlider(int gait, std::function<void()> changed, QWidget* parent = nullptr);
    // Builds the controls for the current size.
    void Initialize();

    void SliderValueChanged(int value) override;
    TivSlider* GetSlider() const { return slider_; }

private:
    int gait_;
    std::function<void()> changed_;
    TivSlider* slider_ = nullptr;
    TivLabel* position_ = nullptr;
};
