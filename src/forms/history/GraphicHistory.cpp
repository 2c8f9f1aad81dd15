#include "GraphicHistory.h"

#include <QPainter>
#include <QPainterPath>

#include "GraphScale.h"
#include "GraphicBlue.h"
#include "TivUtils.h"

namespace {
const QColor kGridColor(255, 255, 255, 56);
const QColor kAxisTextColor(196, 212, 232);
constexpr int kAxisGap = 5;

QLineF PixelLine(int x1, int y1, int x2, int y2) {
    return QLineF(x1 + 0.5, y1 + 0.5, x2 + 0.5, y2 + 0.5);
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

QStringList GraphicHistory::AxisTexts() const {
    // Fewer decimals on the small layout, where the margin is narrower in font terms.
    return GraphScale(values_).LabelTexts(type_, TivUtils::IsHVGA() ? 1 : 2);
}

void GraphicHistory::paintEvent(QPaintEvent*) {
    const int left = GraphScale::kLeft;
    const int right = width() - GraphScale::kRight;
    const int top = GraphScale::kTop;
    const int bottom = height() - GraphScale::kBottom;
    if (right <= left || bottom <= top) return;

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const std::vector<QPoint> points = GraphScale(values_).Points(values_, size());
    if (points.size() >= 2) {
        QPainterPath profile;
        profile.moveTo(QPointF(points.front()) + QPointF(0.5, 0.5));
        for (std::size_t i = 1; i < points.size(); ++i)
            profile.lineTo(QPointF(points[i]) + QPointF(0.5, 0.5));
        painter.setPen(QPen(Qt::white, 2.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(profile);
        QPainterPath area = profile;
        area.lineTo(points.back().x() + 0.5, bottom + 0.5);
        area.lineTo(points.front().x() + 0.5, bottom + 0.5);
        area.closeSubpath();
        painter.fillPath(area, GraphicBlue::AREA_COLOR);
    }

    const std::vector<int> lines = GraphScale::LabelLines(height());
    if (grid_) {
        painter.setPen(QPen(kGridColor, 1));
        for (std::size_t i = 1; i < lines.size(); ++i)
            painter.drawLine(PixelLine(left, lines[i], right, lines[i]));
    }
    painter.setPen(QPen(Qt::white, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(left + 0.5, top + 0.5, right - left, bottom - top));

    // The axis labels shrink together until the widest fits the margin.
    const QStringList texts = AxisTexts();
    int size = std::max(10, int(18 * TivUtils::GetScale() + 0.5));
    QFont font = TivUtils::CreateFont(TivUtils::FONT_STYLE_PLAIN, size);
    for (; size > 8; --size) {
        font = TivUtils::CreateFont(TivUtils::FONT_STYLE_PLAIN, size);
        const QFontMetrics metrics(font);
        int widest = 0;
        for (const QString& text : texts) widest = std::max(widest, metrics.horizontalAdvance(text));
        if (widest <= left - kAxisGap) break;
    }
    painter.setFont(font);
    painter.setPen(kAxisTextColor);
    for (int i = 0; i < texts.size() && i < int(lines.size()); ++i) {
        painter.drawText(QRect(0, lines[i] - size / 2 - 1, left - kAxisGap, size + 2),
                         Qt::AlignRight | Qt::AlignVCenter, texts[i]);
    }
}
