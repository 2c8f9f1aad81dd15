#pragma once

#include <QDateTime>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

#include "DAOBodyLog.h"
#include "DAOLap.h"

// Makes up plausible activity history for demonstrations, benchmarks and tests.
//
// Each day gets zero to five laps at usual times (morning, noon, afternoon, evening,
// night), each 15 to 58 minutes of mostly walking with some jogging and running.
// Minutes carry steps at a realistic cadence, and distance and calories computed
// from the current Body profile, as the recorder would store them; the newest lap
// also gets its five-second records. Every three to five days there is a body log:
// a slowly falling weight and, now and then, chest, waist and hip girths.
// The same seed, period and Body profile always give the same history.
class HistoryGenerator {
public:
    struct History {
        std::vector<std::unique_ptr<DAOLap>> laps;  // oldest first, ids unset
        std::vector<DAOBodyLog> bodyLogs;           // oldest first
    };

    explicit HistoryGenerator(std::uint32_t seed);

    // History for the `years` years up to `now`: from the day after the same date
    // `years` years ago up to today, keeping only laps finished by `now`.
    History Generate(int years, const QDateTime& now);
    // History for the days `first` to `last`, keeping only laps finished by `now`.
    History Generate(const QDate& first, const QDate& last, const QDateTime& now);

private:
    std::unique_ptr<DAOLap> MakeLap(const QDateTime& start);
    void AddFiveSecondRecords(DAOLap& lap);
    int Uniform(int low, int high);  // both ends included
    double UniformReal(double low, double high);

    std::mt19937 random_;
};
