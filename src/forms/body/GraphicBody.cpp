#include "GraphicBody.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "TivUtils.h"

namespace {
const QColor kDesired(76, 217, 100);
// Room for the labels above and below the line, and for the end dot at the sides.
constexpr double kBandTop = 30.0;
constexpr double kBandBottom = 30.0;
constexpr double kSide = 14.0;
}  // namespace

GraphicBody::GraphicBody(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void GraphicBody::SetCurrentValues(const QVector<double>& series, double low, double high,
                                   double desired) {
    series_ = series;
    low_ = low;
    high_ = high;
    desired_ = desired;
    update();
}

void GraphicBody::SetAccentColor(const QColor& color) {
    accent_ = color;
    update();
}

QRectF GraphicBody::PlotArea() const {
    const double scale = TivUtils::GetScale();
    return QRectF(kSide * scale, kBandTop * scale, width() - 2 * kSide * scale,
                  height() - (kBandTop + kBandBottom) * scale);
}

double GraphicBody::ValueToY(double value) const {
    const QRectF area = PlotArea();
    if (high_ <= low_) return area.center().y();
    const double share = std::clamp((value - low_) / (high_ - low_), 0.0, 1.0);
    return area.bottom() - share * area.height();
}

void GraphicBody::paintEvent(QPaintEvent*) {
    if (series_.size() < 2) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = TivUtils::GetScale();
    const QRectF area = PlotArea();
    // Years of daily entries are more points than pixels: each point then stands for the
    // average of a run of days, which shows the trend instead of day-to-day noise. The
    // newest point stays the newest value.
    const int maxPoints = std::max(2, int(area.width() / (6.0 * scale)));
    QVector<double> shown;
    if (series_.size() <= maxPoints) {
        shown = series_;
    } else {
        const int buckets = maxPoints - 1;
        for (int b = 0; b < buckets; ++b) {
            const qsizetype from = series_.size() * b / buckets;
            const qsizetype to = std::max(from + 1, series_.size() * (b + 1) / buckets);
            double sum = 0.0;
            for (qsizetype i = from; i < to; ++i) sum += series_[i];
            shown.append(sum / double(to - from));
        }
        shown.append(series_.last());
    }
    const double step = area.width() / double(shown.size() - 1);
    QVector<QPointF> points;
    points.reserve(shown.size());
    for (int i = 0; i < shown.size(); ++i)
        points.append(QPointF(area.left() + i * step, ValueToY(shown[i])));

    // Quadratic curves through the midpoints: smooth, and never beyond the measured values.
    QPainterPath line(points.first());
    for (int i = 1; i < points.size() - 1; ++i)
        line.quadTo(points[i], (points[i] + points[i + 1]) / 2.0);
    line.lineTo(points.last());

    QPainterPath fill = line;
    fill.lineTo(points.last().x(), height());
    fill.lineTo(points.first().x(), height());
    fill.closeSubpath();
    QLinearGradient fade(0, area.top(), 0, height());
    QColor top = accent_;
    top.setAlpha(110);
    QColor bottom = accent_;
    bottom.setAlpha(0);
    fade.setColorAt(0, top);
    fade.setColorAt(1, bottom);
    painter.fillPath(fill, fade);

    if (desired_ != -1.0) {
        const double y = ValueToY(desired_);
        QPen dash(kDesired, std::max(1.5, 2.0 * scale), Qt::CustomDashLine, Qt::RoundCap);
        dash.setDashPattern({3, 3});
        painter.setPen(dash);
        painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
        painter.setPen(Qt::NoPen);
        painter.setBrush(kDesired);
        painter.drawEllipse(QPointF(area.right(), y), 4 * scale, 4 * scale);
    }

    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(accent_, std::max(2.0, 3.0 * scale), Qt::SolidLine, Qt::RoundCap,
                        Qt::RoundJoin));
    painter.drawPath(line);

    // The newest value: a white dot with a halo in the line's colour.
    const QPointF last = points.last();
    QColor halo = accent_;
    halo.setAlpha(70);
    painter.setPen(Qt::NoPen);
    painter.setBrush(halo);
    painter.drawEllipse(last, 10 * scale, 10 * scale);
    painter.setBrush(accent_);
    painter.drawEllipse(last, 6 * scale, 6 * scale);
    painter.setBrush(Qt::white);
    painter.drawEllipse(last, 3.5 * scale, 3.5 * scale);
}
