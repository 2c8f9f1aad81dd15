#include "PeriodChart.h"

#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "AppResource.h"
#include "GraphicBlue.h"
#include "PeriodSummary.h"
#include "TivUtils.h"

namespace {
const QColor kBarColor = GraphicBlue::AREA_COLOR;
const QColor kBestColor(252, 209, 75);
const QColor kGoalColor(63, 212, 131);
const QColor kGridColor(255, 255, 255, 50);
const QColor kSlotColor(255, 255, 255, 16);
const QColor kTextColor(196, 212, 232);
}  // namespace

PeriodChart::PeriodChart(QWidget* parent) : QWidget(parent) {}

void PeriodChart::SetSummary(const PeriodSummary* summary, int measure, double goal) {
    summary_ = summary;
    measure_ = measure;
    goal_ = goal;
    update();
}

ChartAxis PeriodChart::Axis(double highest, double goal) {
    return ChartAxis(std::max({highest, goal, 0.0}), 4);
}

QRect PeriodChart::PlotRect() const {
    const int left = TivUtils::Scaled(62);
    const int top = TivUtils::Scaled(14);
    return QRect(left, top, width() - left - TivUtils::Scaled(12),
                 height() - top - TivUtils::Scaled(30));
}

void PeriodChart::mousePressEvent(QMouseEvent* event) {
    pressed_ = true;
    event->accept();
}

void PeriodChart::mouseReleaseEvent(QMouseEvent* event) {
    if (pressed_ && rect().contains(event->position().toPoint()) && onTap_) onTap_();
    pressed_ = false;
}

void PeriodChart::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect plot = PlotRect();
    if (plot.width() <= 0 || plot.height() <= 0 || summary_ == nullptr) return;
    const int count = summary_->DayCount();
    const ChartAxis axis = Axis(summary_->Highest(measure_), goal_);
    const auto yOf = [&](double value) {
        return plot.bottom() + 1 - int(std::lround(axis.Share(value) * plot.height()));
    };
    // One font for every tick, values and dates alike.
    painter.setFont(TivUtils::CreateFont(TivUtils::FONT_STYLE_PLAIN, TivUtils::Scaled(17)));
    const double slot = count > 0 ? double(plot.width()) / count : plot.width();
    const auto xOf = [&](int index) { return plot.left() + int(std::lround(index * slot)); };
    const bool longPeriod = count > 62;
    const std::vector<int> weekStarts = summary_->WeekStarts(QLocale().firstDayOfWeek());

    // Every other week shaded on long periods; every day's slot on short ones.
    if (longPeriod) {
        for (size_t w = 0; w < weekStarts.size(); w += 2) {
            const int end = w + 1 < weekStarts.size() ? weekStarts[w + 1] : count;
            painter.fillRect(
                QRect(xOf(weekStarts[w]), plot.top(), xOf(end) - xOf(weekStarts[w]), plot.height()),
                kSlotColor);
        }
    }
    const int best = summary_->BestDay(measure_);
    const int gap = slot >= 6.0 ? std::max(1, int(slot / 5)) : 0;
    for (int i = 0; i < count; ++i) {
        const int x = xOf(i);
        const int w = std::max(1, xOf(i + 1) - x - gap);
        if (!longPeriod) painter.fillRect(QRect(x, plot.top(), w, plot.height()), kSlotColor);
        const double value = summary_->Value(i, measure_);
        if (value <= 0.0) continue;
        const int y = std::min(yOf(value), plot.bottom());  // a tiny day still shows
        painter.fillRect(QRect(x, y, w, plot.bottom() + 1 - y), i == best ? kBestColor : kBarColor);
    }

    // Scale: a grid line with its value at each step, and the base line.
    for (const double value : axis.Ticks()) {
        const int y = yOf(value);
        if (value > 0.0) {
            painter.setPen(QPen(kGridColor, 1));
            painter.drawLine(plot.left(), y, plot.right(), y);
        }
        painter.setPen(kTextColor);
        painter.drawText(QRect(0, y - TivUtils::Scaled(11), plot.left() - TivUtils::Scaled(6),
                               TivUtils::Scaled(22)),
                         Qt::AlignRight | Qt::AlignVCenter, axis.Label(value));
    }
    painter.setPen(QPen(Qt::white, 1));
    painter.drawLine(plot.left(), plot.bottom() + 1, plot.right(), plot.bottom() + 1);
    if (summary_->Highest(measure_) <= 0.0) {
        painter.setPen(kTextColor);
        painter.drawText(plot, Qt::AlignCenter,
                         AppResource::GetInstance().GetString(QStringLiteral("history__ No data")));
    }

    if (goal_ > 0.0) {
        painter.setPen(QPen(kGoalColor, std::max(1, TivUtils::Scaled(2)), Qt::DashLine));
        painter.drawLine(plot.left(), yOf(goal_), plot.right(), yOf(goal_));
    }

    // Time marks under the base line: months on long periods, weeks (or days) otherwise.
    const QLocale locale;
    const int labelTop = plot.bottom() + TivUtils::Scaled(6);
    const QFontMetrics metrics = painter.fontMetrics();
    const auto mark = [&](int index, const QString& text) {
        const int x = xOf(index);
        if (x + TivUtils::Scaled(2) + metrics.horizontalAdvance(text) > width()) return;  // cut off
        painter.setPen(QPen(Qt::white, 1));
        painter.drawLine(x, plot.bottom() + 1, x, plot.bottom() + TivUtils::Scaled(5));
        painter.setPen(kTextColor);
        painter.drawText(
            QRect(x + TivUtils::Scaled(2), labelTop, TivUtils::Scaled(90), TivUtils::Scaled(22)),
            Qt::AlignLeft | Qt::AlignTop, text);
    };
    if (longPeriod) {
        for (int i = 0; i < count; ++i) {
            const QDate day = summary_->Day(i).day;
            if (day.day() == 1) mark(i, locale.toString(day, QStringLiteral("MMM")));
        }
    } else if (count <= 7) {
        for (int i = 0; i < count; ++i)
            mark(i, locale.dayName(summary_->Day(i).day.dayOfWeek(), QLocale::ShortFormat));
    } else {
        for (const int i : weekStarts)
            mark(i, locale.toString(summary_->Day(i).day, QStringLiteral("d MMM")));
    }
}
