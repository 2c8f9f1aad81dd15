#include "GraphicAcc.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "TivUtils.h"

namespace {
const QColor kGaitColors[3] = {QColor(92, 214, 92), QColor(252, 209, 75), QColor(240, 96, 80)};
const QColor kLineColor(12, 159, 249);
}  // namespace

GraphicAcc::GraphicAcc(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent, false);
}

void GraphicAcc::AddValues(const std::vector<double>& values) {
    for (double value : values) {
        if (!std::isfinite(value)) continue;
        values_.push_back(value);
    }
    while (values_.size() > size_t(kPoints)) values_.pop_front();
    update();
}

void GraphicAcc::SetThresholds(double walk, double jog, double run) {
    thresholds_ = {walk, jog, run};
    update();
}

double GraphicAcc::ScaleTop() const {
    double top = *std::max_element(thresholds_.begin(), thresholds_.end());
    for (double value : values_) top = std::max(top, value);
    return top > 0.0 ? top * 1.15 : 1.0;
}

void GraphicAcc::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = TivUtils::GetScale();
    const QRectF frame = QRectF(rect()).adjusted(10 * scale, 4 * scale, -10 * scale, -4 * scale);
    painter.setPen(QPen(QColor(58, 68, 88), std::max(1.0, 2 * scale)));
    painter.setBrush(QColor(10, 15, 26, 200));
    painter.drawRoundedRect(frame, 10 * scale, 10 * scale);

    const QRectF plot = frame.adjusted(8 * scale, 8 * scale, -8 * scale, -8 * scale);
    const double top = ScaleTop();
    auto yOf = [&](double value) { return plot.bottom() - plot.height() * value / top; };

    // The thresholds, each marked with its gait's initial colour.
    for (int gait = 0; gait < 3; ++gait) {
        QPen pen(kGaitColors[gait], std::max(1.0, 2 * scale), Qt::DashLine);
        painter.setPen(pen);
        const double y = yOf(thresholds_[size_t(gait)]);
        painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
    }

    if (values_.size() < 2) return;
    QPainterPath line;
    const double step = plot.width() / (kPoints - 1);
    // The newest value sits at the right edge.
    double x = plot.right() - step * double(values_.size() - 1);
    bool first = true;
    for (double value : values_) {
        const QPointF point(x, yOf(std::min(value, top)));
        if (first)
            line.moveTo(point);
        else
            line.lineTo(point);
        first = false;
        x += step;
    }
    painter.setPen(QPen(kLineColor, std::max(1.5, 3 * scale)));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(line);
}
