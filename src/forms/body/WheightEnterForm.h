#pragma once

#include "BodyEntryForm.h"

// Entry of a weight as a whole number and a fraction: kilograms and grams (three
// digits, "5" reads as 005) in metric, pounds and tenths in imperial. Mode 1000 writes
// the desired weight (goals record); any other mode writes today's weight to the body
// log and to the body profile. Stored in kilograms; a metric entry gets 0.0001 kg more
// so that 72.500 is never stored just below its decimal form.
//
// Opened by the body meter (mode 3), the main screen's "Enter weight" ("body-weight",
// mode 0) and the settings' weight target ("body-goal-weight", mode 1000). GUI thread only.
class WheightEnterForm : public BodyEntryForm {
    Q_OBJECT
public:
    static constexpr int MODE_DESIRED = 1000;

    explicit WheightEnterForm(QWidget* parent = nullptr);
    // Always true.
    bool Initialize(int mode);
    int GetMode() const { return mode_; }

protected:
    QString TitleText() const override;
    QString PromptText() const override;
    void BuildRow() override;
    // Metric grams are left-padded to three digits, "000" when not a number; a whole
    // part that is not a number is redrawn.
    void OnTextValueChanged(QLineEdit& field) override;
    void Save() override;

private:
    int mode_ = 0;
};
