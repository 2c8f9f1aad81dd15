#include "HistoryTotals.h"

#include "AppResource.h"
#include "Converter.h"
#include "DAOLap.h"

void HistoryTotals::AddLap(const DAOLap& lap) {
    // Minutes are numbered from 1: minute k began k - 1 minutes after the lap's start.
    for (const DAOLapMinutes& minute : lap.CopyMinutes()) {
        if (minute.steps >= 0 && minute.distance >= 0.0) {
            AddMinute(minute, lap.startDate.addSecs(60LL * (minute.lapMinute - 1)));
            continue;
        }
        // Steps taken away by hand lower the totals but are no minute of their own.
        steps += minute.steps;
        distance += minute.distance;
        calories += minute.calories;
        seconds += minute.secondsCompleted;
    }
}

void HistoryTotals::AddMinute(const DAOLapMinutes& minute, const QDateTime& start) {
    minuteStarts.push_back(start);
    calorieSeries.push_back(minute.calories);
    distance += minute.distance;
    steps += minute.steps;
    calories += minute.calories;
    seconds += minute.secondsCompleted;
    const double speed = SpeedInUnits(minute.distance, minute.secondsCompleted);
    speedSeries.push_back(speed);
    paceSeries.push_back(PaceOf(speed));
}

void HistoryTotals::PadSeries() {
    for (std::vector<double>* series : {&calorieSeries, &speedSeries, &paceSeries}) {
        if (series->size() < 2) series->insert(series->begin(), 0.0);
    }
    while (minuteStarts.size() < calorieSeries.size()) {
        const QDateTime first = minuteStarts.empty() ? QDateTime() : minuteStarts.front();
        minuteStarts.insert(minuteStarts.begin(), first.isValid() ? first.addSecs(-60) : first);
    }
}

double HistoryTotals::PaceOf(double speed) {
    const double perMinute = speed / 60.0;
    return perMinute > 0.0 ? 1.0 / perMinute : 0.0;
}

double HistoryTotals::SpeedInUnits(double metres, int time) const {
    const double kmh = Converter::GetAverageSpeedKMH(metres, time);
    return miles_ ? Converter::ConvertKilometersToMiles(kmh) : kmh;
}

QStringList HistoryTotals::TotalRows() const {
    const double km = distance / 1000.0;
    return {
        AppResource::Text("history__ Steps: ") + Converter::GetCountString(steps),
        AppResource::Text("history__ Distance: ") +
            Converter::WithUnit(Converter::GetLocalStringN(
                                    miles_ ? Converter::ConvertKilometersToMiles(km) : km, 1),
                                AppResource::Text(miles_ ? "history__ ml" : "today_goal__ km")),
        AppResource::Text("history__ Time: ") +
            Converter::WithUnit(Converter::GetCountString(seconds / 60),
                                AppResource::Text("today_goal__ min")),
        AppResource::Text("history__ Calories: ") + Converter::GetLocalStringN(calories, 1),
    };
}

QStringList HistoryTotals::AverageRows() const {
    const double speed = SpeedInUnits(distance, seconds);
    const double burn = seconds > 0 ? calories * 60.0 / seconds : 0.0;
    const double rate = seconds > 0 ? steps * 60.0 / seconds : 0.0;
    // Without time or distance there is no average: a dash, not a zero that reads as
    // a measurement (a pace of 0.0 min/km would be infinitely fast).
    const auto average = [](bool known, double value, const QString& unit) {
        return known ? Converter::WithUnit(Converter::GetLocalStringN(value, 1), unit)
                     : QStringLiteral("-");
    };
    const bool timed = seconds > 0;
    return {
        AppResource::Text("history__ Average speed: ") +
            average(timed, speed, AppResource::Text(miles_ ? "history__ ml/h" : "history__ km/h")),
        AppResource::Text("history__ Average pace: ") +
            average(speed > 0.0, PaceOf(speed),
                    AppResource::Text(miles_ ? "history__ min/ml" : "history__ min/km")),
        AppResource::Text("history__ Calories burn: ") +
            average(timed, burn, AppResource::Text("history__ (Cal/min)")),
        AppResource::Text("history__ Steps rate: ") +
            average(timed, rate, AppResource::Text("pacer__  steps/min")),
    };
}
