#include "SygnalForm.h"

#include <QLocale>
#include <QProgressBar>
#include <QTimer>
#include <cmath>
#include <tuple>

#include "AppResource.h"
#include "Converter.h"
#include "EntryRange.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "ScreenDirectory.h"
#include "SoundsManager.h"
#include "Sygnal.h"
#include "TivButton.h"
#include "TivLabel.h"
#include "TivUtils.h"

namespace {
// Sizes in the 480-wide layout.
constexpr int kContentGap = 30;  // below the tabs
constexpr int kButtonTop = 120;
constexpr int kButtonWidth = 200;
constexpr int kButtonHeight = 72;
constexpr int kBarTop = 236;
constexpr int kBarHeight = 28;
constexpr int kLabelTop = 276;
constexpr int kLabelHeight = 110;
constexpr int kContentHeight = 400;
constexpr int kRefreshMs = 1000;  // the counters move every second

// The state of the same phase for a kind: 0 calories, 1 distance, 2 activity, 3 steps.
// States of no phase stay as they are.
int SamePhase(int type, int kind) {
    static constexpr int kStates[3][4] = {{0, 2, 3, Sygnal::STEPS_STOPPED},
                                          {4, 5, 6, Sygnal::STEPS_RUNNING},
                                          {8, 7, 9, Sygnal::STEPS_COMPLETED}};
    if (Sygnal::IsStopped(type)) return kStates[0][kind];
    if (Sygnal::IsRunning(type)) return kStates[1][kind];
    if (Sygnal::IsCompleted(type)) return kStates[2][kind];
    return type;
}

int KindTab(int type) {
    if (Sygnal::IsCalories(type)) return 0;
    if (Sygnal::IsDistance(type)) return 1;
    if (Sygnal::IsActivity(type)) return 2;
    if (Sygnal::IsSteps(type)) return 3;
    return -1;
}
}  // namespace

SygnalForm::SygnalForm(QWidget* parent) : PedometerForm(parent) {
    refreshTimer_ = new QTimer(this);
    refreshTimer_->setInterval(kRefreshMs);
    connect(refreshTimer_, &QTimer::timeout, this, &SygnalForm::OnRefreshTick);
}

bool SygnalForm::Initialize() {
    setObjectName(QStringLiteral("IDF_PACER_FORM"));
    return true;
}

void SygnalForm::OnInitializing() {
    SetBackgroundImage(QStringLiteral("MainScreen_bg.png"));
    SetTitleText(AppResource::Text("more__ Alarm"));
    GoalFieldRow::AddTabs(*this,
                          {{"alarm__ Calories_Stopwatch", ID_CALORIES},
                           {"alarm__ Distance", ID_DISTANCE},
                           {"alarm__ Activity", ID_ACTIVITY},
                           {"alarm__ Steps", ID_STEPS}},
                          KindTab(PedometerOptions::GetInstance().sygnalType));
    ShowBackButton();

    content_ = new QWidget(this);
    content_->setGeometry(0, GetClientTop() + TivUtils::Scaled(kContentGap), width(),
                          TivUtils::Scaled(kContentHeight));
    content_->show();
    row_ = std::make_unique<GoalFieldRow>(*content_, 0,
                                          [this](QLineEdit& field) { OnTextValueChanged(field); });
    ReloadControls();
    refreshTimer_->start();
}

void SygnalForm::OnRefreshTick() {
    if (content_ == nullptr || !isVisible()) return;
    const int type = PedometerOptions::GetInstance().sygnalType;
    if (type != shownType_) {
        ReloadControls();
    } else if (Sygnal::IsRunning(type)) {
        ShowRunningProgress(type);
    }
}

TivButton* SygnalForm::AddButton(const QString& picture, const QString& caption, int actionId,
                                 int x) {
    auto* button = new TivButton(content_);
    button->Initialize(QRect(x, TivUtils::Scaled(kButtonTop), TivUtils::Scaled(kButtonWidth),
                             TivUtils::Scaled(kButtonHeight)));
    button->SetPictures(picture);
    button->SetActionId(actionId);
    button->AddActionEventDelegate(this);
    auto* label = new TivLabel(button);
    const int inset = TivUtils::Scaled(12);  // keeps a shrunk caption off the rounded ends
    label->setGeometry(inset, 0, button->width() - 2 * inset, button->height());
    label->SetText(caption);
    label->SetFontSize(TivUtils::Scaled(32));
    label->SetFontStyle(TivUtils::FONT_STYLE_BOLD);
    label->SetTextColor(Qt::black);
    label->SetNeedOutline(false);
    label->SetShrinkToFit(true);  // "Zurücksetzen" is long
    button->AddControl(*label);
    button->show();
    return button;
}

void SygnalForm::AddProgress(int percent, const QString& text, const QColor& color) {
    const int margin = TivUtils::Scaled(20);
    progressBar_ = new QProgressBar(content_);
    progressBar_->setRange(0, 100);
    progressBar_->setValue(std::clamp(percent, 0, 100));
    progressBar_->setTextVisible(false);
    progressBar_->setGeometry(margin, TivUtils::Scaled(kBarTop), content_->width() - 2 * margin,
                              TivUtils::Scaled(kBarHeight));
    progressBar_->setStyleSheet(
        QStringLiteral("QProgressBar { background: rgba(10, 15, 26, 200); border: 1px solid "
                       "#3A4458; border-radius: %1px; }"
                       "QProgressBar::chunk { background: %2; border-radius: %1px; }")
            .arg(TivUtils::Scaled(8))
            .arg(QColor(0x34, 0xC7, 0x7B).name()));
    progressBar_->show();
    progressLabel_ = new TivLabel(content_);
    progressLabel_->setGeometry(margin, TivUtils::Scaled(kLabelTop), content_->width() - 2 * margin,
                                TivUtils::Scaled(kLabelHeight));
    progressLabel_->SetFontSize(TivUtils::Scaled(32));
    progressLabel_->SetTextColor(color);
    progressLabel_->SetNeedOutline(false);
    progressLabel_->SetText(text);
    progressLabel_->show();
}

void SygnalForm::ReloadControls() {
    if (content_ == nullptr) return;
    // The old controls go quietly: one may be emitting its own signal right now.
    row_->Clear();
    for (QWidget* child : content_->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        child->disconnect(this);
        child->hide();
        child->deleteLater();
    }
    valueField_ = nullptr;
    wholeField_ = nullptr;
    fractionField_ = nullptr;
    progressBar_ = nullptr;
    progressLabel_ = nullptr;

    PedometerOptions& options = PedometerOptions::GetInstance();
    const int type = options.sygnalType;
    shownType_ = type;
    const bool miles = options.measurementSystem;
    const int center = content_->width() / 2;
    if (Sygnal::IsCalories(type)) {
        valueField_ =
            row_->AddValue(4, options.sygnalCalories, AppResource::Text("today_goal__ Cal"), 150);
    } else if (Sygnal::IsActivity(type)) {
        valueField_ =
            row_->AddValue(3, options.sygnalActivity, AppResource::Text("today_goal__ min"), 120);
    } else if (Sygnal::IsSteps(type)) {
        valueField_ = row_->AddValue(5, options.sygnalSteps,
                                     AppResource::Text("today_goal__ steps"), 180, 120);
    } else if (Sygnal::IsDistance(type)) {
        std::tie(wholeField_, fractionField_) = row_->AddDistance(options.sygnalDistance, miles);
    }

    const int gap = TivUtils::Scaled(20);
    const int left = center - gap / 2 - TivUtils::Scaled(kButtonWidth);
    if (Sygnal::IsRunning(type)) {
        startPause_ = AddButton(QStringLiteral("btn-green.png"), AppResource::Text("alarm__ Pause"),
                                ID_PAUSE, left);
    } else if (Sygnal::IsStopped(type) || Sygnal::IsCompleted(type)) {
        startPause_ = AddButton(QStringLiteral("btn-green.png"), AppResource::Text("alarm__ Start"),
                                ID_START, left);
    } else {
        startPause_ = AddButton(QStringLiteral("btn-green.png"), QString(), 0, left);
    }
    reset_ = AddButton(QStringLiteral("btn-red.png"), AppResource::Text("alarm__ Reset"), ID_RESET,
                       center + gap / 2);

    if (Sygnal::IsCompleted(type)) {
        // Green: a goal reached is good news, and red would read as an error.
        AddProgress(100, AppResource::Text("alarm__ Completed!"), QColor(0x43, 0xA0, 0x47));
    } else if (Sygnal::IsRunning(type)) {
        ShowRunningProgress(type);
    }
    content_->update();
}

void SygnalForm::ShowRunningProgress(int type) {
    PedometerOptions& options = PedometerOptions::GetInstance();
    const bool miles = options.measurementSystem;
    const DAOSygnal today = PedometerDBManager::GetInstance().GetTodaySygnal();
    double percent = 0.0;
    QString current;
    QString target;
    QString unit;
    if (Sygnal::IsCalories(type)) {
        percent = today.calories / options.sygnalCalories * 100.0;
        current = Converter::GetCountString(int(today.calories));
        target = Converter::GetCountString(options.sygnalCalories);
        unit = AppResource::Text("today_goal__ Cal");
    } else if (Sygnal::IsDistance(type)) {
        percent = today.distance / options.sygnalDistance * 100.0;
        const double done =
            miles ? Converter::ConvertKilometersToMiles(today.distance) : today.distance;
        const double goal = miles ? Converter::ConvertKilometersToMiles(options.sygnalDistance)
                                  : options.sygnalDistance.load();
        current = Converter::GetLocalStringN(done, 1);
        target = Converter::GetLocalStringN(goal, 1);
        unit = AppResource::Text(miles ? "today_goal__ ml" : "today_goal__ km");
    } else if (Sygnal::IsSteps(type)) {
        percent = double(today.steps) / options.sygnalSteps * 100.0;
        current = Converter::GetCountString(today.steps);
        target = Converter::GetCountString(options.sygnalSteps);
        unit = AppResource::Text("today_goal__ steps");
    } else {
        percent = today.activityTime / 60.0 / options.sygnalActivity * 100.0;
        current = Converter::GetCountString(today.activityTime / 60);
        target = Converter::GetCountString(options.sygnalActivity);
        unit = AppResource::Text("today_goal__ min");
    }
    // A zero target gives infinity or NaN; both count as reached.
    if (!(percent < 100.0)) {
        options.sygnalType = Sygnal::IsSteps(type) ? Sygnal::STEPS_COMPLETED : 7;
        ReloadControls();
        return;
    }
    const QString text = AppResource::Text("alarm__ Current progress: ") + current +
                         AppResource::Text("alarm__  of") + target + QLatin1Char(' ') + unit;
    if (progressBar_ == nullptr || progressLabel_ == nullptr) {
        AddProgress(int(percent), text, QColor(0x34, 0xC7, 0x7B));
    } else {
        progressBar_->setValue(std::clamp(int(percent), 0, 100));
        progressLabel_->SetText(text);
    }
    content_->update();
}

void SygnalForm::OnActionPerformed(const QWidget& source, int actionId) {
    if (actionId < ID_CALORIES || actionId > ID_STEPS) {
        PedometerForm::OnActionPerformed(source, actionId);
        return;
    }
    row_->CommitEditing();
    PedometerOptions& options = PedometerOptions::GetInstance();
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    SoundsManager& sounds = SoundsManager::GetInstance();
    const int type = options.sygnalType;
    switch (actionId) {
        case ID_CALORIES:
        case ID_DISTANCE:
        case ID_ACTIVITY:
            sounds.ClickSound();
            options.sygnalType = SamePhase(type, actionId - ID_CALORIES);
            db.SaveOptions();
            break;
        case ID_STEPS:
            sounds.ClickSound();
            options.sygnalType = SamePhase(type, 3);
            db.SaveOptions();
            break;
        case ID_START:
            sounds.ClickSound();
            if (Sygnal::IsCompleted(type)) db.ClearSygnals();
            if (type == 3 || type == 9) options.sygnalType = 6;
            if (type == 2 || type == 7) options.sygnalType = 5;
            if (type == 0 || type == 8) options.sygnalType = 4;
            if (type == Sygnal::STEPS_STOPPED || type == Sygnal::STEPS_COMPLETED) {
                options.sygnalType = Sygnal::STEPS_RUNNING;
            }
            break;
        case ID_PAUSE:
            sounds.ClickSound();
            if (type == 5) options.sygnalType = 2;
            if (type == 6) options.sygnalType = 3;
            if (type == 4) options.sygnalType = 0;
            if (type == Sygnal::STEPS_RUNNING) options.sygnalType = Sygnal::STEPS_STOPPED;
            break;
        case ID_RESET:
            db.ClearSygnals();
            sounds.ClickSound();
            if (type == 8) options.sygnalType = 4;
            if (type == 9) options.sygnalType = 6;
            if (type == 7) options.sygnalType = 5;
            if (type == Sygnal::STEPS_COMPLETED) options.sygnalType = Sygnal::STEPS_RUNNING;
            break;
        default:
            break;
    }
    ReloadControls();
}

void SygnalForm::OnTextValueChanged(const QWidget& control) {
    if (row_ == nullptr || !row_->Holds(control)) return;
    // A value out of range is kept as typed and explained, and the alarm keeps its value.
    PedometerOptions& options = PedometerOptions::GetInstance();
    const int type = options.sygnalType;
    if (Sygnal::IsDistance(type) && wholeField_ != nullptr && fractionField_ != nullptr) {
        const std::optional<double> km =
            GoalFieldRow::ReadDistance(*wholeField_, *fractionField_, options.measurementSystem);
        if (!km) return;
        options.sygnalDistance = *km;
    } else if (valueField_ != nullptr &&
               (Sygnal::IsCalories(type) || Sygnal::IsActivity(type) || Sygnal::IsSteps(type))) {
        const EntryRange range = Sygnal::IsCalories(type)   ? EntryRange::GoalCalories()
                                 : Sygnal::IsActivity(type) ? EntryRange::GoalMinutes()
                                                            : EntryRange::GoalSteps();
        const std::optional<double> typed = GoalFieldRow::ReadInRange(range, *valueField_);
        if (!typed) return;
        (Sygnal::IsCalories(type)   ? options.sygnalCalories
         : Sygnal::IsActivity(type) ? options.sygnalActivity
                                    : options.sygnalSteps) = int(*typed);
    } else {
        return;
    }
    PedometerDBManager::GetInstance().SaveOptions();
}

void SygnalForm::OnTextValueChangeCanceled(const QWidget&) {}

PEDOMETER_SCREEN("alarm", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* alarm = new SygnalForm();
    alarm->Initialize();
    return alarm;
});
