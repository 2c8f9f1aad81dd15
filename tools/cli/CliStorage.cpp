#include "CliStorage.h"

#include <cstdio>

#include "AppPaths.h"
#include "DataBackup.h"

QCommandLineOption CliStorage::DataDirOption() {
    return QCommandLineOption(QStringLiteral("data-dir"),
                              QStringLiteral("the data folder holding Options.db3 and "
                                             "Statistics.db3 (default: ~/.local/share/pedometer)"),
                              QStringLiteral("DIR"));
}

void CliStorage::ApplyDataDir(const QCommandLineParser& parser) {
    // An empty name is kept: Home() then refuses it rather than using the current folder.
    if (parser.isSet(QStringLiteral("data-dir"))) {
        AppPaths::SetHome(parser.value(QStringLiteral("data-dir")));
    }
}

std::unique_ptr<DataFolderLock> CliStorage::LockDataFolder(const char* command) {
    const QString home = AppPaths::Home();
    QString error = AppPaths::HomeError();
    std::unique_ptr<DataFolderLock> lock;
    if (!home.isEmpty()) lock = DataFolderLock::Acquire(home, &error);
    // A restore a killed run left half done is finished before the files are opened.
    if (lock && !DataBackup::Recover(home, &error)) lock.reset();
    if (!lock) std::fprintf(stderr, "pedometer-cli %s: %s\n", command, error.toUtf8().constData());
    return lock;
}

void CliStorage::PrintStatus(const char* command, const DatabaseStatus& status) {
    if (!status.error.isEmpty()) {
        std::fprintf(stderr, "pedometer-cli %s: %s\n", command, status.error.toUtf8().constData());
    }
}
