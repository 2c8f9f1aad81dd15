// pedometer-cli export days|laps|minutes: the recorded activity as CSV.
#include <QCommandLineParser>
#include <QFile>
#include <cstdio>

#include "ActivityCsv.h"
#include "CliParser.h"
#include "CliRegistry.h"
#include "CliStorage.h"
#include "PedometerDBManager.h"
#include "UserDataFile.h"

namespace {

bool readDay(const QCommandLineParser& parser, const QString& option, QDate* day) {
    if (!parser.isSet(option)) return true;
    *day = QDate::fromString(parser.value(option), Qt::ISODate);
    if (day->isValid()) return true;
    std::fprintf(stderr, "pedometer-cli export: --%s needs a day as YYYY-MM-DD, not '%s'\n",
                 qPrintable(option), qPrintable(parser.value(option)));
    return false;
}

const CliParser::Help kHelp{
    "export", "days|laps|minutes [--from DAY] [--to DAY] [--out FILE]",
    "Writes the recorded activity as CSV with a header line: one row per day, per lap or\n"
    "per minute of a lap. Dates are ISO (YYYY-MM-DD, local time), numbers use '.'.\n"
    "'pedometer-cli import' reads all three back.",
    "0 on success, 2 on a bad argument, 1 when the database cannot be read\n"
    "or the file cannot be written (the reason is printed)."};

int runExport(const QStringList& args) {
    CliParser parser(kHelp);
    const QCommandLineOption out(QStringLiteral("out"),
                                 QStringLiteral("where to write (default: standard output); replaced whole"),
                                 QStringLiteral("FILE"));
    const QCommandLineOption from(QStringLiteral("from"),
                                  QStringLiteral("first day (YYYY-MM-DD) of laps to write (default: the first)"),
                                  QStringLiteral("DAY"));
    const QCommandLineOption to(QStringLiteral("to"),
                                QStringLiteral("last day of laps to write (default: the last)"),
                                QStringLiteral("DAY"));
    parser.addOptions({out, from, to});
    int exitStatus = 0;
    if (!parser.Parse(args, &exitStatus)) return exitStatus;
    ActivityCsv::Kind kind{};
    if (parser.positionalArguments().size() != 1 ||
        !ActivityCsv::KindFromName(parser.positionalArguments().first(), &kind)) {
        return parser.Fail(2, QStringLiteral("say what to export: days, laps or minutes"));
    }
    QDate first;
    QDate last;
    if (!readDay(parser, QStringLiteral("from"), &first) ||
        !readDay(parser, QStringLiteral("to"), &last)) {
        return 2;
    }

    PedometerDBManager& manager = PedometerDBManager::GetInstance();
    manager.SetReadOnly(true);
    DatabaseConnection& statistics = manager.StatisticsConnection();
    if (!statistics.Status().open) {
        CliStorage::PrintStatus("export", statistics.Status());
        return 1;
    }
    UserDataFile file(parser.value(out));
    QFile console;
    QIODevice* device = &file;
    if (parser.isSet(out)) {
        if (!file.Open()) {
            std::fprintf(stderr, "pedometer-cli export: %s\n", qPrintable(file.ErrorText()));
            return 1;
        }
    } else {
        console.open(stdout, QIODevice::WriteOnly);
        device = &console;
    }
    qint64 rows = -1;
    const bool read = statistics.Run(
        [&](SQLite::Database& db) { rows = ActivityCsv::Export(db, kind, first, last, *device); });
    if (!read) {
        CliStorage::PrintStatus("export", statistics.Status());
        std::fprintf(stderr, "pedometer-cli export: %s\n",
                     statistics.Status().lastFailure.toUtf8().constData());
        return 1;
    }
    if (parser.isSet(out) && (rows < 0 || !file.Commit())) {
        std::fprintf(stderr, "pedometer-cli export: %s\n", qPrintable(file.ErrorText()));
        return 1;
    }
    if (rows < 0 || (!parser.isSet(out) && !console.flush())) {
        std::fprintf(stderr, "pedometer-cli export: cannot write the output: %s\n",
                     qPrintable(device->errorString()));
        return 1;
    }
    if (parser.isSet(out)) {
        std::printf("%s: %lld rows\n", qPrintable(parser.value(out)), static_cast<long long>(rows));
    }
    return 0;
}

}  // namespace

PEDOMETER_CLI_COMMAND("export", "write days, laps or minutes of activity as CSV", runExport);
