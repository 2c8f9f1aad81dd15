#pragma once

#include "BodyEntryForm.h"

// Entry of the user's age in years, written to the body profile. An empty or
// non-numeric entry counts as 30. Opened by the settings' profile screen ("age").
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
    // A text that is not a whole number becomes "30".
    void OnTextValueChanged(QLineEdit& field) override;
    void Save() override;
};
