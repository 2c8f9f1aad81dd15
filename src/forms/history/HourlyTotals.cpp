#include "HourlyTotals.h"

#include <algorithm>
#include <mutex>

#include "DAOLap.h"

void HourlyTotals::AddLap(const DAOLap& lap) {
    std::lock_guard lock(lap.recordsMutex);
    for (const auto& minute : lap.minutes) {
        const QDateTime when = lap.startDate.addSecs(qint64(minute->lapMinute - 1) * 60);
        if (when.date() != day_) continue;
        const int hour = when.time().hour();
        Hour& h = hours_[size_t(hour)];
        h.steps += minute->steps;
        h.distance += minute->distance;
        h.calories += minute->calories;
        first_ = first_ < 0 ? hour : std::min(first_, hour);
        last_ = std::max(last_, hour);
    }
}

int HourlyTotals::HighestSteps() const {
    int highest = 0;
    for (const Hour& hour : hours_) highest = std::max(highest, hour.steps);
    return highest;
}
