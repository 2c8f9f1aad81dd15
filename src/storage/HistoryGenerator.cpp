#include "HistoryGenerator.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "Body.h"

namespace {
// How many laps a day has, in tenths of a percent: 0 to 5 laps, about 3 on average,
// so five years hold about 5,400 laps of 36 minutes on average.
constexpr std::array<int, 6> kLapCountWeights{40, 100, 220, 280, 220, 140};

// When laps may start, as minutes after midnight: earliest and latest start.
struct Slot {
    int from;
    int to;
};
constexpr std::array<Slot, 5> kSlots{{
    {6 * 60 + 30, 8 * 60 + 30},    // before work
    {12 * 60, 13 * 60 + 15},       // lunch break
    {15 * 60, 16 * 60},            // afternoon
    {17 * 60 + 30, 19 * 60 + 30},  // evening
    {20 * 60 + 45, 21 * 60 + 45},  // late walk
}};

constexpr int kWalk = 1;
constexpr int kJog = 2;
constexpr int kRun = 3;
}  // namespace

HistoryGenerator::HistoryGenerator(std::uint32_t seed) : random_(seed) {}

int HistoryGenerator::Uniform(int low, int high) {
    // Plain modulo on the engine's output: the same numbers on every standard library.
    const auto span = static_cast<std::uint32_t>(high - low + 1);
    return low + static_cast<int>(random_() % span);
}

double HistoryGenerator::UniformReal(double low, double high) {
    return low + (high - low) * (static_cast<double>(random_()) / 4294967296.0);
}

HistoryGenerator::History HistoryGenerator::Generate(int years, const QDateTime& now) {
    const QDate today = now.date();
    return Generate(today.addYears(-std::max(years, 0)).addDays(1), today, now);
}

HistoryGenerator::History HistoryGenerator::Generate(const QDate& first, const QDate& last,
                                                     const QDateTime& now) {
    History history;
    double weight = UniformReal(78.0, 86.0);
    int daysToNextLog = 0;
    for (QDate day = first; day <= last; day = day.addDays(1)) {
        int lapCount = 0;
        for (int pick = Uniform(0, 999); pick >= kLapCountWeights[lapCount]; ++lapCount) {
            pick -= kLapCountWeights[lapCount];
        }
        // Choose lapCount of the slots, in the day's order.
        std::array<bool, kSlots.size()> used{};
        for (int chosen = 0; chosen < lapCount;) {
            const int slot = Uniform(0, kSlots.size() - 1);
            if (!used[slot]) {
                used[slot] = true;
                ++chosen;
            }
        }
        QDateTime freeFrom = day.startOfDay();
        for (size_t slot = 0; slot < kSlots.size(); ++slot) {
            if (!used[slot]) continue;
            QDateTime start = day.startOfDay().addSecs(
                60LL * Uniform(kSlots[slot].from, kSlots[slot].to) + Uniform(0, 59));
            if (start < freeFrom) start = freeFrom.addSecs(Uniform(120, 900));
            std::unique_ptr<DAOLap> lap = MakeLap(start);
            if (!lap->endDate || *lap->endDate > now) break;
            freeFrom = *lap->endDate;
            history.laps.push_back(std::move(lap));
        }

        // Body log: weight drifts down about 1.5 kg a year, with daily noise.
        weight = std::max(60.0, weight - 0.004 + UniformReal(-0.02, 0.02));
        if (--daysToNextLog <= 0 && day.startOfDay() <= now) {
            daysToNextLog = Uniform(3, 5);
            DAOBodyLog log;
            log.logDate = day.startOfDay();
            log.weight = std::round((weight + UniformReal(-0.4, 0.4)) * 10.0) / 10.0;
            if (Uniform(0, 3) == 0) {
                const double shape = weight - 80.0;
                log.chest = std::round((101.0 + shape * 0.5 + UniformReal(-0.5, 0.5)) * 2.0) / 2.0;
                log.waist = std::round((90.0 + shape * 0.9 + UniformReal(-0.5, 0.5)) * 2.0) / 2.0;
                log.hip = std::round((103.0 + shape * 0.6 + UniformReal(-0.5, 0.5)) * 2.0) / 2.0;
            }
            history.bodyLogs.push_back(log);
        }
    }
    if (!history.laps.empty()) AddFiveSecondRecords(*history.laps.back());
    return history;
}

std::unique_ptr<DAOLap> HistoryGenerator::MakeLap(const QDateTime& start) {
    const Body& body = Body::GetInstance();
    auto lap = std::make_unique<DAOLap>();
    lap->startDate = start;
    lap->techDate = start.date().startOfDay();

    // Mostly walks; some laps mix in jogging, a few are runs.
    const int kind = Uniform(0, 99);
    const int mainGait = kind < 80 ? kWalk : (kind < 95 ? kJog : kRun);
    const int minutes = Uniform(15, 58);
    int lapSeconds = 0;
    for (int index = 0; index < minutes; ++index) {
        auto minute = std::make_unique<DAOLapMinutes>();
        minute->lapMinute = index;
        int gait = mainGait;
        if (mainGait != kWalk && Uniform(0, 4) == 0) gait = kWalk;  // catching breath
        int active = 60;
        if (index == minutes - 1) {
            active = 5 * Uniform(1, 12);  // the lap stops within its last minute
        } else if (Uniform(0, 9) == 0) {
            active = 5 * Uniform(1, 11);  // waiting at a crossing, a chat
        }
        int cadence = 0;  // steps per minute while moving
        switch (gait) {
            case kWalk:
                cadence = Uniform(95, 125);
                break;
            case kJog:
                cadence = Uniform(140, 165);
                break;
            default:
                cadence = Uniform(165, 185);
                break;
        }
        minute->secondsCompleted = active;
        minute->steps = cadence * active / 60;
        minute->distance = minute->steps * body.getStepSize(gait);
        const double speedKmh = minute->distance / active * 3.6;
        minute->calories = body.calculateCalories(static_cast<float>(speedKmh)) * active / 60.0;
        lapSeconds += index == minutes - 1 ? active : 60;
        lap->minutes.push_back(std::move(minute));
    }
    lap->endDate = start.addSecs(lapSeconds);
    return lap;
}

void HistoryGenerator::AddFiveSecondRecords(DAOLap& lap) {
    int currentSecond = 0;
    for (const auto& minute : lap.minutes) {
        const int intervals = minute->secondsCompleted / 5;
        for (int i = 0; i < intervals; ++i) {
            auto second = std::make_unique<DAOLapSeconds>();
            currentSecond += 5;
            second->currentSecond = currentSecond;
            // Spread the minute evenly; the first intervals take the remainder.
            second->steps = minute->steps / intervals + (i < minute->steps % intervals ? 1 : 0);
            second->calories = minute->calories / intervals;
            second->distance = minute->distance / intervals;
            second->caloriesNoise =
                minute->calories * 60.0 / minute->secondsCompleted * UniformReal(1.001, 1.1);
            lap.seconds.push_back(std::move(second));
        }
    }
}
