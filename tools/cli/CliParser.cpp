#include "CliParser.h"

#include <cmath>
#include <cstdio>

#include "CliStorage.h"
#include "StepDetectorFactory.h"

CliParser::CliParser(const Help& help)
    : help_(help),
      helpOption_({QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("show this help")) {
    setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsOptions);
    setApplicationDescription(QLatin1Char('\n') + QString::fromUtf8(help.description).trimmed());
    addOption(helpOption_);
    if (help_.dataFolder) addOption(CliStorage::DataDirOption());
}

bool CliParser::Parse(const QStringList& args, int* status, int files) {
    *status = 2;
    if (!parse(QStringList{QString::fromLatin1(help_.command)} + args)) {
        Fail(2, errorText());
        return false;
    }
    if (isSet(helpOption_)) {
        std::fputs(HelpText().toUtf8().constData(), stdout);
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
    if (help_.dataFolder) CliStorage::ApplyDataDir(*this);
    return true;
}

QString CliParser::HelpText() const {
    // Qt's text starts with a usage line naming the program's path and "[options]".
    const QString text = helpText();
    return QStringLiteral("Usage: pedometer-cli %1 %2")
               .arg(QLatin1String(help_.command), QString::fromUtf8(help_.arguments)) +
           text.mid(text.indexOf(QLatin1Char('\n'))) +
           QStringLiteral("\nExit status: %1\n").arg(QString::fromUtf8(help_.exitStatus));
}

int CliParser::Fail(int status, const QString& message) const {
    std::fprintf(stderr, "pedometer-cli %s: %s\n", help_.command, message.toUtf8().constData());
    if (status == 2) std::fprintf(stderr, "Run 'pedometer-cli %s --help'.\n", help_.command);
    return status;
}

bool CliParser::ReadPositive(const QCommandLineOption& option, double* value) const {
    if (!isSet(option)) return true;
    bool ok = false;
    *value = this->value(option).toDouble(&ok);
    if (ok && std::isfinite(*value) && *value > 0.0) return true;
    Fail(2, QStringLiteral("--%1 needs a number above 0, not '%2'")
                .arg(option.names().first(), this->value(option)));
    return false;
}

bool CliParser::ReadDetector(const QCommandLineOption& option, DetectorKind* kind) const {
    if (!isSet(option) || StepDetectorFactory::Parse(value(option), kind)) return true;
    Fail(2, QStringLiteral("--%1 must be classic or adaptive, not '%2'")
                .arg(option.names().first(), value(option)));
    return false;
}
