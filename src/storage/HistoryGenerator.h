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
// Days follow a person's week: on workdays a walk to and from work, sometimes a lunch
// walk, an evening jog or run and a late walk; on weekends a morning run, a long walk
// and errands; now and then a day without any activity, and fewer outings in winter.
// Records look as the recorder stores them: minutes numbered from 1, every minute but
// a lap's last one a whole 60 seconds of counting (standing at a crossing shows as
// fewer steps, not fewer seconds), distance and calories from the current Body
// profile. Today's laps stop at `now`; today's last lap is left open, with its
// five-second records, so that counting resumes it as it resumes a real one. Every
// three to five days there is a body log: a slowly falling weight and, now and then,
// chest, waist and hip girths. The same seed, period and Body profile always give the
// same history.
class HistoryGenerator {
public:
    struct History {
        std::vector<std::unique_ptr<DAOLap>> laps;  // oldest first, ids unset
        std::vector<DAOBodyLog> bodyLogs;           // oldest first
    };

    explicit HistoryGenerator(std::uint32_t seed);

    // History for the `years` years up to `now`: from the day after the same date
    // `years` years ago up to today.
    History Generate(int years, const QDateTime& now);
    // History for the days `first` to `last`, nothing after `now`.
    History Generate(const QDate& first, const QDate& last, const QDateTime& now);

    // A kind of outing of a day's plan (defined with the plans).
    struct Outing;

private:
    // The lap of `outing` starting at `start`, cut at `until` (then left open).
    std::unique_ptr<DAOLap> MakeLap(const Outing& outing, const QDateTime& start,
                                    const QDateTime& until);
    void AddDay(const QDate& day, const QDateTime& now, History& history);
    void AddFiveSecondRecords(DAOLap& lap);
    int Uniform(int low, int high);  // both ends included
    double UniformReal(double low, double high);

    std::mt19937 random_;
};
