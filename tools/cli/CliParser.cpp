#include "CliParser.h"

#include <cstdio>

#include "CliStorage.h"

CliParser::CliParser(const char* command, const char* help, const char* footer)
    : command_(command),
      help_(help),
      footer_(footer),
      helpOption_({QStringLiteral("h"), QStringLiteral("help")}, QString()) {
    setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsOptions);
    addOption(helpOption_);
    addOption(CliStorage::DataDirOption());
}

bool CliParser::Parse(const QStringList& args, int* status, int files) {
    *status = 2;
    if (!parse(QStringList{QString::fromLatin1(command_)} + args)) {
        Fail(2, errorText());
        return false;
    }
    if (isSet(helpOption_)) {
        std::printf(help_, CliStorage::kDataDirHelp);
        if (footer_) std::printf(footer_, CliStorage::kDataDirHelp);
        *status = 0;
        return false;
    }
    const QStringList given = positionalArguments();
    if (files == 0 && !given.isEmpty()) {
        Fail(2, QStringLiteral("unexpected argument '%1'").arg(given.first()));
        return false;
    }
    if (files > 0 && given.size() != files) {
        Fail(2, files == 1 ? QStringLiteral("expected one FILE")
                           : QStringLiteral("expected %1 FILEs").arg(files));
        return false;
    }
    CliStorage::ApplyDataDir(*this);
    *status = 0;
    return true;
}

int CliParser::Fail(int status, const QString& message) const {
    std::fprintf(stderr, "pedometer-cli %s: %s\n", command_, message.toUtf8().constData());
    if (status == 2) std::fprintf(stderr, "Run 'pedometer-cli %s --help'.\n", command_);
    return status;
}
