#pragma once

#include <QDate>
#include <array>
#include <vector>

#include "DAOBodyLog.h"

// The numbers of the body report: for chest, waist, hips (cm) and weight (kg), the
// newest measurement and the newest one taken at least 7, 30 and 90 days before today.
// These are the measured values themselves, not differences. A slot without a value
// holds kNoValue. Built from the body log without any widget.
class BodyReportTable {
public:
    static constexpr double kNoValue = -1000.0;
    enum Row { CHEST, WAIST, HIPS, WEIGHT };
    enum Column { NOW, DAYS_7, DAYS_30, DAYS_90 };

    // `logs` oldest first, as PedometerDBManager::GetBodyLogs returns them; rows whose
    // value is 0.0 (not measured) are passed over for that measurement.
    static BodyReportTable FromLogs(const std::vector<DAOBodyLog>& logs, const QDate& today);

    double Value(int row, int column) const { return values_[row][column]; }

private:
    std::array<std::array<double, 4>, 4> values_;
};
