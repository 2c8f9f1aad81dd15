#include "BodyReportTable.h"

BodyReportTable BodyReportTable::FromLogs(const std::vector<DAOBodyLog>& logs,
                                          const QDate& today) {
    static double DAOBodyLog::*const kFields[] = {&DAOBodyLog::chest, &DAOBodyLog::waist,
                                                  &DAOBodyLog::hip, &DAOBodyLog::weight};
    // A column takes logs dated on or before its day; "now" takes any.
    const QDate limits[] = {QDate(9999, 12, 31), today.addDays(-7), today.addDays(-30),
                            today.addDays(-90)};
    BodyReportTable table;
    for (auto& row : table.values_) row.fill(kNoValue);
    for (auto log = logs.rbegin(); log != logs.rend(); ++log) {
        const QDate day = log->logDate.date();
        for (int row = 0; row < 4; ++row) {
            const double value = (*log).*kFields[row];
            if (value == 0.0) continue;
            for (int column = 0; column < 4; ++column) {
                if (table.values_[row][column] == kNoValue && day <= limits[column])
                    table.values_[row][column] = value;
            }
        }
    }
    return table;
}
