// pedometer-cli sweep: the adaptive detector's counts for many parameter sets at once,
// for tuning (scripts/tune_adaptive.py): the recordings are read once, each set is a
// pass over samples held in memory.
#include <QString>
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "AccelerationCsvReader.h"
#include "AccelerometerListener.h"
#include "AdaptiveStepDetector.h"
#include "CliParser.h"
#include "CliRegistry.h"
#include "CsvReplaySource.h"

namespace {

struct Sample {
    float x, y, z;
};

class Collector final : public AccelerometerListener {
public:
    void OnDataReceived(float x, float y, float z) override { samples.push_back({x, y, z}); }
    // The detector hears the last sample again on a tick without one, as in the engine.
    void OnTickWithoutSample() override {
        if (!samples.empty()) samples.push_back(samples.back());
    }
    std::vector<Sample> samples;
};

// Reads "name=value ..." into `p`; false with the offending word in `error`.
bool readSet(const QString& line, AdaptiveStepDetector::Parameters& p, QString& error) {
    for (const QString& word : line.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const qsizetype eq = word.indexOf(QLatin1Char('='));
        bool ok = eq > 0;
        const QString name = word.left(eq);
        const double value = ok ? word.mid(eq + 1).toDouble(&ok) : 0.0;
        if (ok && name == QLatin1String("smoothing"))
            p.smoothingSamples = static_cast<int>(value);
        else if (ok && name == QLatin1String("threshold"))
            p.relativeThreshold = static_cast<float>(value);
        else if (ok && name == QLatin1String("floor"))
            p.noiseFloor = static_cast<float>(value);
        else if (ok && name == QLatin1String("fill"))
            p.fillMissedSteps = value != 0.0;
        else if (ok && name == QLatin1String("min"))
            p.minStepSamples = static_cast<int>(value);
        else if (ok && name == QLatin1String("max"))
            p.maxStepSamples = static_cast<int>(value);
        else if (ok && name == QLatin1String("confirm"))
            p.confirmSteps = static_cast<int>(value);
        else if (ok && name == QLatin1String("baseline"))
            p.baselineRate = static_cast<float>(value);
        else if (ok && name == QLatin1String("rise"))
            p.riseRate = static_cast<float>(value);
        else if (ok && name == QLatin1String("merge"))
            p.mergeShare = static_cast<float>(value);
        else if (ok && name == QLatin1String("maxmerge"))
            p.maxMergeSamples = static_cast<int>(value);
        else
            ok = false;
        if (!ok) {
            error = word;
            return false;
        }
    }
    if (!AdaptiveStepDetector::Sanitise(p)) {
        error = QStringLiteral("a value outside its range");
        return false;
    }
    return true;
}

const CliParser::Help kHelp{
    "sweep", "[--rate HZ] FILE... < SETS",
    "Counts the steps of each recording with the adaptive detector once per parameter\n"
    "set. SETS has one set per line, NAME=VALUE pairs separated by blanks; names not\n"
    "given keep their defaults:\n"
    "  smoothing (samples), threshold (share of the recent rise), floor (g),\n"
    "  min (shortest step, samples), max (longest step, samples), confirm (steps),\n"
    "  baseline (running-mean weight), rise (weight of the newest rise),\n"
    "  merge (share of the step period within which peaks merge), maxmerge (samples),\n"
    "  fill (1: a gap of two steps within a walk counts the footfall in it; 0: not)\n"
    "For each set one line is printed: the counts of the files in the order given,\n"
    "separated by blanks. A set that cannot be read prints 'error: ...' instead.",
    "0 on success, 2 on a bad option or a recording that cannot be read.", false};

int runSweep(const QStringList& args) {
    CliParser parser(kHelp);
    const QCommandLineOption rateOption(
        QStringLiteral("rate"),
        QStringLiteral("count the recordings as a sensor sampling at HZ would have given them"),
        QStringLiteral("HZ"));
    parser.addOption(rateOption);
    int exitStatus = 0;
    if (!parser.Parse(args, &exitStatus)) return exitStatus;
    double rate = 0.0;
    if (!parser.ReadPositive(rateOption, &rate)) return 2;
    const QStringList files = parser.positionalArguments();
    if (files.isEmpty()) return parser.Fail(2, QStringLiteral("no recording given"));
    std::vector<std::vector<Sample>> recordings;
    for (const QString& file : files) {
        auto recording = std::make_shared<AccelerationRecording>();
        QString error;
        if (!AccelerationCsvReader::ReadFile(file, recording.get(), &error)) {
            std::fprintf(stderr, "pedometer-cli sweep: %s\n", qPrintable(error));
            return 2;
        }
        const CsvReplaySource source(
            std::make_shared<const AccelerationRecording>(recording->Resampled(rate)));
        Collector collector;
        source.Feed(collector);
        recordings.push_back(std::move(collector.samples));
    }
    std::string line;
    while (std::getline(std::cin, line)) {
        AdaptiveStepDetector::Parameters p;
        QString error;
        if (!readSet(QString::fromStdString(line), p, error)) {
            std::printf("error: %s\n", qPrintable(error));
            continue;
        }
        std::string counts;
        for (const std::vector<Sample>& samples : recordings) {
            AdaptiveStepDetector detector(p);
            long steps = 0;
            for (const Sample& s : samples) steps += detector.OnSample(s.x, s.y, s.z);
            if (!counts.empty()) counts += ' ';
            counts += std::to_string(steps);
        }
        std::printf("%s\n", counts.c_str());
        std::fflush(stdout);
    }
    return 0;
}

}  // namespace

PEDOMETER_CLI_COMMAND("sweep", "adaptive detector counts for many parameter sets (tuning)",
                      runSweep);
