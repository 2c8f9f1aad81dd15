#include "PedArticleArea.h"

#include <QFontMetrics>
#include <QPainter>
#include <QTextLayout>
#include <cmath>

#include "TivUtils.h"

namespace {
int Scaled(int size) {
    return int(std::lround(size * TivUtils::GetScale()));
}
}  // namespace

PedArticleArea::PedArticleArea(QWidget* parent) : QWidget(parent) {}

bool PedArticleArea::Initialize(const QString& text) {
    text_ = text;
    canvas_ = QPixmap();
    const QFontMetrics metrics(TivUtils::CreateFont(TivUtils::FONT_STYLE_PLAIN, Scaled(kFontSize)));
    QString oneLine = text;
    oneLine.replace(QLatin1Char('\n'), QLatin1Char(' '));
    const int width = Scaled(kWidth);
    const int lines = metrics.horizontalAdvance(oneLine) / width;
    const int height = lines * (metrics.height() + Scaled(15)) + Scaled(kSlack);
    setGeometry(0, 0, width, height);
    return true;
}

void PedArticleArea::OnRescaled(double, double) {
    Initialize(text_);
    update();
}

void PedArticleArea::Render() {
    canvas_ = QPixmap(size() * devicePixelRatioF());
    canvas_.setDevicePixelRatio(devicePixelRatioF());
    canvas_.fill(Qt::transparent);
    QPainter painter(&canvas_);
    painter.setRenderHint(QPainter::TextAntialiasing);
    const QFont font = TivUtils::CreateFont(TivUtils::FONT_STYLE_PLAIN, Scaled(kFontSize));
    painter.setFont(font);
    painter.setPen(Qt::white);
    const QFontMetrics metrics(font);
    // Line ends in the file end lines on screen too.
    QString text = text_;
    text.replace(QLatin1Char('\n'), QChar::LineSeparator);
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WordWrap);
    layout.setTextOption(option);
    layout.beginLayout();
    qreal y = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width());
        line.setPosition(QPointF(0, y));
        y += line.height();
    }
    layout.endLayout();
    const int limit = height();
    const int count = layout.lineCount();
    for (int i = 0; i < count; ++i) {
        const QTextLine line = layout.lineAt(i);
        const bool lastThatFits = i + 1 < count && layout.lineAt(i + 1).rect().bottom() > limit;
        if (lastThatFits) {
            // What does not fit is cut to this one line, ending in an ellipsis.
            const QString rest = text.mid(line.textStart()).simplified();
            painter.drawText(QPointF(0, line.y() + metrics.ascent()),
                             metrics.elidedText(rest, Qt::ElideRight, width()));
            break;
        }
        line.draw(&painter, QPointF());
    }
}

void PedArticleArea::showEvent(QShowEvent*) {
    if (canvas_.isNull()) Render();
}

void PedArticleArea::paintEvent(QPaintEvent*) {
    if (canvas_.isNull()) Render();
    QPainter(this).drawPixmap(0, 0, canvas_);
}
