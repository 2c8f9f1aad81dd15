#include "TivImagePanel.h"

#include <QPainter>

TivImagePanel::TivImagePanel(QWidget* parent) : QWidget(parent) {}

bool TivImagePanel::Initialize(const QPoint& position, std::unique_ptr<QPixmap> bitmap) {
    bitmap_ = std::move(bitmap);
    const QSize size = bitmap_ ? bitmap_->size() : QSize(0, 0);
    setGeometry(QRect(position, size));
    return true;
}

void TivImagePanel::SetImage(std::unique_ptr<QPixmap> bitmap) {
    bitmap_ = std::move(bitmap);
    update();
}

void TivImagePanel::paintEvent(QPaintEvent*) {
    if (!bitmap_) return;
    QPainter painter(this);
    painter.drawPixmap(0, 0, *bitmap_);
}
