#pragma once

#include "BodyEntryForm.h"

// Entry of a weight as a whole number and a fraction: kilograms and grams in metric
// (the grams field is labelled "g", so "5" is visibly 5 g), pounds and tenths in
// imperial; from 20 to 400 kg (44.1 to 881.8 lb). Mode 1000 writes
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
    EntryRange Range() const override;
    int FractionScale() const override;
    void Save(double value) override;

private:
    int mode_ = 0;
};
