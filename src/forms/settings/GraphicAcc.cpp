#include "GraphicAcc.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "PedometerForm.h"
#include "TivUtils.h"

namespace {
const QColor kGaitColors[3] = {QColor(92, 214, 92), QColor(252, 209, 75), QColor(240, 96, 80)};
const QColor kLineColor(12, 159, 249);
// The panel, and the colour behind its rounded corners where no screen is found.
const QColor kPanel(10, 15, 26);
const QColor kBackground(12, 26, 46);
}  // namespace

GraphicAcc::GraphicAcc(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
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
    backdropTop_ = -1.0;
    update();
}

void GraphicAcc::resizeEvent(QResizeEvent*) {
    backdropTop_ = -1.0;
}

double GraphicAcc::ScaleTop() const {
    double top = *std::max_element(thresholds_.begin(), thresholds_.end());
    for (double value : values_) top = std::max(top, value);
    return top > 0.0 ? top * 1.15 : 1.0;
}

QRectF GraphicAcc::PlotRect() const {
    const double scale = TivUtils::GetScale();
    return QRectF(rect()).adjusted(18 * scale, 12 * scale, -18 * scale, -12 * scale);
}

void GraphicAcc::RenderBackdrop(double top) {
    backdrop_ = QPixmap(size());
    backdrop_.fill(kBackground);
    QPainter painter(&backdrop_);
    // Behind the rounded corners lies the screen's own picture, not a square of colour:
    // the screen paints its background there once, without its controls.
    QWidget* screen = parentWidget();
    while (screen != nullptr && qobject_cast<PedometerForm*>(screen) == nullptr)
        screen = screen->parentWidget();
    if (screen != nullptr) {
        screen->render(&painter, QPoint(), QRegion(QRect(mapTo(screen, QPoint(0, 0)), size())),
                       QWidget::DrawWindowBackground);
    }
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = TivUtils::GetScale();
    const double border = std::max(1.0, 2 * scale);
    painter.setPen(QPen(QColor(58, 68, 88), border));
    painter.setBrush(kPanel);
    painter.drawRoundedRect(QRectF(rect()).adjusted(border, border, -border, -border), 10 * scale,
                            10 * scale);
    // The thresholds, each in its gait's colour.
    const QRectF plot = PlotRect();
    for (int gait = 0; gait < 3; ++gait) {
        painter.setPen(QPen(kGaitColors[gait], std::max(1.0, 2 * scale), Qt::DashLine));
        const double y = plot.bottom() - plot.height() * thresholds_[size_t(gait)] / top;
        painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
    }
    backdropTop_ = top;
}

void GraphicAcc::paintEvent(QPaintEvent*) {
    const double top = ScaleTop();
    if (top != backdropTop_ || backdrop_.size() != size()) RenderBackdrop(top);
    QPainter painter(this);
    painter.drawPixmap(0, 0, backdrop_);
    if (values_.size() < 2) return;

    const QRectF plot = PlotRect();
    // Separate segments with round caps: Qt strokes these far faster than one wide
    // antialiased polyline, which matters at this rate.
    QVector<QLineF> segments;
    segments.reserve(int(values_.size()));
    QPointF previous;
    const double step = plot.width() / (kPoints - 1);
    // The newest value sits at the right edge.
    double x = plot.right() - step * double(values_.size() - 1);
    for (size_t i = 0; i < values_.size(); ++i) {
        const QPointF point(x, plot.bottom() - plot.height() * std::min(values_[i], top) / top);
        if (i > 0) segments.append(QLineF(previous, point));
        previous = point;
        x += step;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        QPen(kLineColor, std::max(1.5, 3 * TivUtils::GetScale()), Qt::SolidLine, Qt::FlatCap));
    painter.drawLines(segments);
}
