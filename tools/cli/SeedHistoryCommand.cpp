// pedometer-cli seed-history: fills a data folder with made-up history.
#include <QCommandLineParser>
#include <cstdio>

#include "CliParser.h"
#include "CliRegistry.h"
#include "CliStorage.h"
#include "Clock.h"
#include "HistoryGenerator.h"
#include "PedometerDBManager.h"

namespace {

const CliParser::Help kHelp{
    "seed-history", "--years N [OPTIONS]",
    "Fills the data folder with made-up but plausible history for trying out the\n"
    "history screens: the N years up to now, shaped like a person's weeks (walks to\n"
    "and from work, lunch walks, evening runs; long walks on weekends; some idle days,\n"
    "fewer outings in winter), with steps, distance and calories per minute from the\n"
    "stored body profile, and a body log every three to five days. Records are what\n"
    "the recorder writes: minutes numbered from 1, whole minutes but a lap's last.\n"
    "Today's last lap is left open with its five-second records, so counting resumes\n"
    "it. The same seed, body profile and moment give the same history.\n"
    "\n"
    "A folder that already holds laps is refused, so recorded history is never mixed\n"
    "with made-up history. Missing databases are created from the seeds.",
    "0 on success, 2 on a bad option or a folder with history, 1 when the\n"
    "statistics database cannot be used (the reason is printed)."};

int runSeedHistory(const QStringList& args) {
    CliParser parser(kHelp);
    const QCommandLineOption years(QStringLiteral("years"),
                                   QStringLiteral("years of history, 0 to 100 (0: today only)"),
                                   QStringLiteral("N"));
    const QCommandLineOption seed(QStringLiteral("seed"),
                                  QStringLiteral("random seed, a whole number (default 1)"),
                                  QStringLiteral("S"), QStringLiteral("1"));
    parser.addOptions({years, seed});
    int exitStatus = 0;
    if (!parser.Parse(args, &exitStatus, 0)) return exitStatus;
    bool yearsOk = false;
    const int yearCount = parser.value(years).toInt(&yearsOk);
    if (!parser.isSet(years) || !yearsOk || yearCount < 0 || yearCount > 100) {
        return parser.Fail(2, QStringLiteral("--years needs a whole number from 0 to 100"));
    }
    bool seedOk = false;
    const uint seedValue = parser.value(seed).toUInt(&seedOk);
    if (!seedOk) {
        return parser.Fail(
            2, QStringLiteral("--seed needs a whole number >= 0, not '%1'").arg(parser.value(seed)));
    }
    const std::unique_ptr<DataFolderLock> lock = CliStorage::LockDataFolder("seed-history");
    if (!lock) return 1;

    PedometerDBManager& manager = PedometerDBManager::GetInstance();
    const DatabaseStatus status = manager.StatisticsStatus();
    if (!status.usable()) {
        CliStorage::PrintStatus("seed-history", status);
        return 1;
    }
    if (!manager.GetAllDays().empty()) {
        std::fprintf(stderr,
                     "pedometer-cli seed-history: %s already holds history; use an empty data "
                     "folder\n",
                     qPrintable(status.path));
        return 2;
    }
    manager.LoadBody();  // steps and calories follow the stored profile

    const QDateTime now = Clock::Now();
    HistoryGenerator::History history = HistoryGenerator(seedValue).Generate(yearCount, now);
    size_t minutes = 0;
    for (const auto& lap : history.laps) minutes += lap->minutes.size();
    if (!manager.ImportHistory(history.laps, history.bodyLogs)) {
        CliStorage::PrintStatus("seed-history", manager.StatisticsStatus());
        std::fprintf(stderr, "pedometer-cli seed-history: nothing was stored: %s\n",
                     manager.StatisticsStatus().lastFailure.toUtf8().constData());
        return 1;
    }
    std::printf("%s: %zu laps, %zu minutes, %zu body logs", qPrintable(status.path),
                history.laps.size(), minutes, history.bodyLogs.size());
    if (!history.laps.empty()) {
        std::printf(" from %s to %s",
                    qPrintable(history.laps.front()->startDate.date().toString(Qt::ISODate)),
                    qPrintable(history.laps.back()->startDate.date().toString(Qt::ISODate)));
    }
    std::printf("\n");
    return 0;
}

}  // namespace

PEDOMETER_CLI_COMMAND("seed-history", "fill a data folder with made-up history", runSeedHistory);
