#include "BodyGraphSeries.h"

#include <algorithm>

BodyGraphSeries BodyGraphSeries::FromLogs(const std::vector<DAOBodyLog>& logs,
                                          Measurement measurement, double desired) {
    static double DAOBodyLog::*const kFields[] = {&DAOBodyLog::chest, &DAOBodyLog::waist,
                                                  &DAOBodyLog::hip, &DAOBodyLog::weight};
    double DAOBodyLog::*const field = kFields[measurement];
    BodyGraphSeries graph;
    graph.desired = desired;
    graph.values.reserve(std::max<int>(kMinimumPoints, int(logs.size())));
    for (const DAOBodyLog& log : logs) {
        if (log.*field != 0.0) graph.values.append(log.*field);
    }
    graph.measured = int(graph.values.size());
    if (graph.measured < 2) return graph;

    graph.current = graph.values.last();
    for (double value : graph.values) {
        graph.low = std::min(graph.low, value);
        graph.high = std::max(graph.high, value);
    }
    if (graph.values.size() < kMinimumPoints)
        graph.values.insert(0, kMinimumPoints - graph.values.size(), graph.low);
    if (desired != -1.0) {
        if (desired <= graph.low) {
            graph.low = desired - 3.0;
            if (graph.low < 0.0) graph.low = 0.1;
        }
        if (desired >= graph.high) graph.high = desired + 3.0;
    }
    return graph;
}
