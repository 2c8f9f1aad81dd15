#pragma once

#include "BodyEntryForm.h"

// Entry of the user's height, stored in cm in the body profile: whole centimetres in
// metric, feet and inches in imperial. The fields open on the height in use (172 cm
// while none is set). A height outside 50-272 cm, or inches above 11, is put back to
// what the field showed before. Opened by the profile screen and the main screen's
// "Enter height" ("settings-height"). GUI thread only.
class SettingsHeight : public BodyEntryForm {
    Q_OBJECT
public:
    static constexpr int kMinCm = 50;
    static constexpr int kMaxCm = 272;

    explicit SettingsHeight(QWidget* parent = nullptr);
    bool Initialize();

protected:
    QString TitleText() const override;
    QString PromptText() const override;
    void BuildRow() override;
    void OnTextValueChanged(QLineEdit& field) override;
    void Save() override;

private:
    // The height the fields stand for now, in cm (0 when a field is empty).
    double Entered() const;

    bool imperial_ = false;
    QStringList accepted_;  // each field's last good text
};
