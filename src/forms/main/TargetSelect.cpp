#include "TargetSelect.h"

#include <QLineEdit>
#include <QLocale>
#include <cmath>

#include "AppResource.h"
#include "Converter.h"
#include "DAOTarget.h"
#include "DistanceEntry.h"
#include "EntryRange.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "ScreenDirectory.h"
#include "SoundsManager.h"
#include "TargetSlider.h"
#include "TivLabel.h"
#include "TivNumberField.h"
#include "TivUtils.h"

namespace {
// Sizes in the 480-wide layout.
constexpr int kContentGap = 40;  // below the tabs
constexpr int kFieldTop = 24;    // in the content panel
constexpr int kFieldHeight = 72;
constexpr int kContentHeight = 150;  // the row of fields and some air
constexpr int kSliderHeight = 84;
constexpr int kSliderBar = 28;

int Scaled(int size) {
    return int(std::lround(size * TivUtils::GetScale()));
}

QString Text(const char* key) {
    return AppResource::GetInstance().GetString(QString::fromUtf8(key));
}
}  // namespace

TargetSelect::TargetSelect(QWidget* parent) : PedometerForm(parent) {}

bool TargetSelect::Initialize() {
    setObjectName(QStringLiteral("TargetSelect"));
    return true;
}

void TargetSelect::OnInitializing() {
    SetBackgroundImage(QStringLiteral("MainScreen_bg.png"));
    SetTitleText(Text("today_goal__ Today's goal"));
    AddTabItem(Text("pacer__ Off"), ID_OFF);
    AddTabItem(Text("today_goal__ Distance"), ID_DISTANCE);
    AddTabItem(Text("today_goal__ Calories_Stopwatch"), ID_CALORIES);
    AddTabItem(Text("today_goal__ Activity"), ID_ACTIVITY);
    const int kind = DAOTarget::GetInstance().targetActive;
    if (kind >= 1 && kind <= 3)
        SetSelectedTabIndex(kind);
    else
        SetSelectedTabIndex(0);
    ShowBackButton();

    const int top = GetClientTop() + Scaled(kContentGap);
    content_ = new QWidget(this);
    content_->setGeometry(0, top, width(), Scaled(kContentHeight));
    content_->show();

    slider_ = new TargetSlider(this);
    const int margin = Scaled(20);
    slider_->setGeometry(margin, top + Scaled(kContentHeight), width() - 2 * margin,
                         Scaled(kSliderHeight));
    slider_->Initialize(Scaled(kSliderBar));
    ReloadControls();
}

void TargetSelect::FormWillAppear() {
    if (slider_ != nullptr) slider_->UpdateData();
}

QLineEdit* TargetSelect::AddField(int maxLength, const QString& text, int x, int width) {
    auto* field = new TivNumberField(content_, maxLength, Scaled(44));
    field->setText(text);
    field->setGeometry(x, Scaled(kFieldTop), width, Scaled(kFieldHeight));
    connect(field, &QLineEdit::editingFinished, this,
            [this, field] { OnTextValueChanged(*field); });
    field->show();
    return field;
}

void TargetSelect::AddUnit(const QString& text, int x, int width) {
    auto* label = new TivLabel(content_);
    label->SetText(text);
    label->SetFontSize(Scaled(34));
    label->SetHorizontalAlligment(TivLabel::ALIGN_LEFT);
    label->setGeometry(x, Scaled(kFieldTop), width, Scaled(kFieldHeight));
    label->show();
}

void TargetSelect::ReloadControls() {
    if (content_ == nullptr) return;
    // The old fields go quietly: one may be emitting its own signal right now.
    for (QWidget* child : content_->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        child->disconnect(this);
        child->hide();
        child->deleteLater();
    }
    valueField_ = nullptr;
    wholeField_ = nullptr;
    fractionField_ = nullptr;
    hintLabel_ = nullptr;

    const DAOTarget& goal = DAOTarget::GetInstance();
    const bool miles = PedometerOptions::GetInstance().measurementSystem;
    const int center = content_->width() / 2;
    switch (goal.targetActive) {
        case 1: {
            // Whole part, then the fraction: metres (3 digits) or tenths of a mile.
            const DistanceEntry entry = DistanceEntry::FromKilometers(goal.distance, miles);
            const int whole = std::min(entry.whole, 99);
            const QString fractionText = entry.FractionText(miles);
            const int fieldWhole = Scaled(100);
            const int fieldFraction = Scaled(miles ? 70 : 130);
            const int between = Scaled(miles ? 30 : 70);
            const int after = Scaled(70);
            const int gap = Scaled(10);
            const int rowWidth = fieldWhole + gap + between + fieldFraction + gap + after;
            int x = center - rowWidth / 2;
            wholeField_ = AddField(2, QString::number(whole), x, fieldWhole);
            x += fieldWhole + gap;
            AddUnit(miles ? QString(QLocale().decimalPoint()) : Text("today_goal__ km"), x,
                    between);
            x += between;
            fractionField_ = AddField(miles ? 1 : 3, fractionText, x, fieldFraction);
            x += fieldFraction + gap;
            AddUnit(Text(miles ? "today_goal__ ml" : "meter__ m"), x, after);
            break;
        }
        case 2:
        case 3: {
            const bool calories = goal.targetActive == 2;
            const int fieldWidth = Scaled(calories ? 150 : 120);
            const int unitWidth = Scaled(100);
            const int gap = Scaled(12);
            const int x = center - (fieldWidth + gap + unitWidth) / 2;
            valueField_ = AddField(calories ? 4 : 3,
                                   QString::number(calories ? goal.calories : goal.activityTime), x,
                                   fieldWidth);
            AddUnit(Text(calories ? "today_goal__ Cal" : "today_goal__ min"), x + fieldWidth + gap,
                    unitWidth);
            break;
        }
        default: {
            // With the goal off, say what choosing one does.
            auto* hint = new TivLabel(content_);
            hint->setObjectName(QStringLiteral("hint"));
            const int margin = Scaled(30);
            hint->setGeometry(margin, Scaled(kFieldTop), content_->width() - 2 * margin,
                              content_->height() - Scaled(kFieldTop));
            hint->SetFontSize(Scaled(28));
            hint->SetVerticalAlligment(TivLabel::ALIGN_TOP);
            hint->SetTextColor(QColor(0xC8, 0xD2, 0xE6));
            hint->SetNeedOutline(false);
            hint->SetText(Text("today_goal__ Off hint"));
            hint->show();
            hintLabel_ = hint;
            break;
        }
    }
    slider_->UpdateData();
    content_->update();
}

void TargetSelect::CommitEditing() {
    // A field still being edited is taken before its kind changes.
    for (QLineEdit* field : {valueField_.data(), wholeField_.data(), fractionField_.data()}) {
        if (field != nullptr && field->hasFocus()) field->clearFocus();
    }
}

void TargetSelect::OnActionPerformed(const QWidget& source, int actionId) {
    if (actionId < ID_OFF || actionId > ID_ACTIVITY) {
        PedometerForm::OnActionPerformed(source, actionId);
        return;
    }
    CommitEditing();
    SoundsManager::GetInstance().ClickSound();
    DAOTarget::GetInstance().targetActive = actionId - ID_OFF;
    PedometerDBManager::GetInstance().SaveTagets();
    ReloadControls();
}

void TargetSelect::OnTextValueChanged(const QWidget& control) {
    auto* field = qobject_cast<QLineEdit*>(const_cast<QWidget*>(&control));
    if (field == nullptr ||
        (field != valueField_ && field != wholeField_ && field != fractionField_)) {
        return;
    }
    // A value out of range is kept as typed and explained, and the goal keeps its value.
    DAOTarget& goal = DAOTarget::GetInstance();
    const bool miles = PedometerOptions::GetInstance().measurementSystem;
    switch (goal.targetActive) {
        case 1: {
            auto* whole = qobject_cast<TivNumberField*>(wholeField_.data());
            if (whole == nullptr || fractionField_ == nullptr) return;
            const EntryRange range = EntryRange::GoalDistance(miles);
            const EntryRange::Reading typed =
                range.Read(whole->text(), fractionField_->text(), miles ? 10 : 1000);
            if (!whole->ShowVerdict(range, typed.verdict)) return;
            goal.distance = miles ? Converter::ConvertMilesToKilometers(typed.value) : typed.value;
            break;
        }
        case 2:
        case 3: {
            auto* value = qobject_cast<TivNumberField*>(valueField_.data());
            if (value == nullptr) return;
            const EntryRange range =
                goal.targetActive == 2 ? EntryRange::GoalCalories() : EntryRange::GoalMinutes();
            const EntryRange::Reading typed = range.Read(value->text());
            if (!value->ShowVerdict(range, typed.verdict)) return;
            (goal.targetActive == 2 ? goal.calories : goal.activityTime) = int(typed.value);
            break;
        }
        default:
            return;
    }
    PedometerDBManager::GetInstance().SaveTagets();
    slider_->UpdateData();
}

void TargetSelect::OnTextValueChangeCanceled(const QWidget&) {}

PEDOMETER_SCREEN("goal", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* goal = new TargetSelect();
    goal->Initialize();
    return goal;
});
