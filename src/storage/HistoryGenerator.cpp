#include "HistoryGenerator.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "Body.h"

namespace {
constexpr int kWalk = 1;
constexpr int kJog = 2;
constexpr int kRun = 3;
constexpr int kInterval = 5;  // seconds the recorder adds at a time
}  // namespace

// One kind of outing a day may hold: when it may start (minutes after midnight), how
// long it lasts (minutes), how likely it is (percent) and how it is done.
struct HistoryGenerator::Outing {
    int from;
    int to;
    int shortest;
    int longest;
    int chance;
    bool sporty;  // a jog or run with walking breaks; otherwise a walk
};

namespace {
using Outing = HistoryGenerator::Outing;
constexpr std::array<Outing, 5> kWorkday{{
    {7 * 60 + 5, 8 * 60 + 15, 12, 25, 85, false},     // to work
    {12 * 60, 13 * 60, 10, 30, 35, false},            // lunch walk
    {16 * 60 + 45, 18 * 60 + 20, 12, 25, 85, false},  // home again
    {19 * 60, 20 * 60 + 30, 25, 50, 30, true},        // evening training
    {21 * 60 + 15, 22 * 60, 10, 20, 25, false},       // late walk
}};
constexpr std::array<Outing, 4> kWeekend{{
    {8 * 60 + 30, 10 * 60, 25, 60, 30, true},     // morning run
    {10 * 60 + 30, 14 * 60, 45, 120, 55, false},  // long walk
    {16 * 60, 18 * 60, 10, 30, 45, false},        // errands
    {19 * 60 + 30, 21 * 60, 15, 40, 30, false},   // evening stroll
}};
constexpr int kIdleDayChance = 7;  // percent: ill, rain, a day on the sofa
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
        AddDay(day, now, history);

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
    if (history.laps.empty()) return history;
    DAOLap& newest = *history.laps.back();
    // Today's last lap stays open, as if the user had not yet started another.
    if (newest.startDate.date() == now.date()) newest.endDate.reset();
    AddFiveSecondRecords(newest);
    return history;
}

void HistoryGenerator::AddDay(const QDate& day, const QDateTime& now, History& history) {
    const bool weekend = day.dayOfWeek() >= 6;
    const bool winter = day.month() == 12 || day.month() <= 2;
    // Drawn on every day, idle or not, so that one day's luck does not shift the next.
    const bool idle = Uniform(0, 99) < kIdleDayChance;
    QDateTime freeFrom = day.startOfDay();
    const auto plan = [&](const auto& outings) {
        for (const Outing& outing : outings) {
            const int chance = winter ? outing.chance * 3 / 4 : outing.chance;
            if (Uniform(0, 99) >= chance || idle) continue;
            QDateTime start =
                day.startOfDay().addSecs(60LL * Uniform(outing.from, outing.to) + Uniform(0, 59));
            if (start < freeFrom) start = freeFrom.addSecs(Uniform(120, 900));
            if (start >= now) return;
            std::unique_ptr<DAOLap> lap = MakeLap(outing, start, now);
            const bool cut = !lap->endDate;
            freeFrom = lap->endDate.value_or(now);
            history.laps.push_back(std::move(lap));
            if (cut) return;
        }
    };
    if (weekend) {
        plan(kWeekend);
    } else {
        plan(kWorkday);
    }
}

std::unique_ptr<DAOLap> HistoryGenerator::MakeLap(const Outing& outing, const QDateTime& start,
                                                  const QDateTime& until) {
    const Body& body = Body::GetInstance();
    auto lap = std::make_unique<DAOLap>();
    lap->startDate = start;
    lap->techDate = start.date().startOfDay();

    const int mainGait = outing.sporty ? (Uniform(0, 2) == 0 ? kRun : kJog) : kWalk;
    // The counting time: whole minutes, then 5 to 55 seconds of a last one, as a stop
    // within a minute leaves it.
    int seconds = 60 * (Uniform(outing.shortest, outing.longest) - 1) + kInterval * Uniform(1, 11);
    const qint64 available = start.secsTo(until);
    const bool cut = available < seconds;
    if (cut)
        seconds = static_cast<int>(std::max<qint64>(available, kInterval) / kInterval * kInterval);

    for (int left = seconds, number = 1; left > 0; left -= 60, ++number) {
        auto minute = std::make_unique<DAOLapMinutes>();
        minute->lapMinute = number;
        const int counted = std::min(left, 60);
        int gait = mainGait;
        if (mainGait != kWalk && Uniform(0, 4) == 0) gait = kWalk;  // catching breath
        int cadence = 0;                                            // steps per minute while moving
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
        // Waiting at a crossing or a chat: counting goes on, the steps do not.
        const int moving = Uniform(0, 9) == 0 ? counted * Uniform(2, 9) / 10 : counted;
        minute->secondsCompleted = counted;
        minute->steps = cadence * moving / 60;
        minute->distance = minute->steps * body.getStepSize(gait);
        const double speedKmh = minute->distance / counted * 3.6;
        minute->calories = body.calculateCalories(static_cast<float>(speedKmh)) * counted / 60.0;
        lap->minutes.push_back(std::move(minute));
    }
    // A lap that filled its last minute exactly has the next one started, empty, as
    // the recorder starts it at every full minute.
    if (seconds % 60 == 0 && seconds > 0) {
        auto next = std::make_unique<DAOLapMinutes>();
        next->lapMinute = static_cast<int>(lap->minutes.size()) + 1;
        lap->minutes.push_back(std::move(next));
    }
    if (!cut) lap->endDate = start.addSecs(seconds);
    return lap;
}

void HistoryGenerator::AddFiveSecondRecords(DAOLap& lap) {
    int currentSecond = 0;
    for (const auto& minute : lap.minutes) {
        const int intervals = minute->secondsCompleted / kInterval;
        for (int i = 0; i < intervals; ++i) {
            auto second = std::make_unique<DAOLapSeconds>();
            currentSecond += kInterval;
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
