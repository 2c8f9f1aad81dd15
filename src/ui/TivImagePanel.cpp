#include "TivImagePanel.h"

#include <QPainter>

#include "TivUtils.h"

TivImagePanel::TivImagePanel(QWidget* parent) : QWidget(parent) {}

bool TivImagePanel::Initialize(const QPoint& position, std::unique_ptr<QPixmap> bitmap) {
    SetImage(std::move(bitmap));
    setGeometry(QRect(position, PictureSize()));
    return true;
}

bool TivImagePanel::Initialize(const QPoint& position, const QString& picture) {
    SetImage(nullptr);
    if (!TivUtils::ScaledSize(picture).isEmpty()) pictureName_ = picture;
    setGeometry(QRect(position, PictureSize()));
    return true;
}

void TivImagePanel::SetImage(std::unique_ptr<QPixmap> bitmap) {
    bitmap_ = std::move(bitmap);
    pictureName_.clear();
    update();
}

QSize TivImagePanel::PictureSize() const {
    if (!pictureName_.isEmpty()) return TivUtils::ScaledSize(pictureName_);  // at today's scale
    return bitmap_ ? bitmap_->deviceIndependentSize().toSize() : QSize(0, 0);
}

void TivImagePanel::OnRescaled(double, double) {
    if (!bitmap_) return;  // a picture still to render is rendered at the new scale
    if (auto again = TivUtils::RenderAgain(*bitmap_)) bitmap_ = std::move(again);
    update();
}

void TivImagePanel::paintEvent(QPaintEvent*) {
    if (!pictureName_.isEmpty()) {
        bitmap_ = TivUtils::GetBitmapWithRightResolutionN(pictureName_);
        pictureName_.clear();
    }
    if (!bitmap_) return;
    QPainter painter(this);
    painter.drawPixmap(0, 0, *bitmap_);
}
