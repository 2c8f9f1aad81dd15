#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QStringList>

#include "DetectorKind.h"

// The command line of one pedometer-cli command: Qt's parser with -h/--help and, for the
// commands that use the data folder, --data-dir already in it; options are allowed after
// the FILEs. A command declares each of its options once, with its help: Parse() answers
// --help with a text made from those declarations and the command's Help, and a wrong
// argument with the reason and a pointer to --help (status 2).
class CliParser : public QCommandLineParser {
public:
    struct Help {
        const char* command;
        const char* arguments;    // the usage line after the command's name, e.g. "FILE"
        const char* description;  // what the command does and prints
        const char* exitStatus = kPlainExitStatus;
        bool dataFolder = true;  // has --data-dir
    };
    static constexpr const char* kPlainExitStatus =
        "0 on success, 2 on a bad argument, 1 when it cannot be done (the reason\n"
        "is printed).";

    explicit CliParser(const Help& help);

    // Parses the arguments that follow the command's name and points the data folder at
    // --data-dir. False when the command ends here, with *status 0 after the help was
    // printed and 2 after a bad option, or when `files` (if not -1) FILEs were not given.
    bool Parse(const QStringList& args, int* status, int files = -1);

    // The help text Parse() prints for --help.
    QString HelpText() const;

    // Prints "pedometer-cli COMMAND: message" (and the pointer to --help when `status` is 2)
    // to stderr; returns `status`.
    int Fail(int status, const QString& message) const;

    // Reads `option`, when given, as a number above 0 (a rate in Hz, a distance); false
    // after saying why when it is not one.
    bool ReadPositive(const QCommandLineOption& option, double* value) const;
    // Reads `option`, when given, as a step detector's name; false after saying why.
    bool ReadDetector(const QCommandLineOption& option, DetectorKind* kind) const;

private:
    Help help_;
    QCommandLineOption helpOption_;
};
