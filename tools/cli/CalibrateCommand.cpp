// pedometer-cli calibrate: the walking step length from a recorded walk of known length.
#include <QCommandLineParser>
#include <QString>
#include <cmath>
#include <cstdio>

#include "AccelerationCsvReader.h"
#include "AccelerationRecording.h"
#include "AppResource.h"
#include "CliParser.h"
#include "CliRegistry.h"
#include "CliStorage.h"
#include "PedometerDBManager.h"
#include "RecordingStepCounter.h"
#include "StepDetectorFactory.h"
#include "StepLengthCalibration.h"

namespace {

const CliParser::Help kHelp{
    "calibrate", "FILE --distance METRES [OPTIONS]",
    "Calibrates the walking step length from a recording of a walk of known length:\n"
    "FILE is counted as 'pedometer-cli count' does, with the profile's step detector\n"
    "and sensitivities, and METRES divided by the walking steps becomes the profile's\n"
    "walk step length, shown as calibrated. A length outside 0.3-1.2 m a step is\n"
    "refused (the distance or the recording is wrong) and nothing is changed.\n"
    "Prints: FILE walk_steps=N step_length_m=L",
    "0 when calibrated, 2 on a bad option or an unreadable recording, 1\n"
    "when the length is refused or cannot be stored (the reason is printed)."};

int runCalibrate(const QStringList& args) {
    CliParser parser(kHelp);
    const QCommandLineOption distance(QStringLiteral("distance"),
                                      QStringLiteral("the distance walked in the recording, in metres"),
                                      QStringLiteral("METRES"));
    parser.addOption(distance);
    int exitStatus = 0;
    if (!parser.Parse(args, &exitStatus, 1)) return exitStatus;
    bool ok = false;
    const double metres = parser.value(distance).toDouble(&ok);
    if (!parser.isSet(distance) || !ok || !std::isfinite(metres) || metres <= 0.0) {
        return parser.Fail(2, QStringLiteral("--distance needs the metres walked, a number above 0"));
    }
    const QString file = parser.positionalArguments().first();
    AccelerationRecording recording;
    QString error;
    if (!AccelerationCsvReader::ReadFile(file, &recording, &error)) return parser.Fail(2, error);

    const std::unique_ptr<DataFolderLock> lock = CliStorage::LockDataFolder("calibrate");
    if (!lock) return 1;
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    db.LoadOptions();
    db.LoadBody();
    const DatabaseStatus status = db.OptionsStatus();
    if (!status.usable()) return parser.Fail(1, QStringLiteral("%1: %2").arg(status.path, status.error));

    const int walkSteps =
        RecordingStepCounter::Count(recording, StepDetectorFactory::Configured()).walk;
    const StepLengthCalibration::Result result = StepLengthCalibration::Apply(metres, walkSteps);
    std::printf("%s walk_steps=%d step_length_m=%s\n", file.toUtf8().constData(), walkSteps,
                qPrintable(QString::number(result.stepLength, 'f', 3)));
    if (result.verdict != StepLengthCalibration::Verdict::Calibrated) {
        return parser.Fail(1, AppResource::GetInstance().GetString(QString::fromUtf8(
                           StepLengthCalibration::MessageKey(result.verdict))));
    }
    return 0;
}

}  // namespace

PEDOMETER_CLI_COMMAND("calibrate", "the walking step length from a walk of known length",
                      runCalibrate);
