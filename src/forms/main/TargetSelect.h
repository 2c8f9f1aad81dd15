#pragma once

#include <QPointer>
#include <memory>

#include "GoalFieldRow.h"
#include "PedometerForm.h"

#include <QLineEdit>
class TargetSlider;
#include "TivLabel.h"

// The daily-goal screen: tabs choose the kind of goal (off, distance, calories,
// activity, steps), fields below edit its target, and the goal slider shows today's
// progress.
//
// Every change is stored in DAOTarget and saved at once (SaveTagets). Targets have
// floors: 10 kcal, 5 minutes, 0.1 km (or 0.1 mile), 100 steps; a field left empty
// counts as 0 and so gets the floor. A field's value is taken when its editing finishes (Enter, or
// the focus leaving it, for instance to a tab).
class TargetSelect : public PedometerForm {
    Q_OBJECT
public:
    // Tab action ids; the kind stored is the id minus ID_OFF.
    static constexpr int ID_OFF = 100;
    static constexpr int ID_DISTANCE = 101;
    static constexpr int ID_CALORIES = 102;
    static constexpr int ID_ACTIVITY = 103;
    static constexpr int ID_STEPS = 104;

    explicit TargetSelect(QWidget* parent = nullptr);

    // Names the screen. Always true.
    bool Initialize();
    void OnInitializing() override;
    // Today's totals may have grown since the screen was last shown.
    void FormWillAppear() override;

    // Rebuilds the target fields for the goal's kind and refreshes the progress.
    void ReloadControls();
    void OnActionPerformed(const QWidget& source, int actionId) override;
    // A field's editing finished: apply the floors, store and save the target.
    void OnTextValueChanged(const QWidget& control);
    void OnTextValueChangeCanceled(const QWidget& control);

    TargetSlider* GetTargetSlider() const { return slider_; }
    // The calorie, activity or steps field; null for other kinds.
    QLineEdit* GetValueField() const { return valueField_; }
    // The distance fields: whole part and fraction; null for other kinds.
    QLineEdit* GetWholeField() const { return wholeField_; }
    QLineEdit* GetFractionField() const { return fractionField_; }
    // What choosing a goal does; shown only while the goal is off.
    TivLabel* GetHintLabel() const { return hintLabel_; }

private:
    QWidget* content_ = nullptr;
    std::unique_ptr<GoalFieldRow> row_;
    TargetSlider* slider_ = nullptr;
    QPointer<QLineEdit> valueField_;
    QPointer<QLineEdit> wholeField_;
    QPointer<QLineEdit> fractionField_;
    QPointer<TivLabel> hintLabel_;
};
