#include "PeriodSummary.h"

#include "Converter.h"
#include "DAOTarget.h"

PeriodSummary::PeriodSummary(const QDate& from, const QDate& to,
                             const std::vector<DAODayTotals>& rows, bool miles)
    : from_(from), to_(to), miles_(miles) {
    if (!from.isValid() || !to.isValid() || from > to) return;
    days_.resize(size_t(from.daysTo(to) + 1));
    for (size_t i = 0; i < days_.size(); ++i) days_[i].day = from.addDays(qint64(i));
    for (const DAODayTotals& row : rows) {
        const qint64 index = from.daysTo(row.day);
        if (row.day.isValid() && index >= 0 && index < qint64(days_.size())) {
            days_[size_t(index)] = row;
        }
    }
}

double PeriodSummary::Value(int index, int measure) const {
    const DAODayTotals& day = days_[size_t(index)];
    switch (measure) {
        case DISTANCE: {
            const double km = day.distance / 1000.0;
            return miles_ ? Converter::ConvertKilometersToMiles(km) : km;
        }
        case CALORIES:
            return day.calories;
        case TIME:
            return day.seconds / 60.0;
        default:
            return day.steps;
    }
}

double PeriodSummary::Total(int measure) const {
    double total = 0.0;
    for (int i = 0; i < DayCount(); ++i) total += Value(i, measure);
    return total;
}

double PeriodSummary::DailyAverage(int measure) const {
    return DayCount() > 0 ? Total(measure) / DayCount() : 0.0;
}

double PeriodSummary::Highest(int measure) const {
    const int best = BestDay(measure);
    return best >= 0 ? Value(best, measure) : 0.0;
}

int PeriodSummary::BestDay(int measure) const {
    int best = -1;
    for (int i = 0; i < DayCount(); ++i) {
        if (Value(i, measure) > (best >= 0 ? Value(best, measure) : 0.0)) best = i;
    }
    return best;
}

int PeriodSummary::ActiveDays() const {
    int active = 0;
    for (const DAODayTotals& day : days_) active += day.steps > 0 ? 1 : 0;
    return active;
}

double PeriodSummary::Goal(int measure, const DAOTarget& target) const {
    if (target.targetActive == 1 && measure == DISTANCE) {
        return miles_ ? Converter::ConvertKilometersToMiles(target.distance) : target.distance;
    }
    if (target.targetActive == 2 && measure == CALORIES) return target.calories;
    if (target.targetActive == 3 && measure == TIME) return target.activityTime;
    if (target.targetActive == DAOTarget::STEPS && measure == STEPS) return target.steps;
    return -1.0;
}

std::vector<int> PeriodSummary::WeekStarts(Qt::DayOfWeek firstDay) const {
    std::vector<int> starts;
    int index = 0;
    for (const DAODayTotals& day : days_) {
        if (day.day.dayOfWeek() == firstDay) starts.push_back(index);
        ++index;
    }
    return starts;
}
