#include "TivButton.h"

#include <QPainter>
#include <cstdlib>

#include "TivUtils.h"
#include "TouchEventDispatcher.h"

TivButton::TivButton(QWidget* parent) : QWidget(parent) {
    TouchEventDispatcher::AddTouchEventListener(*this, *this);
}

int TivButton::Initialize(const QRect& bounds) {
    setGeometry(bounds);
    container_ = nullptr;
    pressed_ = false;
    enabled_ = true;
    normal_.reset();
    normalName_.clear();
    pressedBitmap_.reset();
    pressedName_.clear();
    disabled_.reset();
    AddTouchEventDelegate(nullptr);
    AddActionEventDelegate(nullptr);
    actionId_ = 0;
    TouchEventDispatcher::AddTouchEventListener(*this, *this);
    update();
    return 0;
}

void TivButton::Copy(std::optional<QPixmap>& target, const QPixmap* source) {
    target.reset();
    if (source != nullptr) target = *source;  // shared, so TivUtils can render it again
}

void TivButton::OnRescaled(double, double) {
    for (std::optional<QPixmap>* picture : {&normal_, &pressedBitmap_, &disabled_}) {
        if (!*picture) continue;
        if (auto again = TivUtils::RenderAgain(**picture)) *picture = *again;
    }
    update();
}

void TivButton::SetNormalBitmap(const QPixmap* bitmap) {
    Copy(normal_, bitmap);
    normalName_.clear();
    NoteDrawnSize(normal_ ? normal_->deviceIndependentSize().toSize() : QSize());
}

void TivButton::NoteDrawnSize(const QSize& drawn) {
    // A picture made for the whole button (within a pixel of rounding) keeps filling it
    // when a layout stretches the button.
    picturesFill_ = !drawn.isEmpty() && std::abs(drawn.width() - width()) <= 1 &&
                    std::abs(drawn.height() - height()) <= 1;
}

void TivButton::FitPictures() {
    if (!picturesFill_ || !normal_ || normal_->deviceIndependentSize().toSize() == size()) return;
    for (std::optional<QPixmap>* picture : {&normal_, &pressedBitmap_, &disabled_}) {
        if (!*picture) continue;
        if (auto again = TivUtils::RenderAgain(**picture, size())) *picture = *again;
    }
}
void TivButton::SetPressedBitmap(const QPixmap* bitmap) {
    Copy(pressedBitmap_, bitmap);
    pressedName_.clear();
}

void TivButton::SetPictures(const QString& picture) {
    SetNormalBitmap(nullptr);
    SetPressedBitmap(nullptr);
    const QSize drawn = picture.isEmpty() ? QSize() : TivUtils::ScaledSize(picture);
    if (!drawn.isEmpty()) {
        normalName_ = picture;
        pressedName_ =
            QString(picture).replace(QStringLiteral(".png"), QStringLiteral("-pressed.png"));
        NoteDrawnSize(drawn);
    }
    update();
}

void TivButton::RenderPending(QString& name, std::optional<QPixmap>& target) {
    if (name.isEmpty()) return;
    // A picture made for the whole button is rendered at the button's size at once.
    const QPixmap rendered =
        TivUtils::RenderPicture(name, picturesFill_ ? size() : TivUtils::ScaledSize(name));
    name.clear();
    target.reset();
    if (!rendered.isNull()) target = rendered;
}

void TivButton::SetDisabledBitmap(const QPixmap* bitmap) {
    Copy(disabled_, bitmap);
}

void TivButton::SetButtonEnabled(bool enabled) {
    enabled_ = enabled;
    update();
}

void TivButton::AddControl(QWidget& child) {
    TouchEventDispatcher::AddTouchEventListener(child, *this);
    const bool explicitlyHidden =
        child.isHidden() && child.testAttribute(Qt::WA_WState_ExplicitShowHide);
    child.setParent(this);
    if (!explicitlyHidden) child.show();
}

void TivButton::OnTouchPressed(const QWidget&, const QPoint& point, const TouchEventInfo& info) {
    if (!enabled_) return;
    pressed_ = true;
    if (ITouchEventListener* d = touchDelegate_.Get()) d->OnTouchPressed(*this, point, info);
    update();
}

void TivButton::OnTouchLongPressed(const QWidget&, const QPoint& point,
                                   const TouchEventInfo& info) {
    if (!enabled_) return;
    pressed_ = true;
    if (ITouchEventListener* d = touchDelegate_.Get()) d->OnTouchLongPressed(*this, point, info);
    update();
}

void TivButton::OnTouchReleased(const QWidget&, const QPoint& point, const TouchEventInfo& info) {
    if (!enabled_) return;
    pressed_ = false;
    update();
    // The delegates may delete this button (a screen closing itself): nothing below
    // touches a member after the last call.
    const QPointer<TivButton> alive(this);
    if (ITouchEventListener* d = touchDelegate_.Get()) d->OnTouchReleased(*this, point, info);
    if (alive.isNull()) return;
    if (IActionEventListener* a = actionDelegate_.Get()) a->OnActionPerformed(*this, actionId_);
}

void TivButton::OnTouchMoved(const QWidget&, const QPoint& point, const TouchEventInfo& info) {
    if (!enabled_) return;
    if (ITouchEventListener* d = touchDelegate_.Get()) d->OnTouchMoved(*this, point, info);
}

void TivButton::OnTouchDoublePressed(const QWidget&, const QPoint& point,
                                     const TouchEventInfo& info) {
    if (!enabled_) return;
    if (ITouchEventListener* d = touchDelegate_.Get()) d->OnTouchDoublePressed(*this, point, info);
}

void TivButton::OnTouchFocusIn(const QWidget&, const QPoint& point, const TouchEventInfo& info) {
    if (!enabled_) return;
    if (ITouchEventListener* d = touchDelegate_.Get()) d->OnTouchFocusIn(*this, point, info);
}

void TivButton::OnTouchFocusOut(const QWidget&, const QPoint& point, const TouchEventInfo& info) {
    if (!enabled_) return;
    if (ITouchEventListener* d = touchDelegate_.Get()) d->OnTouchFocusOut(*this, point, info);
}

void TivButton::paintEvent(QPaintEvent*) {
    // The background is transparent: what lies behind the button shows through.
    RenderPending(normalName_, normal_);
    FitPictures();
    if (pressed_) RenderPending(pressedName_, pressedBitmap_);
    QPainter painter(this);
    if (normal_ && !pressed_ && enabled_) painter.drawPixmap(0, 0, *normal_);
    if (pressedBitmap_ && pressed_) painter.drawPixmap(0, 0, *pressedBitmap_);
    if (!pressedBitmap_ && pressed_ && normal_) painter.drawPixmap(0, 0, *normal_);
    if (disabled_ && !enabled_) painter.drawPixmap(0, 0, *disabled_);
}
