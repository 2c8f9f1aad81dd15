// pedometer-cli export-body: the body log as the CSV file the report screen mails.
#include <QCommandLineParser>
#include <cstdio>

#include "BodyCsvExport.h"
#include "CliParser.h"
#include "CliRegistry.h"
#include "CliStorage.h"
#include "PedometerDBManager.h"

namespace {

const CliParser::Help kHelp{
    "export-body", "[--out FILE] [OPTIONS]",
    "Writes the whole body log (chest, waist, hips, weight) as the CSV file the report\n"
    "screen attaches to its e-mail: one column per day, newest first, cells separated\n"
    "by ';', in the units chosen in the settings. An existing file is replaced.",
    "0 on success, 2 on a bad option, 1 when the database cannot be read\n"
    "or the file cannot be written (the reason is printed)."};

int runExportBody(const QStringList& args) {
    CliParser parser(kHelp);
    const QCommandLineOption out(QStringLiteral("out"),
                                 QStringLiteral("where to write (default: export.csv in the data folder)"),
                                 QStringLiteral("FILE"));
    parser.addOption(out);
    int exitStatus = 0;
    if (!parser.Parse(args, &exitStatus, 0)) return exitStatus;

    PedometerDBManager& manager = PedometerDBManager::GetInstance();
    manager.SetReadOnly(true);
    manager.LoadOptions();  // imperial or metric, as the screens show it
    const QString path = parser.isSet(out) ? parser.value(out) : BodyCsvExport::DefaultPath();
    QString error;
    if (!BodyCsvExport::Export(path, &error)) return parser.Fail(1, error);
    std::printf("%s: %zu days\n", path.toUtf8().constData(), manager.GetBodyLogs().size());
    return 0;
}

}  // namespace

PEDOMETER_CLI_COMMAND("export-body", "write the body log as a CSV file", runExportBody);
