#pragma once

#include <QStringList>
#include <vector>

// The subcommands of pedometer-cli. Each lives in its own file and registers itself
// with PEDOMETER_CLI_COMMAND, so adding a command never touches main.cpp.
struct CliCommand {
    const char* name;
    const char* summary;
    // Gets the arguments after the command name; returns the process exit status
    // (0 success, 2 bad input or options, 1 anything else).
    int (*run)(const QStringList& args);
};

class CliRegistry {
public:
    static bool Add(const CliCommand& command);
    static const std::vector<CliCommand>& All();
    static const CliCommand* Find(const QString& name);
};

#define PEDOMETER_CLI_COMMAND(name, summary, function) \
    static const bool registered_##function = CliRegistry::Add({name, summary, function})
