// pedometer-cli backup FILE
#include <QFileInfo>
#include <cstdio>

#include "AppPaths.h"
#include "CliParser.h"
#include "CliRegistry.h"
#include "CliStorage.h"
#include "DataBackup.h"
#include "PedometerDBManager.h"

namespace {

const CliParser::Help kHelp{
    "backup", "FILE [OPTIONS]",
    "Writes a consistent copy of Options.db3 and Statistics.db3 to FILE, even\n"
    "while the app is counting (it waits for a few milliseconds at most). An\n"
    "existing FILE is replaced."};

int runBackup(const QStringList& args) {
    CliParser parser(kHelp);
    int exitStatus = 0;
    if (!parser.Parse(args, &exitStatus, 1)) return exitStatus;
    const QString home = AppPaths::Home();
    if (home.isEmpty()) return parser.Fail(1, AppPaths::HomeError());
    // A folder that holds only one database (an import into a new folder) gets the
    // other one made, as the app would make it.
    PedometerDBManager& manager = PedometerDBManager::GetInstance();
    manager.SetReadOnly(QFileInfo::exists(home + "/Options.db3") &&
                        QFileInfo::exists(home + "/Statistics.db3"));
    for (const DatabaseStatus& status : {manager.OptionsStatus(), manager.StatisticsStatus()}) {
        if (!status.open && !status.olderApp) {
            CliStorage::PrintStatus("backup", status);
            return 1;
        }
    }
    const QString file = parser.positionalArguments().first();
    QString error;
    double longestStepMs = 0;
    if (!DataBackup::Backup(home, file, &error, &longestStepMs)) return parser.Fail(1, error);
    std::printf("%s: backup written (longest lock %.1f ms)\n", file.toUtf8().constData(),
                longestStepMs);
    return 0;
}

}  // namespace

PEDOMETER_CLI_COMMAND("backup", "copy both databases into one file, safely while the app runs",
                      runBackup);
