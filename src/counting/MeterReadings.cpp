#include "MeterReadings.h"

#include "Converter.h"
#include "GraphSeries.h"

namespace {
constexpr int kIntervalSeconds = 5;

double inUnits(double kmOrKmh, bool miles) {
    return miles ? Converter::ConvertKilometersToMiles(kmOrKmh) : kmOrKmh;
}

QString speedText(double speed, bool pace) {
    return Converter::GetLocalStringN(pace ? MeterReadings::PaceOf(speed) : speed, 1);
}
}  // namespace

double MeterReadings::PaceOf(double speed) {
    return speed > 0.0 ? 1.0 / (speed / 60.0) : 0.0;
}

MeterReadings MeterReadings::Compute(const std::vector<DAOLapMinutes>& minutes,
                                     const std::vector<DAOLapSeconds>& seconds, bool miles,
                                     bool pace, int graphType) {
    double metres = 0.0;
    double kcal = 0.0;
    for (const DAOLapMinutes& m : minutes) {
        metres += m.distance;
        kcal += m.calories;
    }
    const int count = static_cast<int>(seconds.size());
    const int lapSeconds = count * kIntervalSeconds;

    MeterReadings r;
    r.distance = Converter::GetLocalStringN(inUnits(metres / 1000.0, miles), 3);
    r.calories = Converter::GetLocalStringN(kcal, 1);
    r.time = Converter::GetTimeStringN(lapSeconds);
    const double current =
        count > 0 ? Converter::GetAverageSpeedKMH(seconds.back().distance, kIntervalSeconds) : 0.0;
    const double average = Converter::GetAverageSpeedKMH(metres, lapSeconds);
    r.speed = speedText(inUnits(current, miles), pace);
    r.averageSpeed = speedText(inUnits(average, miles), pace);

    r.graph = GraphSeries::FromSeconds(seconds, graphType, miles);
    return r;
}
