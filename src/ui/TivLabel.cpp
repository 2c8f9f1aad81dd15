#include "TivLabel.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "TivUtils.h"

TivLabel::TivLabel(QWidget* parent) : QWidget(parent) {
    Initialize();
}

void TivLabel::Initialize() {
    text_.clear();
    textColor_ = Qt::white;
    SetBackColor(QColor(0, 0, 0, 0));
    font_.reset();
    fontSize_ = 9;
    fontStyle_ = TivUtils::FONT_STYLE_PLAIN;
    horizontalAlignment_ = ALIGN_CENTER;
    verticalAlignment_ = ALIGN_MIDDLE;
    needOutline_ = true;
}

void TivLabel::SetBackColor(const QColor& color) {
    backColor_ = color;
    // The panel's own background follows, for anyone who paints the widget's palette.
    QPalette p = palette();
    p.setColor(QPalette::Window, color);
    setPalette(p);
}

void TivLabel::SetFont(const QString& faceName) {
    font_ = TivUtils::CreateFont(fontStyle_, fontSize_, faceName);
}

void TivLabel::OnRescaled(double from, double to) {
    if (fontSize_ != appliedFontSize_) referenceFontSize_ = fontSize_ / from;
    fontSize_ = std::max(1, int(std::lround(referenceFontSize_ * to)));
    appliedFontSize_ = fontSize_;
    if (font_) font_ = TivUtils::CreateFont(fontStyle_, fontSize_, font_->family());
    fitted_.reset();
}

Qt::Alignment TivLabel::Alignment() const {
    Qt::Alignment a;
    switch (horizontalAlignment_) {
        case ALIGN_LEFT:
            a |= Qt::AlignLeft;
            break;
        case ALIGN_RIGHT:
            a |= Qt::AlignRight;
            break;
        default:
            a |= Qt::AlignHCenter;
            break;
    }
    switch (verticalAlignment_) {
        case ALIGN_TOP:
            a |= Qt::AlignTop;
            break;
        case ALIGN_BOTTOM:
            a |= Qt::AlignBottom;
            break;
        default:
            a |= Qt::AlignVCenter;
            break;
    }
    return a;
}

QFont TivLabel::FittedFont() const {
    const QFont base = font_ ? *font_ : TivUtils::CreateFont(fontStyle_, fontSize_);
    if (!shrinkToFit_ || text_.isEmpty()) return base;
    if (fitted_ && fittedText_ == text_ && fittedSize_ == size() &&
        fitted_->family() == base.family())
        return *fitted_;
    const QStringList lines = text_.split(QLatin1Char('\n'));
    const auto fits = [&](int size) {
        const QFontMetrics metrics(TivUtils::CreateFont(fontStyle_, size, base.family()));
        int widest = 0;
        for (const QString& line : lines)
            widest = std::max(widest, metrics.horizontalAdvance(line));
        return widest <= width() && metrics.height() * lines.size() <= std::max(height(), size);
    };
    const QFont font =
        fontSize_ < 2
            ? base
            : TivUtils::CreateFont(fontStyle_, TivUtils::LargestFittingSize(2, fontSize_, fits),
                                   base.family());
    fitted_ = font;
    fittedText_ = text_;
    fittedSize_ = size();
    return font;
}

void TivLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (backColor_.alpha() > 0) painter.fillRect(rect(), backColor_);
    if (text_.isEmpty()) return;
    if (!font_) font_ = TivUtils::CreateFont(fontStyle_, fontSize_);

    painter.setRenderHint(QPainter::TextAntialiasing);
    const QFont font = shrinkToFit_ ? FittedFont() : *font_;
    painter.setFont(font);
    const int flags = int(Alignment()) | Qt::TextWordWrap;
    const QRect box = rect();
    if (needOutline_) {
        // The outline is the text drawn around itself in the outline colour: about one
        // pixel for captions, a little more for the large figures.
        const int radius = std::clamp(font.pixelSize() / 24, 1, 3);
        painter.setPen(OUTLINE_COLOR);
        const int steps = radius == 1 ? 8 : 16;
        for (int i = 0; i < steps; ++i) {
            const double angle = 2 * M_PI * i / steps;
            const QPoint offset(int(std::lround(radius * std::cos(angle))),
                                int(std::lround(radius * std::sin(angle))));
            painter.drawText(box.translated(offset), flags, text_);
        }
    }
    painter.setPen(textColor_);
    painter.drawText(box, flags, text_);
}
