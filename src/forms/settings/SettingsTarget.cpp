#include "SettingsTarget.h"

#include "BodyValueText.h"
#include "DAOTarget.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "ScreenDirectory.h"
#include "SettingsPanel.h"
#include "SoundsManager.h"

namespace {
struct Goal {
    const char* textKey;
    const char* clearKey;
    const char* screen;
    double DAOTarget::*field;
};

const Goal kGoalRows[SettingsTarget::kGoals] = {
    {"more__ Desired chest", "settings__ Clear desired chest", "body-goal-chest",
     &DAOTarget::chest},
    {"more__ Desired waist", "settings__ Clear desired waist", "body-goal-waist",
     &DAOTarget::waist},
    {"more__ Desired hips", "settings__ Clear desired hips", "body-goal-hips", &DAOTarget::hips},
    {"more__ Weight target", "settings__ Clear weight target", "body-goal-weight",
     &DAOTarget::wheight},
};
}  // namespace

SettingsTarget::SettingsTarget(QWidget* parent) : SettingsScreen(parent) {}

bool SettingsTarget::Initialize() {
    setObjectName(QStringLiteral("SettingsTarget"));
    return true;
}

QString SettingsTarget::TitleText() const {
    return Text("more__ Body targets");
}

void SettingsTarget::Fill(SettingsPanel& panel) {
    const DAOTarget& goals = DAOTarget::GetInstance();
    const bool imperial = PedometerOptions::GetInstance().measurementSystem;
    for (int i = 0; i < kGoals; ++i) {
        const double value = goals.*kGoalRows[i].field;
        const bool set = value > 0.0;
        QString shown = Text("settings__ not set");
        if (set) {
            shown = kGoalRows[i].field == &DAOTarget::wheight
                        ? BodyValueText::Weight(value, imperial)
                        : BodyValueText::Length(value, imperial);
        }
        panel.AddValueRow(Text(kGoalRows[i].textKey), shown, ID_FIRST_GOAL + i, this);
        if (set) panel.AddRowButton(Text(kGoalRows[i].clearKey), ID_FIRST_CLEAR + i, this);
    }
}

void SettingsTarget::OnActionPerformed(const QWidget& source, int actionId) {
    if (actionId >= ID_FIRST_GOAL && actionId < ID_FIRST_GOAL + kGoals) {
        SoundsManager::GetInstance().ClickSound();
        Open(QString::fromUtf8(kGoalRows[actionId - ID_FIRST_GOAL].screen));
        return;
    }
    if (actionId >= ID_FIRST_CLEAR && actionId < ID_FIRST_CLEAR + kGoals) {
        SoundsManager::GetInstance().ClickSound();
        DAOTarget::GetInstance().*kGoalRows[actionId - ID_FIRST_CLEAR].field = -1.0;
        PedometerDBManager::GetInstance().SaveTagets();
        Refill();
        return;
    }
    SettingsScreen::OnActionPerformed(source, actionId);
}

PEDOMETER_SCREEN("settings-goals", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* form = new SettingsTarget;
    form->Initialize();
    return form;
});
