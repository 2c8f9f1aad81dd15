// Speed of the database operations the screens and the recorder use, on a data
// folder holding five years of made-up history. Prints the median of repeated runs
// of each operation next to its target.
#include <QCoreApplication>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <vector>

#include "AppPaths.h"
#include "Body.h"
#include "Clock.h"
#include "HistoryGenerator.h"
#include "PedometerDBManager.h"

namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

double threadCpuMs() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return now.tv_sec * 1e3 + now.tv_nsec / 1e6;
}

// Median wall-clock time of `runs` calls and, since the machine may be busy with
// other work, the median CPU time this thread spent on them.
struct Timing {
    double wallMs;
    double cpuMs;
};

Timing median(int runs, const std::function<void()>& operation) {
    std::vector<double> wall, cpu;
    for (int i = 0; i < runs; ++i) {
        const double cpuStart = threadCpuMs();
        const auto start = std::chrono::steady_clock::now();
        operation();
        wall.push_back(Milliseconds(std::chrono::steady_clock::now() - start).count());
        cpu.push_back(threadCpuMs() - cpuStart);
    }
    std::nth_element(wall.begin(), wall.begin() + runs / 2, wall.end());
    std::nth_element(cpu.begin(), cpu.begin() + runs / 2, cpu.end());
    return {wall[runs / 2], cpu[runs / 2]};
}

void report(const char* what, Timing t, double targetMs) {
    std::printf("  %-46s %8.3f ms  (cpu %7.3f ms)  target < %g ms%s\n", what, t.wallMs, t.cpuMs,
                targetMs, t.wallMs < targetMs ? "" : "  MISSED");
}

// Five years of history up to `now`, so every run measures the same data.
bool fillFiveYears(PedometerDBManager& manager, const QDateTime& now) {
    Clock::SetNow(now);
    Body::GetInstance().clear();
    HistoryGenerator::History history = HistoryGenerator(1).Generate(5, now);
    size_t minuteCount = 0;
    for (const auto& lap : history.laps) minuteCount += lap->minutes.size();
    const auto importStart = std::chrono::steady_clock::now();
    if (!manager.ImportHistory(history.laps, history.bodyLogs)) {
        std::fprintf(stderr, "import failed: %s\n",
                     qPrintable(manager.StatisticsStatus().lastFailure));
        return false;
    }
    const double importMs = Milliseconds(std::chrono::steady_clock::now() - importStart).count();
    std::printf("Data: %zu laps, %zu minute rows, %zu body logs; imported in %.0f ms\n",
                history.laps.size(), minuteCount, history.bodyLogs.size(), importMs);
    return true;
}

// What the meter and the history screens read.
void benchReads(PedometerDBManager& manager, const QDateTime& now) {
    // A day with four laps for the day history.
    QDateTime fourLapDay;
    for (const QDateTime& day : manager.GetAllDays()) {
        if (manager.GetLapsForDate(day).size() == 4) {
            fourLapDay = day;
            break;
        }
    }
    const size_t todaysLaps = manager.GetLapsForDate(now.date().startOfDay()).size();
    const size_t periodLaps = manager.GetLapsForPeriod(now.addDays(-179), now).size();
    const size_t dayCount = manager.GetAllDays().size();

    char label[96];
    std::snprintf(label, sizeof label, "today's distance+calories+activity (%zu laps)", todaysLaps);
    report(label,
           median(200,
                  [&] {
                      manager.GetTodayDistance();
                      manager.GetTodayCalories();
                      manager.GetTodayActivity();
                  }),
           2.0);
    report("GetLapsForDate, a day with 4 laps",
           median(200, [&] { manager.GetLapsForDate(fourLapDay); }), 5.0);
    std::snprintf(label, sizeof label, "GetLapsForPeriod, 180 days (%zu laps)", periodLaps);
    report(label, median(31, [&] { manager.GetLapsForPeriod(now.addDays(-179), now); }), 50.0);
    std::snprintf(label, sizeof label, "GetAllDays (%zu days)", dayCount);
    report(label, median(51, [&] { manager.GetAllDays(); }), 20.0);

    // The period history: one row per day, summed in SQL.
    for (const int days : {7, 30, 180}) {
        std::snprintf(label, sizeof label, "GetDayTotals, last %d days", days);
        report(label,
               median(101, [&] { manager.GetDayTotals(now.date().addDays(1 - days), now.date()); }),
               5.0);
    }
    // The all-days list reads the days, then the sums of the rows in view.
    report("GetAllDays + GetDayTotals of 20 days in view",
           median(51,
                  [&] {
                      const std::vector<QDateTime> days = manager.GetAllDays();
                      manager.GetDayTotals(days[std::min<size_t>(19, days.size() - 1)].date(),
                                           days.front().date());
                  }),
           20.0);
}

// The streaks of the reports screen: every day of the five years judged by the goal
// then in force (a steps goal from the start, raised after two years).
void benchStreaks(PedometerDBManager& manager, const QDateTime& now) {
    DAOTarget goals;
    goals.targetActive = DAOTarget::STEPS;
    goals.steps = 6000;
    Clock::SetNow(now.addYears(-5));
    manager.SaveTagets(goals);
    goals.steps = 8000;
    Clock::SetNow(now.addYears(-3));
    manager.SaveTagets(goals);
    Clock::SetNow(now);
    const GoalStreaks streaks = manager.GetGoalStreaks({}, now.date());
    char label[96];
    std::snprintf(label, sizeof label, "GetGoalStreaks, five years (longest %d days)",
                  streaks.Longest().days);
    report(label, median(31, [&] { manager.GetGoalStreaks({}, now.date()); }), 20.0);
}

// The recorder's writes, on a fresh lap as at the start of a recording.
void benchRecorder(PedometerDBManager& manager) {
    manager.ClearLapSeconds();
    const std::unique_ptr<DAOLap> lap = manager.CreateNewLap();
    DAOLapMinutes minute;
    minute.lapId = lap->id;
    manager.CreateNewLapMinute(minute);
    DAOLapSeconds interval;
    interval.lapId = lap->id;
    interval.steps = 9;
    interval.distance = 6.4;
    report("UpdateSmall",
           median(500,
                  [&] {
                      interval.currentSecond += 5;
                      minute.steps += 9;
                      minute.secondsCompleted += 5;
                      manager.UpdateSmall(minute, interval);
                  }),
           2.0);
    report("UpdateFull",
           median(500,
                  [&] {
                      interval.currentSecond += 5;
                      DAOLapMinutes next;
                      next.lapId = lap->id;
                      next.lapMinute = minute.lapMinute + 1;
                      manager.UpdateFull(minute, interval, next);
                      minute = next;
                  }),
           2.0);
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTemporaryDir folder;
    if (!folder.isValid()) {
        std::fprintf(stderr, "cannot create a temporary folder\n");
        return 1;
    }
    AppPaths::SetHome(folder.path() + QStringLiteral("/data"));
    PedometerDBManager& manager = PedometerDBManager::GetInstance();
    if (!manager.IsStatisticsUsable()) {
        std::fprintf(stderr, "%s\n", qPrintable(manager.StatisticsStatus().error));
        return 1;
    }
    const QDateTime now(QDate(2024, 6, 15), QTime(21, 0));
    if (!fillFiveYears(manager, now)) return 1;
    std::printf("Median of repeated runs:\n");
    benchReads(manager, now);
    benchStreaks(manager, now);
    benchRecorder(manager);
    if (!manager.StatisticsStatus().lastFailure.isEmpty()) {
        std::fprintf(stderr, "a statement failed: %s\n",
                     qPrintable(manager.StatisticsStatus().lastFailure));
        return 1;
    }
    manager.Reopen();
    return 0;
}
