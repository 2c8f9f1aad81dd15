#include "TivImagePanel.h"

#include <QPainter>

#include "TivUtils.h"

TivImagePanel::TivImagePanel(QWidget* parent) : QWidget(parent) {}

bool TivImagePanel::Initialize(const QPoint& position, std::unique_ptr<QPixmap> bitmap) {
    bitmap_ = std::move(bitmap);
    const QSize size = bitmap_ ? bitmap_->deviceIndependentSize().toSize() : QSize(0, 0);
    setGeometry(QRect(position, size));
    return true;
}

void TivImagePanel::SetImage(std::unique_ptr<QPixmap> bitmap) {
    bitmap_ = std::move(bitmap);
    update();
}

void TivImagePanel::OnRescaled(double, double) {
    if (!bitmap_) return;
    if (auto again = TivUtils::RenderAgain(*bitmap_)) bitmap_ = std::move(again);
    update();
}

void TivImagePanel::paintEvent(QPaintEvent*) {
    if (!bitmap_) return;
    QPainter painter(this);
    painter.drawPixmap(0, 0, *bitmap_);
}
