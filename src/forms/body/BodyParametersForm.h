#pragma once

#include "BodyEntryForm.h"

// Entry of one length as a whole number and tenths, in centimetres or inches: today's
// chest, waist or hips (modes 0-2, written to today's body log row), a step length
// (modes 4-6, walk/jog/run, stored in metres in the body profile) or a desired girth
// (modes 7-9, the goals record). Lengths are always stored metric; any other mode saves
// nothing. The fields open on the value in use, or a typical one.
//
// Opened by the body meter (modes 0-2) and, by name, by the settings screens
// ("body-chest", "body-step-walk", "body-goal-chest", ...). GUI thread only.
class BodyParametersForm : public BodyEntryForm {
    Q_OBJECT
public:
    explicit BodyParametersForm(QWidget* parent = nullptr);
    // Always true.
    bool Initialize(int mode);
    int GetMode() const { return mode_; }

protected:
    QString TitleText() const override;
    QString PromptText() const override;
    void BuildRow() override;
    // Every length, girth or step, from 30 to 250 cm (11.8 to 98.4 in).
    EntryRange Range() const override;
    int FractionScale() const override { return 10; }
    void Save(double value) override;

private:
    // The value shown when the form opens, in cm.
    double InitialValue() const;

    int mode_ = 0;
};
