#include "TargetSlider.h"

#include <QFontMetrics>
#include <algorithm>
#include <cmath>

#include "AppResource.h"
#include "Converter.h"
#include "DAOTarget.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "TivImagePanel.h"
#include "TivLabel.h"
#include "TivUtils.h"

namespace {
// value ÷ target × 100, truncated; 0 for a target that cannot be reached or a value
// that is not a number.
int Percent(double value, double target) {
    if (!(target > 0) || !std::isfinite(value)) return 0;
    const double percent = value / target * 100.0;
    if (!std::isfinite(percent) || percent <= 0) return 0;
    return int(std::min(percent, double(TargetSlider::kMaxPercent)));
}

const QColor kValueColor(252, 209, 75);

// The width the label's text needs in its font, plus room for the outline.
int TextWidth(const TivLabel& label) {
    if (!label.GetFont()) return 0;
    return QFontMetrics(*label.GetFont()).horizontalAdvance(label.GetText()) + TivUtils::Scaled(4);
}
}  // namespace

TargetSlider::TargetSlider(QWidget* parent) : QWidget(parent) {}

TivLabel* TargetSlider::MakeLabel(QWidget* parent, int fontSize, int fontStyle,
                                  const QColor& color) {
    auto* label = new TivLabel(parent);
    label->SetFontSize(fontSize);
    label->SetFontStyle(fontStyle);
    label->SetFont(QString());  // made now, so that texts can be measured
    label->SetHorizontalAlligment(TivLabel::ALIGN_LEFT);
    label->SetTextColor(color);
    label->show();
    return label;
}

bool TargetSlider::Initialize(int barHeight) {
    for (QWidget* old : std::initializer_list<QWidget*>{caption_, value_, separator_, target_,
                                                        unit_, barBack_, bar_}) {
        delete old;
    }
    fullHeight_ = std::max(barHeight, 0);
    const int textSize = TivUtils::Scaled(27);
    const int figureSize = TivUtils::Scaled(32);
    caption_ = MakeLabel(this, textSize, TivUtils::FONT_STYLE_PLAIN, Qt::white);
    caption_->SetText(AppResource::Text("today_goal__ Progress:"));
    value_ = MakeLabel(this, figureSize, TivUtils::FONT_STYLE_BOLD, kValueColor);
    separator_ = MakeLabel(this, textSize, TivUtils::FONT_STYLE_PLAIN, Qt::white);
    separator_->SetText(QStringLiteral("/"));
    target_ = MakeLabel(this, figureSize, TivUtils::FONT_STYLE_BOLD, Qt::white);
    unit_ = MakeLabel(this, textSize, TivUtils::FONT_STYLE_PLAIN, Qt::white);

    barBack_ = new TivImagePanel(this);
    barBack_->Initialize(QPoint(0, 0), QStringLiteral("daily-goal.png"));
    bar_ = new TivImagePanel(this);
    bar_->Initialize(QPoint(0, 0), QStringLiteral("daily-goal-full.png"));
    barBack_->show();
    bar_->hide();
    LayoutChildren();
    return true;
}

void TargetSlider::resizeEvent(QResizeEvent*) {
    LayoutChildren();
}

void TargetSlider::LayoutChildren() {
    if (bar_ == nullptr) return;
    // One line of text over the bar, the bar at the bottom, both centred.
    const QSize picture = barBack_->PictureSize();
    fullWidth_ = picture.isEmpty() ? width() : std::min(width(), picture.width());
    const int left = (width() - fullWidth_) / 2;
    const int barTop = std::max(0, height() - fullHeight_);
    barBack_->setGeometry(left, barTop, fullWidth_, fullHeight_);
    bar_->move(left, barTop);
    SetProgressBarValue(percent_);
    LayoutTexts();
}

void TargetSlider::LayoutTexts() {
    const int left = (width() - fullWidth_) / 2;
    const int textHeight = std::max(0, height() - fullHeight_ - TivUtils::Scaled(6));
    // The figures hang from the right edge, each label as wide as its text, so that
    // "value / target (unit)" stays together whatever the lengths.
    int x = left + fullWidth_;
    const int gap = TivUtils::Scaled(6);
    for (TivLabel* label : {unit_, target_, separator_, value_}) {
        const int w = TextWidth(*label);
        x -= w;
        label->setGeometry(x, 0, w, textHeight);
        x -= gap;
    }
    // The caption takes what is left; where the figures leave too little (long numbers,
    // long words, a narrow window), they speak for themselves without it.
    caption_->setGeometry(left, 0, std::max(0, x - left), textHeight);
    caption_->setVisible(TextWidth(*caption_) <= x - left);
}

void TargetSlider::UpdateData() {
    const DAOTarget& goal = DAOTarget::GetInstance();
    if (goal.targetActive == 0) {
        hide();
        return;
    }
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    int percent = 0;
    switch (goal.targetActive) {
        case 1: {
            const double km = db.GetTodayDistance() / 1000.0;
            percent = Percent(km, goal.distance);
            const bool miles = PedometerOptions::GetInstance().measurementSystem;
            const double shown = miles ? Converter::ConvertKilometersToMiles(km) : km;
            const double target =
                miles ? Converter::ConvertKilometersToMiles(goal.distance) : goal.distance;
            value_->SetText(Converter::GetLocalStringN(shown, 3));
            target_->SetText(Converter::GetLocalStringN(target, 3));
            unit_->SetText(QStringLiteral("(%1)").arg(
                AppResource::Text(miles ? "today_goal__ ml" : "today_goal__ km")));
            break;
        }
        case 2: {
            const double calories = db.GetTodayCalories();
            percent = Percent(calories, goal.calories);
            value_->SetText(Converter::GetLocalStringN(calories, 1));
            target_->SetText(Converter::GetCountString(goal.calories));
            unit_->SetText(QStringLiteral("(%1)").arg(AppResource::Text("today_goal__ Cal")));
            break;
        }
        case 3: {
            // Whole minutes: 59 seconds of activity are not a minute yet.
            const int minutes = db.GetTodayActivity() / 60;
            percent = Percent(minutes, goal.activityTime);
            value_->SetText(Converter::GetCountString(minutes));
            target_->SetText(Converter::GetCountString(goal.activityTime));
            unit_->SetText(QStringLiteral("(%1)").arg(AppResource::Text("today_goal__ min")));
            break;
        }
        case DAOTarget::STEPS: {
            const int steps = db.GetTodaySteps();
            percent = Percent(steps, goal.steps);
            value_->SetText(Converter::GetLocalStringN(steps, 0));
            target_->SetText(Converter::GetLocalStringN(goal.steps, 0));
            unit_->SetText(QStringLiteral("(%1)").arg(AppResource::Text("today_goal__ steps")));
            break;
        }
        default:
            break;
    }
    SetProgressBarValue(percent);
    LayoutTexts();
    for (TivLabel* label : {value_, target_, unit_}) label->update();
    show();
}

void TargetSlider::SetProgressBarValue(int percent) {
    percent_ = std::clamp(percent, 0, kMaxPercent);
    if (bar_ == nullptr) return;
    const int width = percent_ * fullWidth_ / 100;
    if (width >= 2) {
        bar_->resize(width, fullHeight_);
        bar_->show();
        bar_->update();
    } else {
        bar_->hide();
    }
}

QString TargetSlider::GetValueText() const {
    return value_ != nullptr ? value_->GetText() : QString();
}
QString TargetSlider::GetTargetText() const {
    return target_ != nullptr ? target_->GetText() : QString();
}
QString TargetSlider::GetUnitText() const {
    return unit_ != nullptr ? unit_->GetText() : QString();
}
int TargetSlider::GetBarFillWidth() const {
    return bar_ != nullptr && !bar_->isHidden() ? bar_->width() : 0;
}
