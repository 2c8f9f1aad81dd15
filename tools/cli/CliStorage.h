#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <memory>

#include "DataFolderLock.h"

#include "DatabaseStatus.h"

// What the commands that use the data folder share: the --data-dir option and
// telling the user why a database cannot be used.
class CliStorage {
public:
    // --data-dir DIR: the data folder instead of the per-user default.
    static QCommandLineOption DataDirOption();
    // Points AppPaths::Home() at the folder given with --data-dir, if any.
    static void ApplyDataDir(const QCommandLineParser& parser);

    // Locks the data folder for a command that writes to it; null, after printing
    // "pedometer-cli COMMAND: <why>", when another process writes there already.
    static std::unique_ptr<DataFolderLock> LockDataFolder(const char* command);

    // Prints "pedometer-cli COMMAND: <why>" to stderr when `status` has an error.
    static void PrintStatus(const char* command, const DatabaseStatus& status);
};
