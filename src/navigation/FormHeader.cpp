#include "FormHeader.h"

#include <QFontMetrics>

#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "TivUtils.h"

namespace {
// 480-wide layout sizes, scaled with the layout.
constexpr int kTitleHeight = 64;
constexpr int kTabHeight = 64;

const QColor kTitleTop(0x1B, 0x2C, 0x4A, 235);
const QColor kTitleBottom(0x10, 0x1B, 0x30, 235);
const QColor kTabBack(0x0A, 0x10, 0x1E, 215);
const QColor kEdge(0x3A, 0x44, 0x58);
const QColor kAccent(12, 159, 249);
const QColor kText(0xF2, 0xF5, 0xFA);
const QColor kDimText(0x9A, 0xA6, 0xBA);
}  // namespace

FormHeader::FormHeader(QWidget* parent) : QWidget(parent) {}

void FormHeader::SetTitleText(const QString& title) {
    title_ = title;
    update();
}

void FormHeader::AddTab(const QString& text, int actionId) {
    tabs_.append(Tab{text, actionId});
    setProperty("touchTarget", true);
    update();
}

QString FormHeader::GetTabText(int index) const {
    return index >= 0 && index < tabs_.size() ? tabs_[index].text : QString();
}

int FormHeader::GetTabActionId(int index) const {
    return index >= 0 && index < tabs_.size() ? tabs_[index].actionId : 0;
}

void FormHeader::SetSelectedTab(int index) {
    selected_ = index >= 0 && index < tabs_.size() ? index : -1;
    update();
}

int FormHeader::TitleHeight() const {
    return title_.isEmpty() && !tabs_.isEmpty() ? 0 : TivUtils::Scaled(kTitleHeight);
}

int FormHeader::PreferredHeight() const {
    return TitleHeight() + (tabs_.isEmpty() ? 0 : TivUtils::Scaled(kTabHeight));
}

QRect FormHeader::TabRect(int index) const {
    if (index < 0 || index >= tabs_.size()) return {};
    const int top = TitleHeight();
    const int left = width() * index / int(tabs_.size());
    const int right = width() * (index + 1) / int(tabs_.size());
    return QRect(left, top, right - left, height() - top);
}

int FormHeader::TabAt(const QPoint& point) const {
    for (int i = 0; i < tabs_.size(); ++i) {
        if (TabRect(i).contains(point)) return i;
    }
    return -1;
}

void FormHeader::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);

    const int titleHeight = TitleHeight();
    if (titleHeight > 0) {
        const QRect titleBox(0, 0, width(), titleHeight);
        QLinearGradient fill(0, 0, 0, titleHeight);
        fill.setColorAt(0, kTitleTop);
        fill.setColorAt(1, kTitleBottom);
        painter.fillRect(titleBox, fill);
        painter.setFont(TivUtils::CreateFont(TivUtils::FONT_STYLE_BOLD, TivUtils::Scaled(34)));
        painter.setPen(kText);
        painter.drawText(titleBox.adjusted(TivUtils::Scaled(20), 0, -TivUtils::Scaled(20), 0),
                         Qt::AlignVCenter | Qt::AlignLeft, title_);
    }
    if (tabs_.isEmpty()) return;

    painter.fillRect(QRect(0, titleHeight, width(), height() - titleHeight), kTabBack);
    painter.fillRect(QRect(0, titleHeight, width(), 1), kEdge);
    painter.fillRect(QRect(0, height() - 1, width(), 1), kEdge);
    const int underline = std::max(2, TivUtils::Scaled(5));
    for (int i = 0; i < tabs_.size(); ++i) {
        const QRect box = TabRect(i);
        const bool selected = i == selected_;
        if (i == pressed_)
            painter.fillRect(box, QColor(kAccent.red(), kAccent.green(), kAccent.blue(), 60));
        if (selected) {
            painter.fillRect(QRect(box.left() + TivUtils::Scaled(8), box.bottom() - underline + 1,
                                   box.width() - 2 * TivUtils::Scaled(8), underline),
                             kAccent);
        }
        if (i > 0) {
            painter.fillRect(QRect(box.left(), box.top() + box.height() / 4, 1, box.height() / 2),
                             kEdge);
        }
        // A word longer than its tab is drawn smaller rather than cut.
        const QRect textBox =
            box.adjusted(TivUtils::Scaled(4), 0, -TivUtils::Scaled(4), -underline);
        const int style = selected ? TivUtils::FONT_STYLE_BOLD : TivUtils::FONT_STYLE_PLAIN;
        const int size = TivUtils::LargestFittingSize(
            TivUtils::Scaled(14) + 1, TivUtils::Scaled(24), [&](int candidate) {
                const QRect needed =
                    QFontMetrics(TivUtils::CreateFont(style, candidate))
                        .boundingRect(textBox, Qt::AlignCenter | Qt::TextWordWrap, tabs_[i].text);
                return needed.width() <= textBox.width() && needed.height() <= textBox.height();
            });
        painter.setFont(TivUtils::CreateFont(style, size));
        painter.setPen(selected ? kText : kDimText);
        painter.drawText(textBox, Qt::AlignCenter | Qt::TextWordWrap, tabs_[i].text);
    }
}

void FormHeader::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    pressed_ = TabAt(event->position().toPoint());
    update();
}

void FormHeader::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const int tab = pressed_;
    pressed_ = -1;
    update();
    if (tab < 0 || TabAt(event->position().toPoint()) != tab) return;
    SetSelectedTab(tab);
    // The listener may rebuild or close the screen: nothing below touches the header.
    if (IActionEventListener* listener = listener_.Get()) {
        listener->OnActionPerformed(*this, tabs_[tab].actionId);
    }
}
