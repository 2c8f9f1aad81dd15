#include "GraphicHistory.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "AppResource.h"
#include "ChartAxis.h"
#include "GraphScale.h"
#include "GraphicBlue.h"
#include "TivUtils.h"

namespace {
const QColor kGridColor(255, 255, 255, 56);
const QColor kAxisTextColor(196, 212, 232);
constexpr int kMaxValueSteps = 4;
constexpr int kMaxTimeTicks = 4;

QLineF PixelLine(int x1, int y1, int x2, int y2) {
    return QLineF(x1 + 0.5, y1 + 0.5, x2 + 0.5, y2 + 0.5);
}

double Largest(const std::vector<double>& values) {
    double largest = 0.0;
    for (const double value : values) largest = std::max(largest, value);
    return largest;
}
}  // namespace

GraphicHistory::GraphicHistory(QWidget* parent) : QWidget(parent) {}

bool GraphicHistory::Initialize(const QRect& area, std::vector<double> values, int type,
                                bool grid) {
    setGeometry(area);
    grid_ = grid;
    type_ = type;
    SetCurrentValues(std::move(values));
    return true;
}

void GraphicHistory::SetCurrentType(int type) {
    type_ = type;
    update();
}

void GraphicHistory::SetCurrentValues(std::vector<double> values) {
    values_ = GraphScale::Sanitize(std::move(values));
    update();
}

void GraphicHistory::SetTimes(std::vector<QDateTime> times) {
    times_ = std::move(times);
    update();
}

void GraphicHistory::SetUnit(const QString& unit) {
    unit_ = unit;
    update();
}

bool GraphicHistory::HasData() const {
    return Largest(values_) > 0.0;
}

QStringList GraphicHistory::AxisTexts() const {
    QStringList texts;
    if (!HasData()) return texts;
    const ChartAxis axis(Largest(values_), kMaxValueSteps);
    const std::vector<double> ticks = axis.Ticks();
    for (auto tick = ticks.rbegin(); tick != ticks.rend(); ++tick) texts << axis.Label(*tick);
    return texts;
}

QStringList GraphicHistory::TimeTexts() const {
    QStringList texts;
    if (times_.size() != values_.size() || !HasData()) return texts;
    for (const ChartAxis::TimeTick& tick : ChartAxis::TimeTicks(times_, kMaxTimeTicks))
        texts << tick.text;
    return texts;
}

void GraphicHistory::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QFont font = TivUtils::CreateFont(TivUtils::FONT_STYLE_PLAIN, TivUtils::Scaled(17));
    painter.setFont(font);
    const QFontMetrics metrics(font);
    const QStringList labels = AxisTexts();
    int widest = metrics.horizontalAdvance(QStringLiteral("00"));
    for (const QString& label : labels) widest = std::max(widest, metrics.horizontalAdvance(label));

    const int gap = TivUtils::Scaled(5);
    const int left = widest + 2 * gap;
    const int right = width() - TivUtils::Scaled(10);
    const int top = metrics.height() + gap;                // the unit above the frame
    const int bottom = height() - metrics.height() - gap;  // the clock times below
    if (right <= left || bottom <= top) return;

    if (!HasData()) {
        painter.setPen(QPen(Qt::white, 1));
        painter.drawRect(QRectF(left + 0.5, top + 0.5, right - left, bottom - top));
        painter.setPen(kAxisTextColor);
        painter.drawText(QRect(left, top, right - left, bottom - top), Qt::AlignCenter,
                         AppResource::GetInstance().GetString(QStringLiteral("history__ No data")));
        return;
    }

    const ChartAxis axis(Largest(values_), kMaxValueSteps);
    const auto yOf = [&](double value) { return bottom - axis.Share(value) * (bottom - top); };
    const auto xOf = [&](std::size_t i) {
        return values_.size() < 2 ? double(left)
                                  : left + double(i) * (right - left) / double(values_.size() - 1);
    };
    if (values_.size() >= 2) {
        QPainterPath profile;
        profile.moveTo(xOf(0), yOf(values_[0]));
        for (std::size_t i = 1; i < values_.size(); ++i) profile.lineTo(xOf(i), yOf(values_[i]));
        QPainterPath area = profile;
        area.lineTo(right, bottom);
        area.lineTo(left, bottom);
        area.closeSubpath();
        painter.fillPath(area, GraphicBlue::AREA_COLOR);
        painter.setPen(QPen(Qt::white, 2.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(profile);
    }

    const std::vector<double> ticks = axis.Ticks();
    for (const double tick : ticks) {
        const int y = int(std::lround(yOf(tick)));
        if (grid_ && tick > 0.0 && tick < axis.Top()) {
            painter.setPen(QPen(kGridColor, 1));
            painter.drawLine(PixelLine(left, y, right, y));
        }
        painter.setPen(kAxisTextColor);
        painter.drawText(QRect(0, y - metrics.height() / 2, left - gap, metrics.height()),
                         Qt::AlignRight | Qt::AlignVCenter, axis.Label(tick));
    }
    painter.setPen(QPen(Qt::white, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(left + 0.5, top + 0.5, right - left, bottom - top));

    painter.setPen(kAxisTextColor);
    // The unit over the frame's left edge, clear of the top tick's label.
    painter.drawText(QRect(left, 0, right - left, top - gap / 2), Qt::AlignLeft | Qt::AlignBottom,
                     unit_);
    if (times_.size() == values_.size()) {
        for (const ChartAxis::TimeTick& tick : ChartAxis::TimeTicks(times_, kMaxTimeTicks)) {
            const int x = int(std::lround(xOf(std::size_t(tick.index))));
            painter.setPen(QPen(Qt::white, 1));
            painter.drawLine(PixelLine(x, bottom, x, bottom + gap));
            painter.setPen(kAxisTextColor);
            const int w = metrics.horizontalAdvance(tick.text);
            const int textX = std::clamp(x - w / 2, 0, width() - w);
            painter.drawText(QRect(textX, bottom + gap / 2, w, metrics.height() + gap / 2),
                             Qt::AlignCenter, tick.text);
        }
    }
}
