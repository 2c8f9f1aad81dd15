#include "TivSlider.h"

#include <algorithm>

#include "TivImagePanel.h"
#include "TivUtils.h"
#include "TouchEventDispatcher.h"

TivSlider::TivSlider(QWidget* parent) : QWidget(parent) {}

bool TivSlider::Initialize(const QRect& bounds, int value) {
    setGeometry(bounds);
    delete track_;
    delete fill_;
    delete knob_;
    value = std::clamp(value, 0, 100);

    // Added back to front: track, fill, knob. The track's top sits on the slider's
    // middle line (half the height of a panel not yet built, which is 0, above it).
    track_ = new TivImagePanel(this);
    const int trackY = height() / 2;
    track_->Initialize(QPoint(0, trackY), QStringLiteral("sliderBlack.png"));
    track_->resize(width(), track_->PictureSize().height());

    fill_ = new TivImagePanel(this);
    fill_->Initialize(QPoint(0, trackY), QStringLiteral("sliderGreen.png"));

    knob_ = new TivImagePanel(this);
    const QString knobPicture = QStringLiteral("sliderButton.png");
    const QSize knobSize = TivUtils::ScaledSize(knobPicture);
    const int knobWidth = knobSize.width();
    const int knobHeight = knobSize.height();
    const int x = int((width() - knobWidth) * value / 100.0);
    knob_->Initialize(QPoint(x, height() / 2 - knobHeight / 2), knobPicture);
    fill_->resize(x + 2, fill_->PictureSize().height());

    for (TivImagePanel* part : {track_, fill_, knob_}) part->show();
    TouchEventDispatcher::AddTouchEventListener(*knob_, *this);
    return true;
}

int TivSlider::KnobTravel() const {
    return knob_ != nullptr ? width() - knob_->width() : 0;
}

void TivSlider::PlaceKnob(int x) {
    knob_->move(x, knob_->y());
    fill_->resize(x + 2, fill_->PictureSize().height());
}

void TivSlider::SetValue(int value) {
    if (knob_ == nullptr) return;
    value = std::clamp(value, 0, 100);
    PlaceKnob(int(KnobTravel() * value / 100.0));
}

void TivSlider::OnTouchMoved(const QWidget&, const QPoint& point, const TouchEventInfo&) {
    if (knob_ == nullptr) return;
    // `point` is in the knob's coordinates: keep the knob's middle under the finger.
    int x = point.x() + knob_->x() - knob_->width() / 2;
    if (x < 0) x = 0;
    if (x + knob_->width() > width()) x = width() - knob_->width();
    PlaceKnob(x);
    const int travel = KnobTravel();
    if (TivSLiderChangedListner* listener = listener_.Get()) {
        listener->SliderValueChanged(travel > 0 ? int(double(x) / travel * 100.0) : 0);
    }
    update();
}
