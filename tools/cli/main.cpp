// pedometer-cli: headless tools around the step counter and its database.
#include <QCoreApplication>
#include <QLocale>
#include <cstdio>

#include "CliRegistry.h"

namespace {
void printUsage(FILE* out) {
    std::fprintf(out, "Usage: pedometer-cli COMMAND [OPTIONS] [ARGS]\n\nCommands:\n");
    for (const CliCommand& c : CliRegistry::All()) {
        std::fprintf(out, "  %-14s %s\n", c.name, c.summary);
    }
    std::fprintf(out, "\nRun 'pedometer-cli COMMAND --help' for a command's options.\n");
}
}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("pedometer"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PEDOMETER_VERSION));

    QStringList args = app.arguments();
    args.removeFirst();
    if (args.isEmpty() || args.first() == QLatin1String("--help") ||
        args.first() == QLatin1String("-h") || args.first() == QLatin1String("help")) {
        printUsage(args.isEmpty() ? stderr : stdout);
        return args.isEmpty() ? 2 : 0;
    }
    if (args.first() == QLatin1String("--version")) {
        std::printf("pedometer-cli %s\n", PEDOMETER_VERSION);
        return 0;
    }
    const QString name = args.takeFirst();
    const CliCommand* command = CliRegistry::Find(name);
    if (command == nullptr) {
        std::fprintf(stderr, "pedometer-cli: unknown command '%s'\n\n", qPrintable(name));
        printUsage(stderr);
        return 2;
    }
    return command->run(args);
}
