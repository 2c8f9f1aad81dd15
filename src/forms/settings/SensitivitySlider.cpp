#include "SensitivitySlider.h"

#include <algorithm>
#include <cmath>

#include "AppResource.h"
#include "Body.h"
#include "PedometerDBManager.h"
#include "TivLabel.h"
#include "TivSlider.h"
#include "TivUtils.h"

QColor SensitivitySlider::GaitColor(int gait) {
    static const QColor kColors[3] = {QColor(92, 214, 92), QColor(252, 209, 75),
                                      QColor(240, 96, 80)};
    return kColors[std::clamp(gait, 1, 3) - 1];
}

double SensitivitySlider::Threshold(int gait) {
    const Body& body = Body::GetInstance();
    return gait == 1 ? body.getWalkCoef() : gait == 2 ? body.getJogCoef() : body.getRunCoef();
}

double SensitivitySlider::ThresholdFor(int gait, int position) {
    return gait == 1   ? Body::WalkCoefForSlider(position)
           : gait == 2 ? Body::JogCoefForSlider(position)
                       : Body::RunCoefForSlider(position);
}

int SensitivitySlider::PositionFor(int gait, double threshold) {
    // Each formula is linear in the position: ends at 0 and 100.
    const double low = ThresholdFor(gait, 0);
    const double high = ThresholdFor(gait, 100);
    const double position = (threshold - low) / (high - low) * 100.0;
    if (!std::isfinite(position)) return 0;
    return int(std::clamp(std::lround(position), 0L, 100L));
}

SensitivitySlider::SensitivitySlider(int gait, std::function<void()> changed, QWidget* parent)
    : QWidget(parent), gait_(gait), changed_(std::move(changed)) {}

void SensitivitySlider::Initialize() {
    static const char* const kCaptions[3] = {"more__ Walk sensitivity", "more__ Jog sensitivity",
                                             "more__ Run sensitivity"};
    const int margin = TivUtils::Scaled(20);
    auto* caption = new TivLabel(this);
    caption->Initialize();
    caption->SetText(AppResource::GetInstance().GetString(
        QString::fromUtf8(kCaptions[std::clamp(gait_, 1, 3) - 1])));
    caption->SetFontSize(TivUtils::Scaled(22));
    caption->SetTextColor(GaitColor(gait_));
    caption->SetNeedOutline(false);
    caption->SetHorizontalAlligment(TivLabel::ALIGN_LEFT);
    caption->setGeometry(margin, 0, width() - 2 * margin - TivUtils::Scaled(60),
                         TivUtils::Scaled(32));

    const int position = PositionFor(gait_, Threshold(gait_));
    position_ = new TivLabel(this);
    position_->Initialize();
    position_->SetText(QString::number(position));
    position_->SetFontSize(TivUtils::Scaled(22));
    position_->SetFontStyle(TivUtils::FONT_STYLE_BOLD);
    position_->SetNeedOutline(false);
    position_->SetHorizontalAlligment(TivLabel::ALIGN_RIGHT);
    position_->setGeometry(width() - margin - TivUtils::Scaled(60), 0, TivUtils::Scaled(60),
                           TivUtils::Scaled(32));

    slider_ = new TivSlider(this);
    // 60 units high: a finger-sized target at the smallest scale.
    slider_->Initialize(
        QRect(margin, TivUtils::Scaled(32), width() - 2 * margin, TivUtils::Scaled(60)), position);
    slider_->SetListener(this);
    for (QWidget* child : {static_cast<QWidget*>(caption), static_cast<QWidget*>(position_),
                           static_cast<QWidget*>(slider_)}) {
        child->show();
    }
}

void SensitivitySlider::SliderValueChanged(int value) {
    Body& body = Body::GetInstance();
    const double threshold = ThresholdFor(gait_, value);
    if (gait_ == 1) body.setWalkCoef(threshold);
    if (gait_ == 2) body.setJogCoef(threshold);
    if (gait_ == 3) body.setRunCoef(threshold);
    PedometerDBManager::GetInstance().SaveBody();
    position_->SetText(QString::number(value));
    position_->update();
    if (changed_) changed_();
}
