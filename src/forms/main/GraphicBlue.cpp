#include "GraphicBlue.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "AppResource.h"
#include "GraphScale.h"
#include "GraphSeries.h"
#include "Metronome.h"
#include "PedometerOptions.h"
#include "TivLabel.h"
#include "TivUtils.h"

namespace {

const QColor kFrameColor(Qt::white);
const QColor kGridColor(255, 255, 255, 56);
const QColor kAxisTextColor(196, 212, 232);
const QColor kUnitTextColor(150, 196, 240);
const QColor kHintTextColor(128, 148, 176);
constexpr int kAxisGap = 5;            // between an axis label and the frame
constexpr int kMinAxisFont = 10;       // axis labels shrink to fit down to this size,
constexpr int kReadableAxisFont = 14;  // but rather lose decimals below this one

QString Text(const char* key) {
    return AppResource::GetInstance().GetString(QString::fromLatin1(key));
}

// A pixel-aligned 1-pixel line from (x1, y1) to (x2, y2), crisp under antialiasing.
QLineF PixelLine(int x1, int y1, int x2, int y2) {
    return QLineF(x1 + 0.5, y1 + 0.5, x2 + 0.5, y2 + 0.5);
}

}  // namespace

GraphicBlue::GraphicBlue(QWidget* parent)
    : QWidget(parent), redrawTimer_([this] { OnTimerExpired(); }), pacerBeating_([] {
          const Metronome& metronome = Metronome::GetInstance();
          return metronome.GetInterval() > 0 && metronome.IsEnabled();
      }) {
    handOver_ = std::make_unique<GraphValuesHandOver>([this](GraphValuesHandOver::Delivery d) {
        SetCurrentValues(std::move(d.values));
        if (d.updateGraphic) UpdateGraphic();
    });
}

GraphicBlue::~GraphicBlue() = default;

bool GraphicBlue::Initialize(const QRect& area, const QStringList& labels, int fontSize,
                             bool showTitle) {
    setGeometry(area);
    fontSize_ = std::max(1, fontSize);
    showTitle_ = showTitle;

    for (int i = 0; i < GraphScale::kLabelCount; ++i) {
        delete axisLabels_[i];
        axisLabels_[i] =
            MakeLabel(QString::number(i), TivLabel::ALIGN_RIGHT, fontSize_, kAxisTextColor);
        axisLabels_[i]->SetText(labels.value(i));
    }
    axisFontSize_ = 0;
    FitAxisLabels();
    delete unitLabel_;
    unitLabel_ = MakeLabel(QStringLiteral("unit"), TivLabel::ALIGN_RIGHT,
                           std::max(1, fontSize_ * 17 / 20), kUnitTextColor);
    delete titleLabel_;
    titleLabel_ = nullptr;
    if (showTitle_) {
        titleLabel_ =
            MakeLabel(QStringLiteral("title"), TivLabel::ALIGN_LEFT, fontSize_, Qt::white);
        titleLabel_->SetFontStyle(TivUtils::FONT_STYLE_BOLD);
    }
    delete hintLabel_;
    hintLabel_ = MakeLabel(QStringLiteral("hint"), TivLabel::ALIGN_RIGHT,
                           std::max(1, fontSize_ * 15 / 20), kHintTextColor);
    LayoutLabels();

    type_ = PedometerOptions::GetInstance().mainGraphic;
    UpdateLabels();
    return true;
}

TivLabel* GraphicBlue::MakeLabel(const QString& name, int alignment, int size,
                                 const QColor& color) {
    auto* label = new TivLabel(this);
    label->setObjectName(name);
    label->SetHorizontalAlligment(alignment);
    label->SetFontSize(size);
    label->SetTextColor(color);
    label->SetNeedOutline(false);
    label->show();
    return label;
}

TivLabel* GraphicBlue::GetAxisLabel(int index) const {
    return index >= 0 && index < GraphScale::kLabelCount ? axisLabels_[index] : nullptr;
}

void GraphicBlue::resizeEvent(QResizeEvent*) {
    LayoutLabels();
}

void GraphicBlue::LayoutLabels() {
    const int w = width();
    const int h = height();
    const GraphScale scale(values_);
    for (int i = 0; i < GraphScale::kLabelCount; ++i) {
        if (axisLabels_[i] == nullptr) continue;
        // Centred on its line; the top label may reach into the band above the frame.
        // Labels past the scale's steps are empty and stay under the top one.
        const int line = scale.LabelLine(std::min(i, scale.Steps() - 1), h);
        axisLabels_[i]->setGeometry(0, line - fontSize_ / 2, GraphScale::kLeft - kAxisGap,
                                    fontSize_);
    }
    const int plotWidth = std::max(0, w - GraphScale::kLeft - GraphScale::kRight);
    const int titleWidth = titleLabel_ != nullptr ? plotWidth * 11 / 20 : 0;
    if (titleLabel_ != nullptr) {
        titleLabel_->setGeometry(GraphScale::kLeft, 0, titleWidth, GraphScale::kTop);
    }
    if (unitLabel_ != nullptr) {
        unitLabel_->setGeometry(GraphScale::kLeft + titleWidth, 0, plotWidth - titleWidth,
                                GraphScale::kTop);
    }
    if (hintLabel_ != nullptr) {
        hintLabel_->setGeometry(GraphScale::kLeft, h - GraphScale::kBottom, plotWidth,
                                GraphScale::kBottom);
    }
}

void GraphicBlue::SetCurrentValues(std::vector<double> values) {
    values_ = GraphScale::Sanitize(std::move(values));
    RefreshAxisLabels();
}

void GraphicBlue::PostCurrentValues(std::vector<double> values, bool updateGraphic) {
    handOver_->Post(std::move(values), updateGraphic);
}

void GraphicBlue::RefreshAxisLabels() {
    // The most fraction digits (up to the layout's) that still leave the numbers
    // readable in the margin: a slow pace of 2,345.67 min/km reads 2,346.
    const GraphScale scale(values_);
    QStringList texts;
    for (int decimals = TivUtils::IsHVGA() ? 1 : 2; decimals >= 0; --decimals) {
        texts = scale.LabelTexts(type_, decimals);
        // The readable size follows the layout (a 320-wide screen is drawn at 2/3).
        const int readable = std::min(fontSize_, int(kReadableAxisFont * TivUtils::GetScale()));
        if (LargestFittingAxisFont(texts) >= readable) break;
    }
    for (int i = 0; i < GraphScale::kLabelCount; ++i) {
        if (axisLabels_[i] != nullptr) axisLabels_[i]->SetText(texts[i]);
    }
    FitAxisLabels();
    LayoutLabels();  // the lines move with the scale's steps
}

int GraphicBlue::LargestFittingAxisFont(const QStringList& texts) const {
    return TivUtils::LargestFittingSize(int(kMinAxisFont * TivUtils::GetScale()), fontSize_, texts,
                                        GraphScale::kLeft - kAxisGap);
}

void GraphicBlue::FitAxisLabels() {
    // One size for all four, the largest at which the widest text fits the margin.
    QStringList texts;
    for (const TivLabel* label : axisLabels_) {
        if (label != nullptr) texts << label->GetText();
    }
    const int size = LargestFittingAxisFont(texts);
    if (size == axisFontSize_) return;
    axisFontSize_ = size;
    for (TivLabel* label : axisLabels_) {
        if (label == nullptr) continue;
        label->SetFontSize(size);
        label->SetFont(QString());  // a label makes its font only once otherwise
    }
}

void GraphicBlue::SetCurrentType(int type) {
    type_ = type;
    RefreshAxisLabels();
    UpdateLabels();
}

void GraphicBlue::UpdateLabels() {
    const bool miles = PedometerOptions::GetInstance().measurementSystem;
    QString unit;
    QString title;
    switch (type_) {
        case GraphSeries::STEP_RATE:
            unit = Text("meter__ (steps/min)");
            title = Text("meter__ Steps");
            break;
        case GraphSeries::CALORIES:
            unit = Text("history__ (Cal/min)");
            title = Text("meter__ Calories burned");
            break;
        case GraphSeries::SPEED:
            unit = Text(miles ? "meter__ (ml/h)" : "meter__ (km/h)");
            title = Text("meter__ Speed");
            break;
        case GraphSeries::PACE:
            unit = Text(miles ? "meter__ (min/ml)" : "meter__ (min/km)");
            title = Text("meter__ Pace");
            break;
        default:
            break;
    }
    if (unitLabel_ != nullptr) unitLabel_->SetText(unit);
    if (showTitle_ && titleLabel_ != nullptr) titleLabel_->SetText(title);
    InvalidateGraph();
}

void GraphicBlue::InvalidateGraph() {
    // The labels are children: repainting the graph repaints them too.
    update();
}

void GraphicBlue::UpdateGraphic() {
    if (hintLabel_ == nullptr) return;
    if (!TivUtils::IsHiRes() && pacerBeating_ && pacerBeating_()) {
        hintLabel_->SetText(Text("meter__ no metronom"));
        hintLabel_->update();
        return;
    }
    hintLabel_->SetText(Text("meter__ Tap to change"));
    hintLabel_->update();
    redrawTimer_.Start(kRedrawDelayMs);
}

void GraphicBlue::OnTimerExpired() {
    InvalidateGraph();
}

void GraphicBlue::paintEvent(QPaintEvent*) {
    const int w = width();
    const int h = height();
    const int left = GraphScale::kLeft;
    const int right = w - GraphScale::kRight;
    const int top = GraphScale::kTop;
    const int bottom = h - GraphScale::kBottom;
    if (right <= left || bottom <= top) return;

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);

    // The profile: a white line from point to point, then the area below it painted
    // over the line, which leaves a thin white rim along the top of the area.
    const GraphScale scale(values_);
    const std::vector<QPoint> points = scale.Points(values_, size());
    if (points.size() >= 2) {
        QPainterPath profile;
        profile.moveTo(QPointF(points.front()) + QPointF(0.5, 0.5));
        for (std::size_t i = 1; i < points.size(); ++i) {
            profile.lineTo(QPointF(points[i]) + QPointF(0.5, 0.5));
        }
        painter.setPen(QPen(Qt::white, 2.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(profile);

        QPainterPath area = profile;
        area.lineTo(points.back().x() + 0.5, bottom + 0.5);
        area.lineTo(points.front().x() + 0.5, bottom + 0.5);
        area.closeSubpath();
        painter.setPen(Qt::NoPen);
        painter.fillPath(area, AREA_COLOR);
    }

    // Grid lines over the area, faint enough to read as guides on blue and on black.
    painter.setPen(QPen(kGridColor, 1));
    if (scale.HasData()) {
        for (int i = 1; i < scale.Steps(); ++i) {
            const int y = scale.LabelLine(i, h);
            painter.drawLine(PixelLine(left, y, right, y));
        }
    } else {
        // Nothing above zero yet: say so rather than draw a flat line.
        painter.setPen(kHintTextColor);
        painter.setFont(TivUtils::CreateFont(TivUtils::FONT_STYLE_PLAIN, fontSize_));
        painter.drawText(QRect(left, top, right - left, bottom - top), Qt::AlignCenter,
                         Text("history__ No data"));
    }

    // The frame last, so its edges stay crisp over the area.
    painter.setPen(QPen(kFrameColor, 1));
    painter.drawLine(PixelLine(left, top, right, top));
    painter.drawLine(PixelLine(left, bottom, right, bottom));
    painter.drawLine(PixelLine(left, top, left, bottom));
    painter.drawLine(PixelLine(right, top, right, bottom));
}
