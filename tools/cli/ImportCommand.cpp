// pedometer-cli import FILE: activity CSV written by 'export' back into the database.
#include <QCommandLineParser>
#include <QFile>
#include <QFileInfo>
#include <cstdio>

#include "ActivityCsv.h"
#include "CliParser.h"
#include "CliRegistry.h"
#include "CliStorage.h"
#include "PedometerDBManager.h"

namespace {

const CliParser::Help kHelp{
    "import", "FILE [OPTIONS]",
    "Adds the days, laps or minutes in FILE (as written by 'pedometer-cli export') to the\n"
    "database, creating it in a new data folder. Laps the database already has (by their\n"
    "start) and, for a file of days, days that already have laps are skipped, so importing\n"
    "a file twice adds nothing. A bad line is reported and nothing of the file is stored.",
    "0 on success, 2 on a bad argument, 1 when the file or the database\n"
    "cannot be used (the reason is printed)."};

int runImport(const QStringList& args) {
    CliParser parser(kHelp);
    int exitStatus = 0;
    if (!parser.Parse(args, &exitStatus, 1)) return exitStatus;
    // Importing writes: a running app on the same folder must not be writing too.
    const std::unique_ptr<DataFolderLock> lock = CliStorage::LockDataFolder("import");
    if (!lock) return 1;
    const QString path = parser.positionalArguments().first();
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "pedometer-cli import: cannot read %s: %s\n", qPrintable(path),
                     !QFileInfo::exists(path)  ? "no such file"
                     : QFileInfo(path).isDir() ? "it is a folder"
                     : !QFileInfo(path).isFile() ? "not a regular file"
                                                 : qPrintable(file.errorString()));
        return 1;
    }

    PedometerDBManager& manager = PedometerDBManager::GetInstance();
    DatabaseConnection& statistics = manager.StatisticsConnection();
    if (!statistics.Status().usable()) {
        CliStorage::PrintStatus("import", statistics.Status());
        return 1;
    }
    ActivityCsv::ImportResult result;
    QString error;
    bool parsed = false;
    const bool done = statistics.Run(
        [&](SQLite::Database& db) { parsed = ActivityCsv::Import(db, file, &result, &error); });
    if (!done) {
        std::fprintf(stderr, "pedometer-cli import: nothing was stored: %s\n",
                     statistics.Status().error.isEmpty()
                         ? statistics.Status().lastFailure.toUtf8().constData()
                         : statistics.Status().error.toUtf8().constData());
        return 1;
    }
    if (!parsed) {
        std::fprintf(stderr, "pedometer-cli import: %s: %s; nothing was stored\n", qPrintable(path),
                     error.toUtf8().constData());
        return 1;
    }
    std::printf("%s: %lld rows, %lld laps added, %lld already present\n", qPrintable(path),
                static_cast<long long>(result.rows), static_cast<long long>(result.lapsAdded),
                static_cast<long long>(result.lapsSkipped));
    return 0;
}

}  // namespace

PEDOMETER_CLI_COMMAND("import", "add days, laps or minutes from an exported CSV file", runImport);
