#pragma once

#include "BodyEntryForm.h"

// Entry of the user's age in years (5 to 120), written to the body profile. Opened by the settings' profile screen ("age").
// GUI thread only.
class AgeForm : public BodyEntryForm {
    Q_OBJECT
public:
    explicit AgeForm(QWidget* parent = nullptr);
    // Always true.
    bool Initialize();

protected:
    QString TitleText() const override;
    QString PromptText() const override;
    void BuildRow() override;
    EntryRange Range() const override;
    void Save(double value) override;
};
