#pragma once

#include "SettingsScreen.h"

// The body goals: desired chest, waist, hips and weight, each shown in the user's units
// or as not set. A tap opens the entry screen ("body-goal-chest", ..., "body-goal-weight");
// a goal that is set has a row below it that clears it (the goals record keeps -1, and
// the body screen stops drawing its line). Writes the goals record (SaveTagets) at once.
// Opened by the body screen's "Goals" and by "settings-goals". GUI thread only.
class SettingsTarget : public SettingsScreen {
    Q_OBJECT
public:
    // Goal i (chest, waist, hips, weight) opens with ID_FIRST_GOAL + i and is cleared
    // with ID_FIRST_CLEAR + i.
    static constexpr int ID_FIRST_GOAL = 200;
    static constexpr int ID_FIRST_CLEAR = 210;
    static constexpr int kGoals = 4;

    explicit SettingsTarget(QWidget* parent = nullptr);
    bool Initialize();
    void OnActionPerformed(const QWidget& source, int actionId) override;

protected:
    QString TitleText() const override;
    void Fill(SettingsPanel& panel) override;
};
