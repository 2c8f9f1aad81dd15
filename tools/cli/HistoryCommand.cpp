// pedometer-cli history: one day's laps from the statistics database.
#include <QCommandLineParser>
#include <QDate>
#include <cstdio>

#include "CliParser.h"
#include "CliRegistry.h"
#include "CliStorage.h"
#include "Clock.h"
#include "PedometerDBManager.h"

namespace {

struct Totals {
    int steps = 0;
    double metres = 0.0;
    double calories = 0.0;
    int seconds = 0;
};

Totals totalsOf(const DAOLap& lap) {
    Totals totals;
    for (const auto& minute : lap.minutes) {
        totals.steps += minute->steps;
        totals.metres += minute->distance;
        totals.calories += minute->calories;
        totals.seconds += minute->secondsCompleted;
    }
    return totals;
}

void printRow(const char* label, const QString& start, const QString& end, const Totals& t) {
    std::printf("%-5s %-8s  %-8s  %7d  %11.3f  %13.1f  %12.1f\n", label, qPrintable(start),
                qPrintable(end), t.steps, t.metres / 1000.0, t.calories, t.seconds / 60.0);
}

const CliParser::Help kHelp{
    "history", "[OPTIONS] [DAY]",
    "Prints the laps started on DAY (YYYY-MM-DD, today by default): for each lap its\n"
    "start and end time ('open' while counting, 'by hand' for a correction entered by\n"
    "hand, whose steps may be negative), steps, distance in km, calories in kcal and\n"
    "minutes of activity, then the day's totals. A lap started at exactly midnight\n"
    "belongs to the day before as well. The databases are opened read-only and never\n"
    "changed.",
    "0 on success, 2 on a bad option or date, 1 when the statistics\n"
    "database cannot be read (the reason is printed)."};

int runHistory(const QStringList& args) {
    CliParser parser(kHelp);
    int exitStatus = 0;
    if (!parser.Parse(args, &exitStatus)) return exitStatus;
    const QStringList positional = parser.positionalArguments();
    if (positional.size() > 1) return parser.Fail(2, QStringLiteral("give one DAY at most"));
    QDate day = Clock::Now().date();
    if (!positional.isEmpty()) {
        day = QDate::fromString(positional.first(), Qt::ISODate);
        if (!day.isValid() || positional.first().size() != 10) {
            std::fprintf(stderr,
                         "pedometer-cli history: '%s' is not a date; write it as YYYY-MM-DD, "
                         "for example 2024-03-14\n",
                         qPrintable(positional.first()));
            return 2;
        }
    }

    PedometerDBManager& manager = PedometerDBManager::GetInstance();
    manager.SetReadOnly(true);
    const DatabaseStatus status = manager.StatisticsStatus();
    if (!status.open) {
        CliStorage::PrintStatus("history", status);
        return 1;
    }

    const std::vector<std::unique_ptr<DAOLap>> laps = manager.GetLapsForDate(day.startOfDay());
    std::printf("%s: %zu %s\n", qPrintable(day.toString(Qt::ISODate)), laps.size(),
                laps.size() == 1 ? "lap" : "laps");
    if (laps.empty()) return 0;
    std::printf("%-5s %-8s  %-8s  %7s  %11s  %13s  %12s\n", "Lap", "Start", "End", "Steps",
                "Distance km", "Calories kcal", "Activity min");
    Totals dayTotals;
    int number = 0;
    for (const auto& lap : laps) {
        const Totals t = totalsOf(*lap);
        dayTotals.steps += t.steps;
        dayTotals.metres += t.metres;
        dayTotals.calories += t.calories;
        dayTotals.seconds += t.seconds;
        const QString start = lap->startDate.toString(QStringLiteral("HH:mm:ss"));
        const QString end = lap->manual    ? QStringLiteral("by hand")
                            : lap->endDate ? lap->endDate->toString(QStringLiteral("HH:mm:ss"))
                                           : QStringLiteral("open");
        printRow(qPrintable(QString::number(++number)), start, end, t);
    }
    printRow("Total", QString(), QString(), dayTotals);
    return 0;
}

}  // namespace

PEDOMETER_CLI_COMMAND("history", "print one day's laps from the database", runHistory);
