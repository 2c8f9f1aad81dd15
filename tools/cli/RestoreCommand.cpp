// pedometer-cli restore FILE
#include <cstdio>

#include "AppPaths.h"
#include "CliParser.h"
#include "CliRegistry.h"
#include "CliStorage.h"
#include "DataBackup.h"

namespace {

const CliParser::Help kHelp{
    "restore", "FILE [OPTIONS]",
    "Replaces the databases in the data folder with those in FILE, made by 'backup'.\n"
    "A file that is not such a backup, or whose databases are damaged, come from a newer\n"
    "version or hold anything the app does not make itself (triggers, views, other\n"
    "tables or columns), is refused and nothing changes. Both databases are prepared\n"
    "completely first, then switched in one step that is finished at the next start if\n"
    "it is interrupted. The current databases are moved into a folder aside-DATE-TIME in\n"
    "the data folder, never overwritten. Close the app first."};

int runRestore(const QStringList& args) {
    CliParser parser(kHelp);
    int exitStatus = 0;
    if (!parser.Parse(args, &exitStatus, 1)) return exitStatus;
    // The databases are moved aside: never under a running app that has them open.
    const std::unique_ptr<DataFolderLock> lock = CliStorage::LockDataFolder("restore");
    if (!lock) return 1;
    const QString home = AppPaths::Home();
    const QString file = parser.positionalArguments().first();
    QString error;
    QString aside;
    if (!DataBackup::Restore(file, home, &error, &aside)) return parser.Fail(1, error);
    std::printf("restored %s into %s\n", file.toUtf8().constData(), home.toUtf8().constData());
    if (!aside.isEmpty())
        std::printf("the previous databases are in %s\n", aside.toUtf8().constData());
    return 0;
}

}  // namespace

PEDOMETER_CLI_COMMAND("restore", "put the databases of a backup file back", runRestore);
