// pedometer-cli accuracy: the step counter against recordings with known step counts.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <cmath>
#include <cstdio>
#include <vector>

#include "AccelerationCsvReader.h"
#include "AccelerationRecording.h"
#include "CliParser.h"
#include "CliRegistry.h"
#include "RecordingStepCounter.h"
#include "StepDetectorFactory.h"

namespace {

struct Entry {
    QString file;
    QString path;
    int truth = 0;
};

QStringList splitCsvLine(const QString& line) {
    QStringList fields = line.split(QLatin1Char(','));
    for (QString& f : fields) {
        f = f.trimmed();
        if (f.size() >= 2 && f.startsWith(QLatin1Char('"')) && f.endsWith(QLatin1Char('"'))) {
            f = f.mid(1, f.size() - 2).trimmed();
        }
    }
    return fields;
}

// Reads the index; false with a message naming the file and line on a problem.
bool readIndex(const QString& indexPath, std::vector<Entry>& entries, QString& error) {
    QFile file(indexPath);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        error = QStringLiteral("%1: cannot open: %2").arg(indexPath, file.errorString());
        return false;
    }
    const QDir folder = QFileInfo(indexPath).absoluteDir();
    int fileColumn = -1;
    int truthColumn = -1;
    int lineNumber = 0;
    bool header = true;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        ++lineNumber;
        if (line.isEmpty()) continue;
        const QStringList fields = splitCsvLine(line);
        const auto fail = [&](const QString& problem) {
            error = QStringLiteral("%1: line %2: %3")
                        .arg(indexPath, QString::number(lineNumber), problem);
            return false;
        };
        if (header) {
            header = false;
            fileColumn = static_cast<int>(fields.indexOf(QStringLiteral("file")));
            truthColumn = static_cast<int>(fields.indexOf(QStringLiteral("ground_truth_steps")));
            if (fileColumn < 0 || truthColumn < 0) {
                return fail(
                    QStringLiteral("the header needs the columns 'file' and 'ground_truth_steps'"));
            }
            continue;
        }
        if (fields.size() <= std::max(fileColumn, truthColumn)) {
            return fail(QStringLiteral("too few columns (%1)").arg(fields.size()));
        }
        Entry entry;
        entry.file = fields[fileColumn];
        if (entry.file.isEmpty()) return fail(QStringLiteral("empty file name"));
        bool ok = false;
        entry.truth = fields[truthColumn].toInt(&ok);
        if (!ok || entry.truth <= 0) {
            return fail(QStringLiteral("ground_truth_steps '%1' is not a positive whole number")
                            .arg(fields[truthColumn]));
        }
        entry.path = QDir::isAbsolutePath(entry.file) ? entry.file : folder.filePath(entry.file);
        entries.push_back(entry);
    }
    if (header) {
        error = QStringLiteral("%1: the index is empty").arg(indexPath);
        return false;
    }
    if (entries.empty()) {
        error = QStringLiteral("%1: no recordings listed after the header").arg(indexPath);
        return false;
    }
    return true;
}

// Counts each listed recording and prints the table and its summary; 2 when a
// recording cannot be read.
int tabulate(const std::vector<Entry>& entries, DetectorKind kind, double rate) {
    QString error;
    int width = 4;
    for (const Entry& e : entries) width = std::max(width, static_cast<int>(e.file.size()));
    const auto row = [width](const QString& file, const QString& counted, const QString& truth,
                             const QString& errorPercent) {
        std::printf("%s\n", QStringLiteral("%1  %2  %3  %4")
                                .arg(file, -width)
                                .arg(counted, 7)
                                .arg(truth, 7)
                                .arg(errorPercent, 7)
                                .toUtf8()
                                .constData());
    };
    row(QStringLiteral("file"), QStringLiteral("counted"), QStringLiteral("true"),
        QStringLiteral("error %"));

    int status = 0;
    double sumAbsError = 0.0;
    long long totalCounted = 0;
    long long totalTrue = 0;
    long long gaitSteps[3] = {0, 0, 0};  // walk, jog, run
    for (const Entry& e : entries) {
        AccelerationRecording recording;
        if (!AccelerationCsvReader::ReadFile(e.path, &recording, &error)) {
            std::fprintf(stderr, "pedometer-cli accuracy: %s\n", qPrintable(error));
            status = 2;
            continue;
        }
        const RecordingStepCounter::Result result =
            RecordingStepCounter::Count(recording.Resampled(rate), kind);
        const int counted = result.Steps();
        gaitSteps[0] += result.walk;
        gaitSteps[1] += result.jog;
        gaitSteps[2] += result.run;
        const double errorPercent = (counted - e.truth) * 100.0 / e.truth;
        sumAbsError += std::fabs(errorPercent);
        totalCounted += counted;
        totalTrue += e.truth;
        row(e.file, QString::number(counted), QString::number(e.truth),
            QString::number(errorPercent, 'f', 1));
        std::fflush(stdout);
    }
    if (status != 0) return status;
    row(QStringLiteral("total"), QString::number(totalCounted), QString::number(totalTrue),
        QString::number((totalCounted - totalTrue) * 100.0 / totalTrue, 'f', 1));
    std::printf("mean absolute percentage error: %s %%\n",
                qPrintable(QString::number(sumAbsError / entries.size(), 'f', 1)));
    const auto share = [&](long long steps) {
        return QString::number(totalCounted > 0 ? steps * 100.0 / totalCounted : 0.0, 'f', 1);
    };
    std::printf("steps classed as walk: %s %%, jog: %s %%, run: %s %%\n",
                qPrintable(share(gaitSteps[0])), qPrintable(share(gaitSteps[1])),
                qPrintable(share(gaitSteps[2])));
    return 0;
}

const CliParser::Help kHelp{
    "accuracy", "[--detector classic|adaptive] [--rate HZ] TRUTH.csv",
    "Counts the steps in a set of recordings and compares them with their true counts.\n"
    "TRUTH.csv is an index with a header line and at least the columns 'file' (a\n"
    "recording, relative to the index's folder) and 'ground_truth_steps'; other columns\n"
    "are ignored. Each recording is counted as 'pedometer-cli count' does, and a table of\n"
    "counted steps, true steps and signed error in percent is printed, followed by the\n"
    "mean absolute percentage error.",
    "0 on success, 2 on a bad index or a recording that cannot be read.", false};

int runAccuracy(const QStringList& args) {
    CliParser parser(kHelp);
    const QCommandLineOption detector(QStringLiteral("detector"),
                                      QStringLiteral("the step detector (default adaptive)"),
                                      QStringLiteral("classic|adaptive"));
    const QCommandLineOption rateOption(
        QStringLiteral("rate"),
        QStringLiteral("count as a sensor sampling at HZ would have (of each 1/HZ seconds only "
                       "the first recorded sample is kept)"),
        QStringLiteral("HZ"));
    parser.addOptions({detector, rateOption});
    int exitStatus = 0;
    if (!parser.Parse(args, &exitStatus)) return exitStatus;
    DetectorKind kind = kDefaultDetector;
    double rate = 0.0;
    if (!parser.ReadDetector(detector, &kind) || !parser.ReadPositive(rateOption, &rate)) return 2;
    if (parser.positionalArguments().size() != 1)
        return parser.Fail(2, QStringLiteral("expected one index file"));
    std::vector<Entry> entries;
    QString error;
    if (!readIndex(parser.positionalArguments().first(), entries, error)) {
        std::fprintf(stderr, "pedometer-cli accuracy: %s\n", qPrintable(error));
        return 2;
    }

    return tabulate(entries, kind, rate);
}

}  // namespace

PEDOMETER_CLI_COMMAND("accuracy", "compare step counts with a ground-truth index", runAccuracy);
