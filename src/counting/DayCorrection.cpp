#include "DayCorrection.h"

#include <algorithm>
#include <cmath>

#include "Body.h"
#include "DAOLap.h"

namespace {
constexpr int kSecondsPerDay = 24 * 60 * 60;

// The share `part` of the running total `sum`, rounded; differences of consecutive
// results split a whole number without losing or inventing any of it.
qint64 ShareOf(qint64 sum, qint64 part, qint64 whole) {
    return whole == 0 ? 0 : std::llround(double(sum) * double(part) / double(whole));
}
}  // namespace

int DayCorrection::Cadence(int gait) {
    switch (gait) {
        case 2:
            return 150;
        case 3:
            return 170;
        default:
            return 110;
    }
}

int DayCorrection::StepsForDistance(double metres, int gait, const Body& body) {
    const double length = body.getStepSize(gait == 2 || gait == 3 ? gait : 1);
    if (!(metres > 0.0) || !(length > 0.0)) return 0;
    return int(std::min(std::llround(metres / length), qint64(kSecondsPerDay)));
}

std::unique_ptr<DAOLap> DayCorrection::Added(const QDateTime& start, int steps, int gait,
                                             const Body& body) {
    if (gait != 2 && gait != 3) gait = 1;
    const int cadence = Cadence(gait);
    const qint64 seconds = (qint64(std::max(steps, 0)) * 60 + cadence - 1) / cadence;
    if (steps < 1 || seconds > kSecondsPerDay) return nullptr;
    const double length = body.getStepSize(gait);
    const double kmh = length * cadence * 60.0 / 1000.0;
    const double caloriesPerMinute = body.calculateCalories(float(kmh));

    auto lap = std::make_unique<DAOLap>();
    lap->manual = true;
    const QDateTime midnight = start.date().addDays(1).startOfDay();
    lap->startDate = std::min(start, midnight.addSecs(-seconds));
    lap->techDate = lap->startDate.date().startOfDay();
    lap->endDate = lap->startDate.addSecs(seconds);
    int left = steps;
    for (int number = 1; left > 0; ++number) {
        auto minute = std::make_unique<DAOLapMinutes>();
        minute->lapMinute = number;
        minute->steps = std::min(left, cadence);
        minute->secondsCompleted = int((qint64(minute->steps) * 60 + cadence - 1) / cadence);
        minute->distance = minute->steps * length;
        minute->calories = caloriesPerMinute * minute->secondsCompleted / 60.0;
        left -= minute->steps;
        lap->minutes.push_back(std::move(minute));
    }
    return lap;
}

std::unique_ptr<DAOLap> DayCorrection::TakenAway(const DAOLap& lap, int steps) {
    const std::vector<DAOLapMinutes> minutes = lap.CopyMinutes();
    qint64 counted = 0;
    qint64 seconds = 0;
    for (const DAOLapMinutes& minute : minutes) {
        counted += std::max(minute.steps, 0);
        seconds += std::max(minute.secondsCompleted, 0);
    }
    const qint64 taken = std::min<qint64>(steps, counted);
    if (taken < 1) return nullptr;

    auto correction = std::make_unique<DAOLap>();
    correction->manual = true;
    correction->startDate = lap.startDate.addSecs(1);
    correction->techDate = lap.techDate;
    correction->endDate = lap.endDate.value_or(lap.startDate).addSecs(1);
    // The seconds go in the same share as the steps: time spent on counted steps that
    // were not walked was not active either.
    const qint64 secondsTaken = ShareOf(seconds, taken, counted);
    const double share = double(taken) / double(counted);
    qint64 stepsSoFar = 0;
    qint64 secondsSoFar = 0;
    for (const DAOLapMinutes& minute : minutes) {
        const qint64 stepsBefore = ShareOf(stepsSoFar, taken, counted);
        const qint64 secondsBefore = ShareOf(secondsSoFar, secondsTaken, seconds);
        stepsSoFar += std::max(minute.steps, 0);
        secondsSoFar += std::max(minute.secondsCompleted, 0);
        auto mirrored = std::make_unique<DAOLapMinutes>();
        mirrored->lapMinute = minute.lapMinute;
        mirrored->steps = -int(ShareOf(stepsSoFar, taken, counted) - stepsBefore);
        mirrored->secondsCompleted =
            -int(ShareOf(secondsSoFar, secondsTaken, seconds) - secondsBefore);
        mirrored->distance = -minute.distance * share;
        mirrored->calories = -minute.calories * share;
        correction->minutes.push_back(std::move(mirrored));
    }
    return correction;
}
