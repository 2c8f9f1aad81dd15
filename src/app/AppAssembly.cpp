#include "AppAssembly.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFileSystemWatcher>
#include <QIcon>
#include <QWidget>
#include <cstdio>

#include "AccelerometerSourceFactory.h"
#include "AppPaths.h"
#include "CountingEngine.h"
#include "CsvReplaySource.h"
#include "DAOLap.h"
#include "DAOLapSeconds.h"
#include "DataBackup.h"
#include "DataFolderLock.h"
#include "DeferredAccelerometerSource.h"
#include "DesktopNotifications.h"
#include "FeedbackProfile.h"
#include "FirstPaintReporter.h"
#include "Pedometer.h"
#include "PedometerDBManager.h"
#include "RecordingAccelerometerSource.h"
#include "ScreenDirectory.h"
#include "ScriptedRun.h"
#include "SingleInstance.h"
#include "SoundsManager.h"
#include "StatisticsManager.h"
#include "TerminationSignals.h"

namespace {

bool UseSessionBus() { return !qEnvironmentVariableIsSet("PEDOMETER_NO_DBUS"); }

void PrintInterval(int lapId, const DAOLapSeconds& s) {
    std::printf("interval lap=%d steps=%d distance_m=%.2f calories=%.4f\n", lapId, s.steps,
                s.distance, s.calories);
    std::fflush(stdout);
}

// Warns on standard error when a database cannot be used: the application still runs,
// but what it counts is not kept.
void ReportDatabaseProblems() {
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    QStringList told;
    // Damage found later by the statistics file's check shows in the window's notice:
    // waiting for it here would hold back the first paint.
    for (const DatabaseStatus& status :
         {db.OptionsStatus(), db.StatisticsConnection().StatusSoFar()}) {
        if (!status.usable() && !told.contains(status.error)) {
            told << status.error;
            std::fprintf(stderr, "pedometer: %s; nothing will be saved\n",
                         qPrintable(status.error));
        }
    }
}

// The accelerometer: a replayed recording or the machine's own, maybe recorded. Null
// with `error` set when a file cannot be used; `replay` is the replayed recording,
// `machine` the machine's own, made only when realized (after the first paint).
std::unique_ptr<AccelerometerSource> MakeSource(const LaunchOptions& options,
                                                CsvReplaySource** replay,
                                                DeferredAccelerometerSource** machine,
                                                QString* error) {
    std::unique_ptr<AccelerometerSource> source;
    if (!options.replayFile.isEmpty()) {
        std::unique_ptr<CsvReplaySource> csv = CsvReplaySource::FromFile(options.replayFile, error);
        if (!csv) return nullptr;
        csv->SetLooping(options.loop);
        *replay = csv.get();
        source = std::move(csv);
    } else {
        // Without --sensor, the choice stored by the sensitivity settings.
        QString choice = options.sensor.value_or(QString());
        if (!options.sensor) {
            choice = PedometerDBManager::GetInstance().GetPreference(QStringLiteral("sensor"),
                                                                     QStringLiteral("auto"));
            if (!AccelerometerSourceFactory::IsValidChoice(choice)) choice = QStringLiteral("auto");
        }
        AccelerometerSourceFactory::SetChoice(choice);
        auto deferred = std::make_unique<DeferredAccelerometerSource>(
            [choice] { return AccelerometerSourceFactory::Create(choice); });
        *machine = deferred.get();
        source = std::move(deferred);
    }
    if (!options.recordFile.isEmpty()) {
        auto recorder =
            std::make_unique<RecordingAccelerometerSource>(std::move(source), options.recordFile);
        if (!recorder->Open(error)) return nullptr;
        source = std::move(recorder);
    }
    return source;
}

}  // namespace

AppAssembly::AppAssembly(const LaunchOptions& options) : options_(options) {}

AppAssembly::~AppAssembly() = default;

AppAssembly::Outcome AppAssembly::Assemble(QString* error) {
    // One pedometer per session on the user's own data: a second launch brings the
    // first one forward and leaves.
    if (options_.dataDir.isEmpty() && UseSessionBus()) {
        single_ = std::make_unique<SingleInstance>(QDBusConnection::sessionBus());
        if (single_->Claim() == SingleInstance::Outcome::HandedOver) {
            std::printf("pedometer is already running; its window was brought forward\n");
            return Outcome::HandedOver;
        }
    }
    if (!TakeDataFolder(error)) return Outcome::Failed;
    DeferredAccelerometerSource* machine = nullptr;
    std::unique_ptr<AccelerometerSource> source = MakeSource(options_, &replay_, &machine, error);
    if (!source) return Outcome::Failed;
    // The desktop's services on the session bus; without them nothing is shown or followed.
    if (UseSessionBus()) {
        notifications_ = std::make_unique<DesktopNotifications>(QDBusConnection::sessionBus());
        feedback_ = std::make_unique<FeedbackProfile>(QDBusConnection::sessionBus());
    }
    QElapsedTimer startup;
    startup.start();
    pedometer_ = std::make_unique<Pedometer>();
    pedometer_->SetStartInBackground(options_.background);
    pedometer_->UseNotifications(notifications_.get());
    // SIGTERM (a logout, a shutdown) and SIGINT end the event loop like Quit does.
    terminationSignals_ =
        std::make_unique<TerminationSignals>([this] { pedometer_->RequestQuit(); });
    pedometer_->Engine().UseSensorSource(std::move(source));
    if (Headless()) pedometer_->Engine().SetIntervalObserver(PrintInterval);
    // What the first frame does not need waits until it is painted: the window icon (an
    // SVG icon plug-in), the audio system and the sensor backend's plug-ins and service.
    firstPaint_ = std::make_unique<FirstPaintReporter>(options_.screen, startup, [machine] {
        QApplication::setWindowIcon(
            QIcon(AppPaths::ResFile(QStringLiteral("images/pedometer-icon.svg"))));
        SoundsManager::GetInstance().PrepareClick();
        if (machine != nullptr) machine->Realize();
    });
    if (!OpenWindow(error)) return Outcome::Failed;
    if (options_.background) firstPaint_->RunAfterwards();  // no window, no paint
    ScriptedRun::Schedule(options_, *pedometer_, replay_);
    return Outcome::Ready;
}

// Any process writing to a data folder locks it; a restore a killed tool left half done
// is finished before the files are opened.
bool AppAssembly::TakeDataFolder(QString* error) {
    const QString home = AppPaths::Home();
    if (home.isEmpty()) return true;
    folderLock_ = DataFolderLock::Acquire(home, error);
    if (!folderLock_ || !DataBackup::Recover(home, error)) return false;
    // Someone deleting the lock file would let a second writer in: take it back. The
    // folder is watched (inotify) rather than polled, so a hidden window does not wake.
    lockWatch_ = std::make_unique<QFileSystemWatcher>();
    if (lockWatch_->addPath(home)) {
        QObject::connect(lockWatch_.get(), &QFileSystemWatcher::directoryChanged, [this] {
            QString reclaimError;
            if (!folderLock_->Reclaim(&reclaimError))
                qWarning("pedometer: %s", qPrintable(reclaimError));
        });
    }
    return true;
}

bool AppAssembly::OpenWindow(QString* error) {
    pedometer_->OnAppInitializing();
    ReportDatabaseProblems();
    QWidget* opened = ScreenDirectory::Open(options_.screen,
                                            *pedometer_->GetNavigationController(),
                                            options_.request, error);
    if (opened == nullptr) {
        pedometer_->OnAppTerminating();
        return false;
    }
    opened->installEventFilter(firstPaint_.get());
    if (single_) {
        single_->SetOnActivate(
            [this](const QString& token) { pedometer_->ShowWindow(token); });
    }
    return true;
}

bool AppAssembly::Headless() const {
    return replay_ != nullptr || QGuiApplication::platformName() == QLatin1String("offscreen");
}

int AppAssembly::Run() {
    const int status = QApplication::exec();
    pedometer_->OnAppTerminating();  // stores what was counted since the last interval
    if (Headless()) {
        const StatisticsManager& statistics = pedometer_->Engine().Statistics();
        const auto lap = statistics.GetCurrentLap();
        std::printf("counted lap=%d steps=%d\n", lap ? lap->id : -1, statistics.GetLapSteps());
    }
    return status;
}
