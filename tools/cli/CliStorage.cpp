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

void CliStorage::PrintStatus(const char* command, const DatabaseStatus& status) {
    if (!status.error.isEmpty()) {
        std::fprintf(stderr, "pedometer-cli %s: %s\n", command, status.error.toUtf8().constData());
    }
}
