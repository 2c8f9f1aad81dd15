// pedometer-cli replay: a recording through the whole counting pipeline into the
// database, on a virtual clock (as fast as the machine allows) or in real time.
#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QTimer>
#include <cstdio>

#include "AccelerometerSource.h"
#include "CliParser.h"
#include "CliRegistry.h"
#include "CliStorage.h"
#include "Clock.h"
#include "CsvReplaySource.h"
#include "DAOLap.h"
#include "PedometerDBManager.h"
#include "QuorPedometer.h"
#include "StatisticsManager.h"
#include "StepDetectorFactory.h"
#include "UpdaterThread.h"
#include "VirtualTime.h"

namespace {

int fail(const QString& message) {
    std::fprintf(stderr, "pedometer-cli replay: %s\n", qPrintable(message));
    return 2;
}

// Feeds every sample at its own recording time, moving the virtual clock (and so the
// one-second timer) along with the recording. Before the clock moves on, the updater
// finishes what the last tick handed it, so its writes carry the time of their interval
// as they would on a phone.
void feedOnVirtualClock(const CsvReplaySource& source, qint64 startMs, QuorPedometer& detector,
                        UpdaterThread& updater) {
    auto advanceTo = [&updater](qint64 ms) {
        updater.WaitUntilIdle();
        VirtualTime::AdvanceTo(ms);
    };
    source.Feed(detector,
                [&](const ReplayTick& tick) { advanceTo(startMs + tick.tickNs / 1'000'000); });
    advanceTo(startMs + source.Recording().DurationNs() / 1'000'000);
}

// Plays the recording at its own pace on the sensor thread, with the real timers,
// until a single pass is over.
void playInRealTime(CsvReplaySource* source) {
    QObject::connect(
        source, &CsvReplaySource::Finished, QCoreApplication::instance(),
        [] { QCoreApplication::quit(); }, Qt::QueuedConnection);
    QCoreApplication::exec();
}

// Prints the lap as the database holds it, read back: the unfinished last interval is
// not part of it. Fails when anything of the recording was not stored.
int printStoredLap(int lapId) {
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    const DatabaseStatus status = db.StatisticsStatus();
    if (lapId < 0 || !status.usable() || !status.lastFailure.isEmpty()) {
        return fail(QStringLiteral("the recording was not saved completely: %1")
                        .arg(status.error.isEmpty() ? status.lastFailure : status.error));
    }
    const std::unique_ptr<DAOLap> stored = db.GetLap(lapId);
    if (!stored) return fail(QStringLiteral("the lap was not stored"));
    db.GetSecondsForLap(*stored);
    int steps = 0;
    double distance = 0.0;
    double calories = 0.0;
    int minutes = 0;
    for (const auto& m : stored->minutes) {
        steps += m->steps;
        distance += m->distance;
        calories += m->calories;
        if (m->secondsCompleted > 0) ++minutes;
    }
    std::printf("lap=%d steps=%d distance_m=%.2f calories=%.2f minutes=%d intervals=%zu\n", lapId,
                steps, distance, calories, minutes, stored->seconds.size());
    return 0;
}

const CliParser::Help kHelp{
    "replay", "[OPTIONS] FILE",
    "Replays an accelerometer recording (CSV) through the counting pipeline into the\n"
    "database, as if the phone had counted it live, and prints the stored lap:\n"
    "  lap=ID steps=N distance_m=D calories=C minutes=M intervals=K\n"
    "By default the recording runs on a virtual clock as fast as possible; the\n"
    "steps of an unfinished final five-second interval are not stored.",
    "0 on success, 2 on a bad argument or when the recording cannot be replayed or\n"
    "stored, 1 when another process writes to the data folder."};

int runReplay(const QStringList& args) {
    CliParser parser(kHelp);
    QCommandLineOption start(QStringLiteral("start"),
                             QStringLiteral("local time counting starts at (default: now)"),
                             QStringLiteral("YYYY-MM-DD HH:MM:SS"));
    QCommandLineOption realtime(QStringLiteral("realtime"),
                                QStringLiteral("feed at the recording's own pace, real timers"));
    QCommandLineOption detector(QStringLiteral("detector"),
                                QStringLiteral("step detector: classic or adaptive (default: the "
                                               "\"detector\" setting, else adaptive)"),
                                QStringLiteral("D"));
    parser.addOptions({start, realtime, detector});
    int exitStatus = 0;
    if (!parser.Parse(args, &exitStatus)) return exitStatus;
    if (parser.positionalArguments().size() != 1) return parser.Fail(2, QStringLiteral("give one FILE"));
    const QString file = parser.positionalArguments().first();

    QDateTime startTime = Clock::Now();
    if (parser.isSet(start)) {
        startTime =
            QDateTime::fromString(parser.value(start), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        if (!startTime.isValid()) {
            return fail(
                QStringLiteral("--start '%1' is not YYYY-MM-DD HH:MM:SS").arg(parser.value(start)));
        }
    }
    DetectorKind kind = DetectorKind::Classic;
    if (!parser.ReadDetector(detector, &kind)) return 2;
    if (parser.isSet(detector)) StepDetectorFactory::SetChoice(kind);
    const std::unique_ptr<DataFolderLock> lock = CliStorage::LockDataFolder("replay");
    if (!lock) return 1;

    QString error;
    std::unique_ptr<CsvReplaySource> source = CsvReplaySource::FromFile(file, &error);
    if (!source) return fail(error);

    PedometerDBManager& db = PedometerDBManager::GetInstance();
    db.LoadOptions();
    db.LoadBody();
    for (const DatabaseStatus& status : {db.OptionsStatus(), db.StatisticsStatus()}) {
        if (!status.usable()) {
            return fail(QStringLiteral("the database %1 cannot be used: %2")
                            .arg(status.path, status.error));
        }
    }

    const bool live = parser.isSet(realtime);
    if (!live) VirtualTime::Enable(startTime);
    StatisticsManager manager;
    CsvReplaySource* liveSource = live ? source.get() : nullptr;
    manager.UseSensorSource(live ? std::move(source) : nullptr);
    manager.Initialize();
    manager.start();
    if (live) {
        playInRealTime(liveSource);
    } else {
        feedOnVirtualClock(*source, startTime.toMSecsSinceEpoch(), *manager.Detector(),
                           *manager.GetUpdaterThread());
    }
    manager.stop();
    manager.GetUpdaterThread()->WaitUntilIdle();
    if (VirtualTime::IsEnabled()) VirtualTime::Disable();

    return printStoredLap(manager.GetCurrentLap()->id);
}

}  // namespace

PEDOMETER_CLI_COMMAND("replay", "replay a recording through the pipeline into the database",
                      runReplay);
