#include "ChartAxis.h"

#include <QLocale>
#include <algorithm>
#include <cmath>

ChartAxis::ChartAxis(double largest, int maxSteps) {
    maxSteps = std::max(1, maxSteps);
    if (!std::isfinite(largest) || largest <= 0.0) return;
    const double raw = largest / maxSteps;
    const double magnitude = std::pow(10.0, std::floor(std::log10(raw)));
    for (const double multiple : {1.0, 2.0, 5.0, 10.0}) {
        step_ = multiple * magnitude;
        // The small slack keeps 8 / 4 = 2.0000000001 from asking for a step of 5.
        if (step_ >= raw * (1.0 - 1e-9)) break;
    }
    steps_ = std::max(1, int(std::ceil(largest / step_ - 1e-9)));
    decimals_ = std::max(0, -int(std::floor(std::log10(step_) + 1e-9)));
}

std::vector<double> ChartAxis::Ticks() const {
    std::vector<double> ticks;
    for (int i = 0; i <= steps_; ++i) ticks.push_back(i * step_);
    return ticks;
}

QString ChartAxis::Label(double value) const {
    return QLocale().toString(value, 'f', decimals_);
}

double ChartAxis::Share(double value) const {
    if (!std::isfinite(value)) return 0.0;
    return std::clamp(value / Top(), 0.0, 1.0);
}

std::vector<ChartAxis::TimeTick> ChartAxis::TimeTicks(const std::vector<QDateTime>& times,
                                                      int maxTicks) {
    std::vector<TimeTick> ticks;
    if (times.empty() || maxTicks < 1) return ticks;
    const long long points = static_cast<long long>(times.size());
    int interval = 120;
    for (const int minutes : {1, 2, 5, 10, 15, 30, 60, 120}) {
        interval = minutes;
        if (points / minutes < maxTicks) break;
    }
    int last = -interval;
    for (int i = 0; i < int(times.size()); ++i) {
        const QTime time = times[size_t(i)].time();
        const int minuteOfDay = time.hour() * 60 + time.minute();
        if (minuteOfDay % interval != 0 || i - last < (interval + 1) / 2) continue;
        ticks.push_back({i, QLocale().toString(time, QStringLiteral("HH:mm"))});
        last = i;
    }
    return ticks;
}
