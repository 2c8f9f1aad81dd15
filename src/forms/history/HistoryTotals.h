#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <vector>

class DAOLap;
class DAOLapMinutes;

// What the day and lap history show, computed from minute records without any widget:
// the totals, the three per-minute series (calories, speed, pace) and the texts of
// the totals and averages rows.
//
// Minutes are added in record order; speeds and paces are in the user's units (km/h
// and min/km, or mph and min/mi when `miles` is set). Plain values, no threads.
class HistoryTotals {
public:
    explicit HistoryTotals(bool miles) : miles_(miles) {}
    bool Miles() const { return miles_; }

    void AddLap(const DAOLap& lap);
    // `start` is when the minute began (none when unknown).
    void AddMinute(const DAOLapMinutes& minute, const QDateTime& start = {});
    // A series with fewer than two values gets a 0 in front (a minute earlier), so that
    // a graph of a single minute (or none) still has a line.
    void PadSeries();

    // Minutes per km (or mile) at `speed`; 0 when standing.
    static double PaceOf(double speed);

    // "Steps: 1234", "Distance: 1.2 km", "Time: 1 min", "Calories: 55.0".
    QStringList TotalRows() const;
    // Average speed, pace, calorie burn per minute and step rate over the whole time;
    // rates are 0 when no time was counted.
    QStringList AverageRows() const;

    int steps = 0;
    double calories = 0.0;  // kcal
    double distance = 0.0;  // metres
    int seconds = 0;
    std::vector<double> calorieSeries;
    std::vector<double> speedSeries;
    std::vector<double> paceSeries;
    std::vector<QDateTime> minuteStarts;  // when each point of the series began

private:
    double SpeedInUnits(double metres, int time) const;

    bool miles_;
};
