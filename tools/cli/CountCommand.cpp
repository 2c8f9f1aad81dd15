// pedometer-cli count: steps in accelerometer recordings.
#include <QCommandLineParser>
#include <QString>
#include <cmath>
#include <cstdio>

#include "AccelerationCsvReader.h"
#include "AccelerationRecording.h"
#include "Body.h"
#include "CliRegistry.h"
#include "RecordingStepCounter.h"
#include "StepDetectorFactory.h"

namespace {

const char kHelp[] =
    "Usage: pedometer-cli count [OPTIONS] FILE...\n"
    "\n"
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
    "are ignored.\n"
    "\n"
    "Options:\n"
    "  --detector D      the step detector: adaptive (the default) or classic\n"
    "  --rate HZ         count as a sensor sampling at HZ would have: of each 1/HZ\n"
    "                    seconds only the first recorded sample is kept\n"
    "  --json            one JSON object per file instead, with the keys file, steps,\n"
    "                    walk, jog, run, samples and distance_m\n"
    "  --walk-coef C     walk sensitivity: the dead-band of the walk detector's sum of\n"
    "                    eight magnitudes, in g (default 0.3)\n"
    "  --jog-coef C      jog sensitivity (default 0.9)\n"
    "  --run-coef C      run sensitivity (default 1.4)\n"
    "  -h, --help        show this help\n"
    "\n"
    "Exit status: 0 when every file was counted, 2 on a bad option or a file that cannot\n"
    "be read (the others are still counted).\n";

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

// Reads one --*-coef option into Body; false (with a message) on a bad value.
bool applyCoef(const QCommandLineParser& parser, const QString& option,
               void (Body::*setter)(double)) {
    if (!parser.isSet(option)) return true;
    const QString text = parser.value(option);
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok || !std::isfinite(value) || value < 0.0) {
        std::fprintf(stderr, "pedometer-cli count: --%s needs a number >= 0, not '%s'\n",
                     qPrintable(option), qPrintable(text));
        return false;
    }
    (Body::GetInstance().*setter)(value);
    return true;
}

int runCount(const QStringList& args) {
    QCommandLineParser parser;
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsOptions);
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")}, QString());
    const QCommandLineOption json(QStringLiteral("json"), QString());
    parser.addOption(help);
    parser.addOption(json);
    const QCommandLineOption detectorOption(QStringLiteral("detector"), QString(),
                                            QStringLiteral("D"));
    parser.addOption(detectorOption);
    const QCommandLineOption rateOption(QStringLiteral("rate"), QString(), QStringLiteral("HZ"));
    parser.addOption(rateOption);
    for (const char* coef : {"walk-coef", "jog-coef", "run-coef"}) {
        parser.addOption(QCommandLineOption(QLatin1String(coef), QString(), QStringLiteral("C")));
    }
    if (!parser.parse(QStringList{QStringLiteral("count")} + args)) {
        std::fprintf(stderr, "pedometer-cli count: %s\nRun 'pedometer-cli count --help'.\n",
                     qPrintable(parser.errorText()));
        return 2;
    }
    if (parser.isSet(help)) {
        std::fputs(kHelp, stdout);
        return 0;
    }
    const QStringList files = parser.positionalArguments();
    if (files.isEmpty()) {
        std::fprintf(stderr,
                     "pedometer-cli count: no recording given\n"
                     "Usage: pedometer-cli count [OPTIONS] FILE...\n");
        return 2;
    }
    if (!applyCoef(parser, QStringLiteral("walk-coef"), &Body::setWalkCoef) ||
        !applyCoef(parser, QStringLiteral("jog-coef"), &Body::setJogCoef) ||
        !applyCoef(parser, QStringLiteral("run-coef"), &Body::setRunCoef)) {
        return 2;
    }

    DetectorKind kind = kDefaultDetector;
    if (parser.isSet(detectorOption) &&
        !StepDetectorFactory::Parse(parser.value(detectorOption), &kind)) {
        std::fprintf(stderr,
                     "pedometer-cli count: --detector must be classic or adaptive, not '%s'\n",
                     qPrintable(parser.value(detectorOption)));
        return 2;
    }

    double rate = 0.0;
    if (parser.isSet(rateOption)) {
        bool ok = false;
        rate = parser.value(rateOption).toDouble(&ok);
        if (!ok || !std::isfinite(rate) || rate <= 0.0) {
            std::fprintf(stderr, "pedometer-cli count: --rate needs a number above 0, not '%s'\n",
                         qPrintable(parser.value(rateOption)));
            return 2;
        }
    }

    const Body& body = Body::GetInstance();
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
        const double metres = r.walk * body.getWalkStepSize() + r.jog * body.getJogStepSize() +
                              r.run * body.getRunStepSize();
        // QString::number ignores the locale, so the decimal point is always '.'.
        const QString distance = QString::number(metres, 'f', 2);
        QString line;
        if (parser.isSet(json)) {
            line = QStringLiteral(
                       "{\"file\":%1,\"steps\":%2,\"walk\":%3,\"jog\":%4,\"run\":%5,"
                       "\"samples\":%6,\"distance_m\":%7}")
                       .arg(jsonString(file), QString::number(r.Steps()), QString::number(r.walk),
                            QString::number(r.jog), QString::number(r.run),
                            QString::number(r.samples), distance);
        } else {
            line = QStringLiteral("%1 steps=%2 walk=%3 jog=%4 run=%5 samples=%6 distance_m=%7")
                       .arg(file, QString::number(r.Steps()), QString::number(r.walk),
                            QString::number(r.jog), QString::number(r.run),
                            QString::number(r.samples), distance);
        }
        std::printf("%s\n", line.toUtf8().constData());
        std::fflush(stdout);
    }
    return status;
}

}  // namespace

PEDOMETER_CLI_COMMAND("count", "count the steps in accelerometer recordings (CSV)", runCount);
