#include "TivDatePicker.h"

#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "AppResource.h"
#include "TivUtils.h"

namespace {
int Scaled(double size) {
    return int(std::lround(size * TivUtils::GetScale()));
}

const QColor kShade(0, 0, 0, 170);
const QColor kPanel(22, 34, 56);
const QColor kEdge(58, 68, 88);
const QColor kText(0xF2, 0xF5, 0xFA);
const QColor kDim(0x6A, 0x76, 0x8A);
const QColor kAccent(12, 159, 249);
const QColor kValue(252, 209, 75);
}  // namespace

TivDatePicker::TivDatePicker(QWidget& screen) : QWidget(&screen) {
    setProperty("closesOnBack", true);
    setProperty("covers", true);
    setProperty("touchTarget", true);
    setGeometry(screen.rect());
    hide();
}

void TivDatePicker::Open(const QDate& date, const QDate& minimum, const QDate& maximum,
                         std::function<void(const QDate&)> chosen) {
    selected_ = date;
    minimum_ = minimum;
    maximum_ = maximum;
    month_ = QDate(date.year(), date.month(), 1);
    chosen_ = std::move(chosen);
    pressed_ = Part::None;
    if (parentWidget() != nullptr) setGeometry(parentWidget()->rect());
    raise();
    show();
    update();
}

bool TivDatePicker::Allowed(const QDate& day) const {
    return day.isValid() && (minimum_.isNull() || day >= minimum_) &&
           (maximum_.isNull() || day <= maximum_);
}

QDate TivDatePicker::FirstCell() const {
    const int firstWeekday = int(QLocale().firstDayOfWeek());
    const int back = (month_.dayOfWeek() - firstWeekday + 7) % 7;
    return month_.addDays(-back);
}

TivDatePicker::Geometry TivDatePicker::Measure() const {
    Geometry g;
    const int margin = Scaled(8);
    const int header = Scaled(72);
    const int weekdays = Scaled(34);
    const int footer = Scaled(72);
    const int inner = width() - 2 * margin;
    g.cellWidth = inner / 7;
    const int room = height() - 2 * margin - header - weekdays - footer - Scaled(16);
    g.cellHeight = std::max(1, std::min(Scaled(72), room / 6));
    const int used = header + weekdays + 6 * g.cellHeight + footer + Scaled(16);
    const int top = std::max(margin, (height() - used) / 2);
    g.previous = QRect(margin, top, header, header);
    g.next = QRect(width() - margin - header, top, header, header);
    g.title = QRect(g.previous.right() + 1, top, g.next.left() - g.previous.right() - 1, header);
    g.weekdays = QRect(margin, top + header, 7 * g.cellWidth, weekdays);
    g.grid = QRect(margin, g.weekdays.bottom() + 1, 7 * g.cellWidth, 6 * g.cellHeight);
    g.cancel = QRect(margin + inner / 4, g.grid.bottom() + 1 + Scaled(16), inner / 2, footer);
    return g;
}

QRect TivDatePicker::CellRect(const Geometry& g, int index) const {
    return QRect(g.grid.left() + (index % 7) * g.cellWidth, g.grid.top() + (index / 7) * g.cellHeight,
                 g.cellWidth, g.cellHeight);
}

TivDatePicker::Part TivDatePicker::PartAt(const QPoint& point, QDate* day) const {
    const Geometry g = Measure();
    if (g.previous.contains(point)) return Part::Previous;
    if (g.next.contains(point)) return Part::Next;
    if (g.cancel.contains(point)) return Part::Cancel;
    if (!g.grid.contains(point)) return Part::None;
    const int column = (point.x() - g.grid.left()) / std::max(1, g.cellWidth);
    const int row = (point.y() - g.grid.top()) / std::max(1, g.cellHeight);
    const QDate cell = FirstCell().addDays(row * 7 + column);
    if (cell.month() != month_.month() || !Allowed(cell)) return Part::None;
    if (day != nullptr) *day = cell;
    return Part::Day;
}

QDate TivDatePicker::DayAt(const QPoint& point) const {
    QDate day;
    return PartAt(point, &day) == Part::Day ? day : QDate();
}

void TivDatePicker::mousePressEvent(QMouseEvent* event) {
    event->accept();  // the screen beneath takes no touch while the picker shows
    pressed_ = PartAt(event->position().toPoint(), nullptr);
}

void TivDatePicker::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
    QDate day;
    const Part part = PartAt(event->position().toPoint(), &day);
    const Part pressed = pressed_;
    pressed_ = Part::None;
    if (part != pressed) return;
    switch (part) {
        case Part::Previous:
            month_ = month_.addMonths(-1);
            update();
            break;
        case Part::Next:
            month_ = month_.addMonths(1);
            update();
            break;
        case Part::Cancel:
            hide();
            break;
        case Part::Day: {
            hide();
            // The handler may rebuild the screen: nothing below uses the picker.
            const auto chosen = chosen_;
            if (chosen) chosen(day);
            break;
        }
        case Part::None:
            break;
    }
}

void TivDatePicker::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), kShade);
    const Geometry g = Measure();
    const QRect panel = QRect(g.previous.topLeft(), g.cancel.bottomRight())
                            .united(g.grid)
                            .adjusted(-Scaled(4), -Scaled(4), Scaled(4), Scaled(8));
    painter.setPen(QPen(kEdge, 1));
    painter.setBrush(kPanel);
    painter.drawRoundedRect(QRectF(panel).adjusted(0.5, 0.5, -0.5, -0.5), Scaled(16), Scaled(16));

    const QLocale locale;
    painter.setPen(kText);
    painter.setFont(TivUtils::CreateFont(TivUtils::FONT_STYLE_BOLD, Scaled(36)));
    painter.drawText(g.previous, Qt::AlignCenter, QStringLiteral("‹"));
    painter.drawText(g.next, Qt::AlignCenter, QStringLiteral("›"));
    painter.setFont(TivUtils::CreateFont(TivUtils::FONT_STYLE_BOLD, Scaled(28)));
    painter.drawText(g.title, Qt::AlignCenter,
                     locale.standaloneMonthName(month_.month()) + QLatin1Char(' ') +
                         QString::number(month_.year()));

    painter.setFont(TivUtils::CreateFont(TivUtils::FONT_STYLE_PLAIN, Scaled(20)));
    painter.setPen(kDim);
    const QDate first = FirstCell();
    for (int i = 0; i < 7; ++i) {
        const QRect box(g.weekdays.left() + i * g.cellWidth, g.weekdays.top(), g.cellWidth,
                        g.weekdays.height());
        painter.drawText(box, Qt::AlignCenter,
                         locale.dayName(first.addDays(i).dayOfWeek(), QLocale::ShortFormat));
    }

    painter.setFont(TivUtils::CreateFont(TivUtils::FONT_STYLE_PLAIN, Scaled(28)));
    for (int i = 0; i < 42; ++i) {
        const QDate day = first.addDays(i);
        if (day.month() != month_.month()) continue;
        const QRect cell = CellRect(g, i).adjusted(Scaled(3), Scaled(3), -Scaled(3), -Scaled(3));
        if (day == selected_) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(kAccent);
            painter.drawRoundedRect(cell, Scaled(10), Scaled(10));
        }
        painter.setPen(!Allowed(day) ? kDim : day == selected_ ? kText : kValue);
        painter.drawText(cell, Qt::AlignCenter, QString::number(day.day()));
    }

    painter.setPen(QPen(kEdge, 1));
    painter.setBrush(QColor(12, 159, 249, 60));
    painter.drawRoundedRect(g.cancel, Scaled(12), Scaled(12));
    painter.setPen(kText);
    painter.setFont(TivUtils::CreateFont(TivUtils::FONT_STYLE_BOLD, Scaled(26)));
    painter.drawText(g.cancel, Qt::AlignCenter,
                     AppResource::GetInstance().GetString(QStringLiteral("body__ Cancel")));
}
