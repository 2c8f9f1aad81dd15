#pragma once

#include <QVector>
#include <vector>

#include "DAOBodyLog.h"

// The numbers behind one body-meter graph, built from the body log without any widget:
// the measured values oldest first, padded at the old end with the lowest value to at
// least 30 points, the vertical range and the newest value.
//
// The range runs from the lowest to the highest measurement; a desired value (-1 for
// none) widens it to keep the goal in view with 3 units of margin (never below 0.1).
// Everything is metric (cm, kg); the screen converts the labels, not the series.
class BodyGraphSeries {
public:
    enum Measurement { CHEST, WAIST, HIPS, WEIGHT };
    static constexpr int kMinimumPoints = 30;

    // `logs` oldest first, as PedometerDBManager::GetBodyLogs returns them; rows where
    // the measurement is 0.0 (not measured) are skipped.
    static BodyGraphSeries FromLogs(const std::vector<DAOBodyLog>& logs, Measurement measurement,
                                    double desired);

    int measured = 0;  // days with this measurement; a graph needs two
    QVector<double> values;
    double low = 30000.0;
    double high = 0.0;
    double current = 0.0;
    double desired = -1.0;
};
