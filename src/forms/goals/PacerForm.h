#pragma once

#include <QPointer>
#include <memory>

#include "GoalFieldRow.h"
#include "PedometerForm.h"
#include "TivSLiderChangedListner.h"

#include <QLineEdit>
class TivButton;
class TivImagePanel;
class TivLabel;
class TivSlider;

// The pacer screen: tabs choose the mode (off, speed, pace, step rate), fields set its
// target (whole part and tenths, or steps per minute; off shows a hint instead), two
// check rows switch "silent when standing" and "only when off target", and a slider
// sets how far off counts.
//
// Reads and writes the pacer fields of PedometerOptions; every change is saved at once
// and followed by Metronome::Update(), so a running pacer follows the screen. In miles
// both the speed and the pace are stored through ConvertMilesToKilometers (the same
// distance factor for both). Opened by the main screen's metronome button ("pacer").
class PacerForm : public PedometerForm, public TivSLiderChangedListner {
    Q_OBJECT
public:
    static constexpr int ID_OFF = 100;
    static constexpr int ID_SPEED = 101;
    static constexpr int ID_PACE = 102;
    static constexpr int ID_RATE = 103;
    static constexpr int ID_OFF_ON_STANDING = 104;
    static constexpr int ID_DIFF = 105;

    explicit PacerForm(QWidget* parent = nullptr);

    // Names the screen. Always true.
    bool Initialize();
    void OnInitializing() override;
    // Rebuilds the target fields for the mode and places the slider.
    void ReloadControls();
    void OnActionPerformed(const QWidget& source, int actionId) override;
    // A field's editing finished: store its target, save, update the metronome.
    void OnTextValueChanged(const QWidget& control);
    void SliderValueChanged(int position) override;
    void UpdateSliderLabel();

    QLineEdit* GetWholeField() const { return wholeField_; }
    QLineEdit* GetTenthsField() const { return tenthsField_; }
    // The step-rate field; null in other modes.
    QLineEdit* GetRateField() const { return rateField_; }
    // The line that tells how to get a beat; null unless the pacer is off.
    TivLabel* GetOffHint() const { return offHint_; }
    TivButton* GetCheckRow(int actionId) const;
    TivSlider* GetSlider() const { return slider_; }
    TivLabel* GetSliderLabel() const { return sliderLabel_; }

private:
    TivButton* AddCheckRow(const QString& text, int actionId, int y, bool checked);
    void SetChecked(TivButton& row, bool checked);
    void ShowSlider();

    QWidget* content_ = nullptr;
    std::unique_ptr<GoalFieldRow> row_;
    QPointer<QLineEdit> wholeField_;
    QPointer<QLineEdit> tenthsField_;
    QPointer<QLineEdit> rateField_;
    TivButton* standingRow_ = nullptr;
    TivButton* diffRow_ = nullptr;
    TivSlider* slider_ = nullptr;
    TivLabel* sliderLabel_ = nullptr;
    QPointer<TivLabel> offHint_;
};
