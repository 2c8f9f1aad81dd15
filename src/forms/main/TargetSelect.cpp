#include "TargetSelect.h"

#include <QLineEdit>
#include <QLocale>
#include <cmath>
#include <tuple>

#include "AppResource.h"
#include "Converter.h"
#include "DAOTarget.h"
#include "EntryRange.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "ScreenDirectory.h"
#include "SoundsManager.h"
#include "TargetSlider.h"
#include "TivLabel.h"
#include "TivUtils.h"

namespace {
// Sizes in the 480-wide layout.
constexpr int kContentGap = 40;      // below the tabs
constexpr int kFieldTop = 24;        // in the content panel
constexpr int kContentHeight = 150;  // the row of fields and some air
constexpr int kSliderHeight = 84;
constexpr int kSliderBar = 28;

}  // namespace

TargetSelect::TargetSelect(QWidget* parent) : PedometerForm(parent) {}

bool TargetSelect::Initialize() {
    setObjectName(QStringLiteral("TargetSelect"));
    return true;
}

void TargetSelect::OnInitializing() {
    SetBackgroundImage(QStringLiteral("MainScreen_bg.png"));
    SetTitleText(AppResource::Text("today_goal__ Today's goal"));
    // The tab of a kind is at the kind's index.
    const int kind = DAOTarget::GetInstance().targetActive;
    GoalFieldRow::AddTabs(*this,
                          {{"pacer__ Off", ID_OFF},
                           {"today_goal__ Distance", ID_DISTANCE},
                           {"today_goal__ Calories_Stopwatch", ID_CALORIES},
                           {"today_goal__ Activity", ID_ACTIVITY},
                           {"today_goal__ Steps", ID_STEPS}},
                          kind >= DAOTarget::DISTANCE && kind <= DAOTarget::STEPS ? kind : 0);
    ShowBackButton();

    const int top = GetClientTop() + TivUtils::Scaled(kContentGap);
    content_ = new QWidget(this);
    content_->setGeometry(0, top, width(), TivUtils::Scaled(kContentHeight));
    content_->show();
    row_ = std::make_unique<GoalFieldRow>(*content_, TivUtils::Scaled(kFieldTop),
                                          [this](QLineEdit& field) { OnTextValueChanged(field); });

    slider_ = new TargetSlider(this);
    const int margin = TivUtils::Scaled(20);
    slider_->setGeometry(margin, top + TivUtils::Scaled(kContentHeight), width() - 2 * margin,
                         TivUtils::Scaled(kSliderHeight));
    slider_->Initialize(TivUtils::Scaled(kSliderBar));
    ReloadControls();
}

void TargetSelect::FormWillAppear() {
    if (slider_ != nullptr) slider_->UpdateData();
}

void TargetSelect::ReloadControls() {
    if (content_ == nullptr) return;
    row_->Clear();
    valueField_ = nullptr;
    wholeField_ = nullptr;
    fractionField_ = nullptr;
    hintLabel_ = nullptr;

    const DAOTarget& goal = DAOTarget::GetInstance();
    const bool miles = PedometerOptions::GetInstance().measurementSystem;
    // With the goal off the progress bar is hidden and the hint may use its place too.
    const bool off =
        goal.targetActive < DAOTarget::DISTANCE || goal.targetActive > DAOTarget::STEPS;
    content_->resize(width(), TivUtils::Scaled(kContentHeight + (off ? kSliderHeight : 0)));
    switch (goal.targetActive) {
        case DAOTarget::DISTANCE:
            std::tie(wholeField_, fractionField_) = row_->AddDistance(goal.distance, miles);
            break;
        case DAOTarget::CALORIES:
            valueField_ =
                row_->AddValue(4, goal.calories, AppResource::Text("today_goal__ Cal"), 150);
            break;
        case DAOTarget::ACTIVITY:
            valueField_ =
                row_->AddValue(3, goal.activityTime, AppResource::Text("today_goal__ min"), 120);
            break;
        case DAOTarget::STEPS:
            valueField_ =
                row_->AddValue(5, goal.steps, AppResource::Text("today_goal__ steps"), 180, 120);
            break;
        default:
            // With the goal off, say what choosing one does.
            hintLabel_ = row_->AddHint(AppResource::Text("today_goal__ Off hint"),
                                       content_->height() - TivUtils::Scaled(kFieldTop));
            break;
    }
    slider_->UpdateData();
    content_->update();
}

void TargetSelect::OnActionPerformed(const QWidget& source, int actionId) {
    if (actionId < ID_OFF || actionId > ID_STEPS) {
        PedometerForm::OnActionPerformed(source, actionId);
        return;
    }
    row_->CommitEditing();
    SoundsManager::GetInstance().ClickSound();
    DAOTarget::GetInstance().targetActive = actionId - ID_OFF;
    PedometerDBManager::GetInstance().SaveTagets();
    ReloadControls();
}

void TargetSelect::OnTextValueChanged(const QWidget& control) {
    if (row_ == nullptr || !row_->Holds(control)) return;
    // A value out of range is kept as typed and explained, and the goal keeps its value.
    DAOTarget& goal = DAOTarget::GetInstance();
    const bool miles = PedometerOptions::GetInstance().measurementSystem;
    std::optional<double> typed;
    switch (goal.targetActive) {
        case DAOTarget::DISTANCE:
            if (wholeField_ == nullptr || fractionField_ == nullptr) return;
            typed = GoalFieldRow::ReadDistance(*wholeField_, *fractionField_, miles);
            if (typed) goal.distance = *typed;
            break;
        case DAOTarget::CALORIES:
            if (valueField_ == nullptr) return;
            typed = GoalFieldRow::ReadInRange(EntryRange::GoalCalories(), *valueField_);
            if (typed) goal.calories = int(*typed);
            break;
        case DAOTarget::ACTIVITY:
            if (valueField_ == nullptr) return;
            typed = GoalFieldRow::ReadInRange(EntryRange::GoalMinutes(), *valueField_);
            if (typed) goal.activityTime = int(*typed);
            break;
        case DAOTarget::STEPS:
            if (valueField_ == nullptr) return;
            typed = GoalFieldRow::ReadInRange(EntryRange::GoalSteps(), *valueField_);
            if (typed) goal.steps = int(*typed);
            break;
        default:
            return;
    }
    if (!typed) return;
    PedometerDBManager::GetInstance().SaveTagets();
    slider_->UpdateData();
}

void TargetSelect::OnTextValueChangeCanceled(const QWidget&) {}

PEDOMETER_SCREEN("goal", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* goal = new TargetSelect();
    goal->Initialize();
    return goal;
});
