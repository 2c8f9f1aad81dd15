#include "GraphSeries.h"

#include <algorithm>
#include <mutex>

#include "Converter.h"
#include "DAOLap.h"
#include "DAOLapSeconds.h"

double GraphSeries::ValueOf(const DAOLapSeconds& record, int type, bool miles) {
    const auto speed = [&] {
        const double kmh = Converter::GetAverageSpeedKMH(record.distance, kRecordSeconds);
        return miles ? Converter::ConvertKilometersToMiles(kmh) : kmh;
    };
    switch (type) {
        case STEP_RATE:
            return record.steps * 12.0;
        case CALORIES:
            return record.caloriesNoise;
        case SPEED:
            return speed();
        case PACE: {
            const double s = speed();
            return s > 0.0 ? 1.0 / (s / 60.0) : 0.0;
        }
        default:
            return 0.0;
    }
}

std::vector<double> GraphSeries::FromSeconds(const std::vector<DAOLapSeconds>& seconds, int type,
                                             bool miles) {
    std::vector<double> values(kPoints, 0.0);
    const int count = static_cast<int>(seconds.size());
    // Slot i shows record (count - kPoints + i); slots before the first record stay 0.
    for (int i = std::max(0, kPoints - count); i < kPoints; ++i) {
        values[i] = ValueOf(seconds[count - kPoints + i], type, miles);
    }
    return values;
}

std::vector<double> GraphSeries::FromLap(const DAOLap* lap, int type, bool miles) {
    if (lap == nullptr) return std::vector<double>(kPoints, 0.0);
    std::vector<DAOLapSeconds> newest;
    {
        std::lock_guard lock(lap->recordsMutex);
        const std::size_t first =
            lap->seconds.size() > std::size_t(kPoints) ? lap->seconds.size() - kPoints : 0;
        newest.reserve(lap->seconds.size() - first);
        for (std::size_t i = first; i < lap->seconds.size(); ++i) {
            newest.push_back(*lap->seconds[i]);
        }
    }
    return FromSeconds(newest, type, miles);
}
