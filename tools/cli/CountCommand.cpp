// pedometer-cli count: steps in accelerometer recordings.
#include <QString>
#include <cmath>
#include <cstdio>

#include "AccelerationCsvReader.h"
#include "AccelerationRecording.h"
#include "Body.h"
#include "CliParser.h"
#include "CliRegistry.h"
#include "RecordingStepCounter.h"
#include "StepDetectorFactory.h"

namespace {

QString jsonString(const QString& text) {
    QString out = QStringLiteral("\"");
    for (const QChar c : text) {
        if (c == QLatin1Char('"') || c == QLatin1Char('\\')) {
            out += QLatin1Char('\\');
            out += c;
        } else if (c.unicode() < 0x20) {
            out += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
        } else {
            out += c;
        }
    }
    return out + QLatin1Char('"');
}

// One file's line: "FILE steps=N ..." or, for --json, a JSON object.
QString describe(const QString& file, const RecordingStepCounter::Result& r, bool json) {
    const Body& body = Body::GetInstance();
    const double metres = r.walk * body.getWalkStepSize() + r.jog * body.getJogStepSize() +
                          r.run * body.getRunStepSize();
    // QString::number ignores the locale, so the decimal point is always '.'.
    const QString distance = QString::number(metres, 'f', 2);
    const QString format =
        json ? QStringLiteral("{\"file\":%1,\"steps\":%2,\"walk\":%3,\"jog\":%4,\"run\":%5,"
                              "\"samples\":%6,\"distance_m\":%7}")
             : QStringLiteral("%1 steps=%2 walk=%3 jog=%4 run=%5 samples=%6 distance_m=%7");
    return format.arg(json ? jsonString(file) : file, QString::number(r.Steps()),
                      QString::number(r.walk), QString::number(r.jog), QString::number(r.run),
                      QString::number(r.samples), distance);
}

// Reads one --*-coef option into Body; false (after saying why) on a bad value.
bool applyCoef(const CliParser& parser, const QString& option, void (Body::*setter)(double)) {
    if (!parser.isSet(option)) return true;
    const QString text = parser.value(option);
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok || !std::isfinite(value) || value < 0.0) {
        parser.Fail(2, QStringLiteral("--%1 needs a number >= 0, not '%2'").arg(option, text));
        return false;
    }
    (Body::GetInstance().*setter)(value);
    return true;
}

const CliParser::Help kHelp{
    "count", "[OPTIONS] FILE...",
    "Counts the steps in accelerometer recordings. Each FILE is replayed the way the\n"
    "phone reads its sensor (a sample every 30 ms of the recording's own time, repeats\n"
    "skipped) through the step detector with the default body profile, and one line is\n"
    "printed per file:\n"
    "\n"
    "  FILE steps=N walk=N jog=N run=N samples=N distance_m=D\n"
    "\n"
    "samples is the number of samples the detector received; distance_m uses the\n"
    "default step length of each gait, in metres with two decimals.\n"
    "\n"
    "A recording is a CSV file whose first line names the columns with their units, such\n"
    "as \"Time (s)\",\"Acceleration x (m/s^2)\",\"Acceleration y (m/s^2)\",\"Acceleration z\n"
    "(m/s^2)\". Time may be in s, ms, us or ns, acceleration in m/s^2 or g; other columns\n"
    "are ignored.",
    "0 when every file was counted, 2 on a bad option or a file that cannot\n"
    "be read (the others are still counted).",
    false};

int runCount(const QStringList& args) {
    CliParser parser(kHelp);
    const QCommandLineOption detectorOption(
        QStringLiteral("detector"), QStringLiteral("the step detector: adaptive (the default) or classic"),
        QStringLiteral("D"));
    const QCommandLineOption rateOption(
        QStringLiteral("rate"),
        QStringLiteral("count as a sensor sampling at HZ would have: of each 1/HZ seconds only "
                       "the first recorded sample is kept"),
        QStringLiteral("HZ"));
    const QCommandLineOption json(QStringLiteral("json"),
                                  QStringLiteral("one JSON object per file instead, with the keys "
                                                 "file, steps, walk, jog, run, samples and distance_m"));
    parser.addOptions({detectorOption, rateOption, json});
    const struct {
        const char* name;
        const char* help;
        void (Body::*setter)(double);
    } coefs[] = {
        {"walk-coef",
         "walk sensitivity: the dead-band of the walk detector's sum of eight magnitudes, in g "
         "(default 0.3)",
         &Body::setWalkCoef},
        {"jog-coef", "jog sensitivity (default 0.9)", &Body::setJogCoef},
        {"run-coef", "run sensitivity (default 1.4)", &Body::setRunCoef},
    };
    for (const auto& coef : coefs) {
        parser.addOption(QCommandLineOption(QLatin1String(coef.name), QLatin1String(coef.help),
                                            QStringLiteral("C")));
    }
    int exitStatus = 0;
    if (!parser.Parse(args, &exitStatus)) return exitStatus;
    const QStringList files = parser.positionalArguments();
    if (files.isEmpty()) return parser.Fail(2, QStringLiteral("no recording given"));
    for (const auto& coef : coefs) {
        if (!applyCoef(parser, QLatin1String(coef.name), coef.setter)) return 2;
    }
    DetectorKind kind = kDefaultDetector;
    double rate = 0.0;
    if (!parser.ReadDetector(detectorOption, &kind) || !parser.ReadPositive(rateOption, &rate))
        return 2;

    int status = 0;
    for (const QString& file : files) {
        AccelerationRecording recording;
        QString error;
        if (!AccelerationCsvReader::ReadFile(file, &recording, &error)) {
            std::fprintf(stderr, "pedometer-cli count: %s\n", qPrintable(error));
            status = 2;
            continue;
        }
        const RecordingStepCounter::Result r =
            RecordingStepCounter::Count(recording.Resampled(rate), kind);
        const QString line = describe(file, r, parser.isSet(json));
        std::printf("%s\n", line.toUtf8().constData());
        std::fflush(stdout);
    }
    return status;
}

}  // namespace

PEDOMETER_CLI_COMMAND("count", "count the steps in accelerometer recordings (CSV)", runCount);
