#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QStringList>

// The command line of one pedometer-cli command: Qt's parser with -h/--help and --data-dir
// already in it, options allowed after the FILEs. Parse() answers --help with the command's
// help text and wrong arguments with the reason and a pointer to --help, so that a command
// only adds and reads its own options.
class CliParser : public QCommandLineParser {
public:
    // `help` is the command's help text; a "%s" in it stands for the --data-dir lines.
    // `footer`, when given, is printed after it, with the same "%s".
    CliParser(const char* command, const char* help, const char* footer = nullptr);

    // The end of the help of a command with no options of its own and only one way to
    // fail: the option lines and the exit statuses.
    static constexpr const char* kPlainFooter =
        "\n"
        "Options:\n"
        "%s"
        "  -h, --help        show this help\n"
        "\n"
        "Exit status: 0 on success, 2 on a bad argument, 1 when it cannot be done (the reason\n"
        "is printed).\n";

    // Parses the arguments that follow the command's name and points the data folder at
    // --data-dir. False when the command ends here, with *status 0 after the help was
    // printed and 2 after a bad option, or when `files` (if not -1) FILEs were not given.
    bool Parse(const QStringList& args, int* status, int files = -1);

    // Prints "pedometer-cli COMMAND: message" (and the pointer to --help when `status` is 2)
    // to stderr; returns `status`.
    int Fail(int status, const QString& message) const;

private:
    const char* command_;
    const char* help_;
    const char* footer_;
    QCommandLineOption helpOption_;
};
