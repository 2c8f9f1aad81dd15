#include "PedArticleArea.h"

#include <QPaintEvent>
#include <QPainter>
#include <QRegularExpression>
#include <cmath>

#include "TivUtils.h"

PedArticleArea::PedArticleArea(QWidget* parent) : QWidget(parent) {}

bool PedArticleArea::Initialize(const QString& text) {
    text_ = text;
    headings_.clear();
    // Paragraphs become HTML of our own making, every piece of the text escaped.
    QString html;
    const QStringList paragraphs =
        text.trimmed().split(QRegularExpression(QStringLiteral("\\n\\s*\\n")), Qt::SkipEmptyParts);
    for (int i = 0; i < paragraphs.size(); ++i) {
        QStringList lines = paragraphs[i].trimmed().split(QLatin1Char('\n'));
        if (i == 0 && lines.size() == 1) {
            headings_ << lines.front().trimmed();
            html += QStringLiteral("<h1>%1</h1>").arg(lines.front().trimmed().toHtmlEscaped());
            continue;
        }
        if (lines.size() > 1) {
            headings_ << lines.front().trimmed();
            html += QStringLiteral("<h2>%1</h2>").arg(lines.takeFirst().trimmed().toHtmlEscaped());
        }
        html += QStringLiteral("<p>%1</p>").arg(lines.join(QLatin1Char(' ')).toHtmlEscaped());
    }

    document_.setDocumentMargin(TivUtils::Scaled(kMargin));
    document_.setDefaultFont(
        TivUtils::CreateFont(TivUtils::FONT_STYLE_PLAIN, TivUtils::Scaled(kFontSize)));
    document_.setDefaultStyleSheet(
        QStringLiteral(
            "h1 { color: #FCD14B; font-size: %1px; margin-bottom: %3px; }"
            "h2 { color: #FFFFFF; font-size: %2px; margin-top: %4px; margin-bottom: %5px; }"
            "p { color: #D6E2F0; line-height: 135%; margin-top: 0; margin-bottom: 0; }")
            .arg(TivUtils::Scaled(24))
            .arg(TivUtils::Scaled(19))
            .arg(TivUtils::Scaled(10))
            .arg(TivUtils::Scaled(22))
            .arg(TivUtils::Scaled(6)));
    document_.setHtml(html);
    const int width = TivUtils::Scaled(kWidth);
    document_.setTextWidth(width);
    setGeometry(0, 0, width, int(std::ceil(document_.size().height())));
    update();
    return true;
}

void PedArticleArea::OnRescaled(double, double) {
    Initialize(text_);
}

void PedArticleArea::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::TextAntialiasing);
    document_.drawContents(&painter, event->rect());
}
