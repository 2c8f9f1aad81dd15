#pragma once

#include "SettingsScreen.h"

// The user's body profile ("more__ My profile"): sex (a tap switches it), age, height
// and weight, and the walk, jog and run step lengths. The step lengths show the value
// worked out from the height, marked automatic, until the user enters one (the walk
// step is marked calibrated when "settings-calibrate" set it); a row opens the
// calibration, the last one puts all three back to automatic. Each other row opens its entry screen ("age",
// "settings-height", "body-weight", "body-step-walk", ...). Writes the body profile
// (SaveBody) at once. Opened by "settings-profile" and the settings menu. GUI thread only.
class SettingsProfile : public SettingsScreen {
    Q_OBJECT
public:
    static constexpr int ID_SEX = 200;
    static constexpr int ID_AGE = 201;
    static constexpr int ID_HEIGHT = 202;
    static constexpr int ID_WEIGHT = 203;
    static constexpr int ID_WALK_STEP = 204;
    static constexpr int ID_JOG_STEP = 205;
    static constexpr int ID_RUN_STEP = 206;
    static constexpr int ID_AUTO_STEPS = 207;
    static constexpr int ID_CALIBRATE = 208;

    explicit SettingsProfile(QWidget* parent = nullptr);
    bool Initialize();
    void OnActionPerformed(const QWidget& source, int actionId) override;

protected:
    QString TitleText() const override;
    void Fill(SettingsPanel& panel) override;
};
