#include "HourlyChart.h"

#include <QFontMetrics>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "AppResource.h"
#include "Converter.h"
#include "GraphicBlue.h"
#include "TivUtils.h"

namespace {
const QColor kBarColor = GraphicBlue::AREA_COLOR;
const QColor kChosenColor(252, 209, 75);
const QColor kSlotColor(255, 255, 255, 16);
const QColor kTextColor(196, 212, 232);
constexpr int kDetailHeight = 30;  // the line under the hour marks

}  // namespace

HourlyChart::HourlyChart(QWidget* parent) : QWidget(parent) {}

void HourlyChart::SetTotals(const HourlyTotals& totals, int firstHour, int lastHour, bool miles) {
    totals_ = totals;
    first_ = std::clamp(firstHour, 0, 23);
    last_ = std::clamp(lastHour, first_, 23);
    miles_ = miles;
    int busiest = -1;
    for (int hour = first_; hour <= last_; ++hour) {
        if (totals_.At(hour).steps > (busiest < 0 ? 0 : totals_.At(busiest).steps)) busiest = hour;
    }
    selected_ = busiest;
    update();
}

void HourlyChart::SelectHour(int hour) {
    selected_ = hour >= first_ && hour <= last_ ? hour : -1;
    update();
}

QString HourlyChart::GetDetailText() const {
    if (selected_ < 0) return {};
    const HourlyTotals::Hour& hour = totals_.At(selected_);
    const QLocale locale;
    const double km = hour.distance / 1000.0;
    return QStringLiteral("%1:00–%2:00: ")
               .arg(selected_, 2, 10, QLatin1Char('0'))
               .arg((selected_ + 1) % 24, 2, 10, QLatin1Char('0')) +
           Converter::GetLocalStringN(hour.steps, 0) + QLatin1Char(' ') +
           AppResource::Text("history__ steps") + QStringLiteral(", ") +
           Converter::GetLocalStringN(miles_ ? Converter::ConvertKilometersToMiles(km) : km, 2) +
           QLatin1Char(' ') + AppResource::Text(miles_ ? "history__ ml" : "today_goal__ km") +
           QStringLiteral(", ") + Converter::GetLocalStringN(hour.calories, 0) + QLatin1Char(' ') +
           AppResource::Text("today_goal__ Cal");
}

QRect HourlyChart::PlotRect() const {
    const int side = TivUtils::Scaled(14);
    const int top = TivUtils::Scaled(8);
    return QRect(side, top, width() - 2 * side,
                 height() - top - TivUtils::Scaled(24) - TivUtils::Scaled(kDetailHeight));
}

int HourlyChart::HourAt(int x) const {
    const QRect plot = PlotRect();
    if (plot.width() <= 0 || x < plot.left() || x > plot.right()) return -1;
    const int count = last_ - first_ + 1;
    return first_ + std::min(count - 1, (x - plot.left()) * count / plot.width());
}

void HourlyChart::mouseReleaseEvent(QMouseEvent* event) {
    const int hour = HourAt(event->position().toPoint().x());
    if (hour >= 0) SelectHour(hour);
    event->accept();
}

void HourlyChart::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect plot = PlotRect();
    if (plot.width() <= 0 || plot.height() <= 0) return;
    const int count = last_ - first_ + 1;
    const double slot = double(plot.width()) / count;
    const int gap = std::max(1, int(slot / 5));
    const int highest = std::max(1, totals_.HighestSteps());
    painter.setFont(TivUtils::CreateFont(TivUtils::FONT_STYLE_PLAIN, TivUtils::Scaled(16)));
    for (int i = 0; i < count; ++i) {
        const int hour = first_ + i;
        const int x = plot.left() + int(std::lround(i * slot));
        const int w =
            std::max(1, int(std::lround((i + 1) * slot)) - int(std::lround(i * slot)) - gap);
        painter.fillRect(QRect(x, plot.top(), w, plot.height()), kSlotColor);
        const int steps = totals_.At(hour).steps;
        if (steps > 0) {
            const int h = std::max(1, int(std::lround(double(steps) / highest * plot.height())));
            painter.fillRect(QRect(x, plot.bottom() + 1 - h, w, h),
                             hour == selected_ ? kChosenColor : kBarColor);
        }
        if (hour % 3 == 0 || count <= 8) {
            painter.setPen(kTextColor);
            painter.drawText(QRect(x - TivUtils::Scaled(10), plot.bottom() + TivUtils::Scaled(4),
                                   w + TivUtils::Scaled(20), TivUtils::Scaled(20)),
                             Qt::AlignHCenter | Qt::AlignTop, QString::number(hour));
        }
    }
    painter.setPen(QPen(Qt::white, 1));
    painter.drawLine(plot.left(), plot.bottom() + 1, plot.right(), plot.bottom() + 1);
    if (totals_.HighestSteps() <= 0) {
        painter.setPen(kTextColor);
        painter.drawText(plot, Qt::AlignCenter, AppResource::Text("history__ No data"));
    }
    // A detail wider than the chart (long words, a narrow window) gets a smaller font,
    // down to the readable floor, and loses its end only below that.
    QFont font = TivUtils::CreateFont(TivUtils::FONT_STYLE_BOLD, TivUtils::Scaled(20));
    const QString detail = GetDetailText();
    const int needed = QFontMetrics(font).horizontalAdvance(detail);
    if (needed > plot.width()) {
        font = TivUtils::CreateFont(TivUtils::FONT_STYLE_BOLD,
                                    std::max(1, TivUtils::Scaled(20) * plot.width() / needed));
    }
    painter.setFont(font);
    painter.setPen(kChosenColor);
    painter.drawText(QRect(plot.left(), height() - TivUtils::Scaled(kDetailHeight), plot.width(),
                           TivUtils::Scaled(kDetailHeight)),
                     Qt::AlignLeft | Qt::AlignVCenter,
                     QFontMetrics(font).elidedText(detail, Qt::ElideRight, plot.width()));
}
