#include "DayList.h"

#include <QLocale>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <cmath>

#include "AppResource.h"
#include "Converter.h"
#include "PedometerDBManager.h"
#include "TivUtils.h"

namespace {
constexpr int kRowHeight = 70;  // 64 of row and a gap, in the 480-wide layout
constexpr int kPage = 24;       // rows read at once around the ones in view

QPixmap Picture(const char* name) {
    const auto pixmap = TivUtils::GetBitmapWithRightResolutionN(QString::fromLatin1(name));
    return pixmap ? *pixmap : QPixmap();
}
}  // namespace

DayList::DayList(std::vector<QDate> days, std::function<void(const QDate&)> onOpen, QWidget* parent)
    : QWidget(parent),
      days_(std::move(days)),
      onOpen_(std::move(onOpen)),
      row_(Picture("history_row.png")),
      pressedRow_(Picture("history_row-pressed.png")) {}

int DayList::RowHeight() {
    return TivUtils::Scaled(kRowHeight);
}

int DayList::RowAt(int y) const {
    const int index = y >= 0 ? y / RowHeight() : -1;
    return index < Count() ? index : -1;
}

void DayList::Load(int first, int last) {
    first = std::max(0, first);
    last = std::min(Count() - 1, last);
    if (first > last) return;
    // Newest first: the range runs from the last row's day to the first row's.
    for (const DAODayTotals& day : PedometerDBManager::GetInstance().GetDayTotals(
             days_[size_t(last)], days_[size_t(first)])) {
        steps_[day.day] = day.steps;
    }
    for (int i = first; i <= last; ++i) steps_.emplace(days_[size_t(i)], 0);
}

int DayList::StepsAt(int index) {
    const auto known = steps_.find(days_[size_t(index)]);
    if (known != steps_.end()) return known->second;
    Load(index - kPage / 2, index + kPage);
    return steps_[days_[size_t(index)]];
}

void DayList::Open(int index) {
    if (index >= 0 && index < Count() && onOpen_) onOpen_(days_[size_t(index)]);
}

void DayList::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const int h = RowHeight();
    const int first = std::max(0, event->rect().top() / h);
    const int last = std::min(Count() - 1, event->rect().bottom() / h);
    const QLocale locale;
    const int margin = TivUtils::Scaled(10);
    const QFont dateFont = TivUtils::CreateFont(TivUtils::FONT_STYLE_PLAIN, TivUtils::Scaled(22));
    const QFont stepsFont = TivUtils::CreateFont(TivUtils::FONT_STYLE_BOLD, TivUtils::Scaled(22));
    for (int i = first; i <= last; ++i) {
        const int y = i * h;
        painter.drawPixmap(margin, y, i == pressedIndex_ ? pressedRow_ : row_);
        const QRect text(margin + TivUtils::Scaled(18), y + TivUtils::Scaled(2),
                         width() - 2 * margin - TivUtils::Scaled(66), TivUtils::Scaled(64));
        painter.setPen(Qt::white);
        painter.setFont(dateFont);
        painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter,
                         locale.toString(days_[size_t(i)], QLocale::ShortFormat));
        painter.setPen(QColor(252, 209, 75));
        painter.setFont(stepsFont);
        painter.drawText(text, Qt::AlignRight | Qt::AlignVCenter,
                         AppResource::GetInstance().GetCountString(
                             QStringLiteral("count__ %@ steps"), StepsAt(i),
                             Converter::GetCountString(StepsAt(i))));
    }
}

void DayList::mousePressEvent(QMouseEvent* event) {
    pressedIndex_ = RowAt(event->position().toPoint().y());
    pressedAt_ = event->globalPosition().toPoint();
    update();
}

void DayList::mouseReleaseEvent(QMouseEvent* event) {
    const int index = pressedIndex_;
    pressedIndex_ = -1;
    update();
    // A drag scrolls the list; only a tap opens the day.
    const QPoint moved = event->globalPosition().toPoint() - pressedAt_;
    if (moved.manhattanLength() <= TivUtils::Scaled(20) &&
        RowAt(event->position().toPoint().y()) == index) {
        Open(index);
    }
}
