#include "CliStorage.h"

#include <cstdio>

#include "AppPaths.h"

QCommandLineOption CliStorage::DataDirOption() {
    return QCommandLineOption(QStringLiteral("data-dir"), QString(), QStringLiteral("DIR"));
}

void CliStorage::ApplyDataDir(const QCommandLineParser& parser) {
    if (parser.isSet(QStringLiteral("data-dir"))) {
        AppPaths::SetHome(parser.value(QStringLiteral("data-dir")));
    }
}

std::unique_ptr<DataFolderLock> CliStorage::LockDataFolder(const char* command) {
    const QString home = AppPaths::Home();
    QString error = AppPaths::HomeError();
    std::unique_ptr<DataFolderLock> lock;
    if (!home.isEmpty()) lock = DataFolderLock::Acquire(home, &error);
    if (!lock) std::fprintf(stderr, "pedometer-cli %s: %s\n", command, error.toUtf8().constData());
    return lock;
}

void CliStorage::PrintStatus(const char* command, const DatabaseStatus& status) {
    if (!status.error.isEmpty()) {
        std::fprintf(stderr, "pedometer-cli %s: %s\n", command, status.error.toUtf8().constData());
    }
}
