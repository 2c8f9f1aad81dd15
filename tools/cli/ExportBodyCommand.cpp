// pedometer-cli export-body: the body log as the CSV file the report screen mails.
#include <QCommandLineParser>
#include <cstdio>

#include "BodyCsvExport.h"
#include "CliRegistry.h"
#include "CliStorage.h"
#include "PedometerDBManager.h"

namespace {

const char kHelp[] =
    "Usage: pedometer-cli export-body [--out FILE] [OPTIONS]\n"
    "\n"
    "Writes the whole body log (chest, waist, hips, weight) as the CSV file the report\n"
    "screen attaches to its e-mail: one column per day, newest first, cells separated\n"
    "by ';', in the units chosen in the settings. An existing file is replaced.\n"
    "\n"
    "Options:\n"
    "  --out FILE        where to write (default: export.csv in the data folder)\n"
    "%s"
    "  -h, --help        show this help\n"
    "\n"
    "Exit status: 0 on success, 2 on a bad option, 1 when the database cannot be read\n"
    "or the file cannot be written (the reason is printed).\n";

int runExportBody(const QStringList& args) {
    QCommandLineParser parser;
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")}, QString());
    const QCommandLineOption out(QStringLiteral("out"), QString(), QStringLiteral("FILE"));
    parser.addOption(help);
    parser.addOption(out);
    parser.addOption(CliStorage::DataDirOption());
    if (!parser.parse(QStringList{QStringLiteral("export-body")} + args)) {
        std::fprintf(stderr,
                     "pedometer-cli export-body: %s\nRun 'pedometer-cli export-body --help'.\n",
                     qPrintable(parser.errorText()));
        return 2;
    }
    if (parser.isSet(help)) {
        std::printf(kHelp, CliStorage::kDataDirHelp);
        return 0;
    }
    if (!parser.positionalArguments().isEmpty()) {
        std::fprintf(stderr, "pedometer-cli export-body: unexpected argument '%s'\n",
                     qPrintable(parser.positionalArguments().first()));
        return 2;
    }
    CliStorage::ApplyDataDir(parser);

    PedometerDBManager& manager = PedometerDBManager::GetInstance();
    manager.SetReadOnly(true);
    manager.LoadOptions();  // imperial or metric, as the screens show it
    const QString path = parser.isSet(out) ? parser.value(out) : BodyCsvExport::DefaultPath();
    QString error;
    if (!BodyCsvExport::Export(path, &error)) {
        std::fprintf(stderr, "pedometer-cli export-body: %s\n", error.toUtf8().constData());
        return 1;
    }
    std::printf("%s: %zu days\n", path.toUtf8().constData(), manager.GetBodyLogs().size());
    return 0;
}

}  // namespace

PEDOMETER_CLI_COMMAND("export-body", "write the body log as a CSV file", runExportBody);
