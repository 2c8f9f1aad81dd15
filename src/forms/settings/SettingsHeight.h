#pragma once

#include "BodyEntryForm.h"

// Entry of the user's height, stored in cm in the body profile: whole centimetres in
// metric, feet and inches in imperial (inches above 11 carry into feet). The fields open
// on the height in use (172 cm while none is set); heights from 50 to 250 cm are
// accepted. Opened by the profile screen and the main screen's
// "Enter height" ("settings-height"). GUI thread only.
class SettingsHeight : public BodyEntryForm {
    Q_OBJECT
public:
    static constexpr int kMinCm = 50;
    static constexpr int kMaxCm = 250;

    explicit SettingsHeight(QWidget* parent = nullptr);
    bool Initialize();

protected:
    QString TitleText() const override;
    QString PromptText() const override;
    void BuildRow() override;
    // Metric: whole centimetres; imperial: inches (checked as feet * 12 + inches).
    EntryRange Range() const override;
    EntryRange::Reading Read() const override;
    void Save(double value) override;

private:
    bool imperial_ = false;
};
