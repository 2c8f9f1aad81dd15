#include "HistoryTotals.h"

#include "AppResource.h"
#include "Converter.h"
#include "DAOLap.h"

namespace {
QString Text(const char* key) {
    return AppResource::GetInstance().GetString(QString::fromUtf8(key));
}
}  // namespace

void HistoryTotals::AddLap(const DAOLap& lap) {
    for (const DAOLapMinutes& minute : lap.CopyMinutes()) {
        if (minute.steps >= 0 && minute.distance >= 0.0) {
            AddMinute(minute);
            continue;
        }
        // Steps taken away by hand lower the totals but are no minute of their own.
        steps += minute.steps;
        distance += minute.distance;
        calories += minute.calories;
        seconds += minute.secondsCompleted;
    }
}

void HistoryTotals::AddMinute(const DAOLapMinutes& minute) {
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
        Text("history__ Steps: ") + QString::number(steps),
        Text("history__ Distance: ") +
            Converter::GetLocalStringN(miles_ ? Converter::ConvertKilometersToMiles(km) : km, 1) +
            QLatin1Char(' ') + Text(miles_ ? "history__ ml" : "today_goal__ km"),
        Text("history__ Time: ") + QString::number(seconds / 60) + QLatin1Char(' ') +
            Text("today_goal__ min"),
        Text("history__ Calories: ") + Converter::GetLocalStringN(calories, 1),
    };
}

QStringList HistoryTotals::AverageRows() const {
    const double speed = SpeedInUnits(distance, seconds);
    const double burn = seconds > 0 ? calories * 60.0 / seconds : 0.0;
    const double rate = seconds > 0 ? steps * 60.0 / seconds : 0.0;
    return {
        Text("history__ Average speed: ") + Converter::GetLocalStringN(speed, 1) +
            QLatin1Char(' ') + Text(miles_ ? "history__ ml/h" : "history__ km/h"),
        Text("history__ Average pace: ") + Converter::GetLocalStringN(PaceOf(speed), 1) +
            QLatin1Char(' ') + Text(miles_ ? "history__ min/ml" : "history__ min/km"),
        Text("history__ Calories burn: ") + Converter::GetLocalStringN(burn, 1) +
            QLatin1Char(' ') + Text("history__ (Cal/min)"),
        Text("history__ Steps rate: ") + Converter::GetLocalStringN(rate, 1) +
            QLatin1Char(' ') + Text("pacer__  steps/min"),
    };
}
