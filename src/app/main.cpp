// pedometer: the windowed application.
#include <time.h>
#include <unistd.h>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QIcon>
#include <QLocale>
#include <QFileSystemWatcher>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <utility>

#include "AccelerometerSourceFactory.h"
#include "AppFrame.h"
#include "AppPaths.h"
#include "AppResource.h"
#include "CsvReplaySource.h"
#include "DAOLap.h"
#include "DAOLapSeconds.h"
#include "DataBackup.h"
#include "DataFolderLock.h"
#include "DeferredAccelerometerSource.h"
#include "DesktopNotifications.h"
#include "FeedbackProfile.h"
#include "FontConfigWarmUp.h"
#include "LaunchOptions.h"
#include "LayoutCheck.h"
#include "MainForm.h"
#include "Pedometer.h"
#include "PedometerDBManager.h"
#include "PlatformSettings.h"
#include "RecordingAccelerometerSource.h"
#include "ScreenDirectory.h"
#include "ScreenOffCounting.h"
#include "SingleInstance.h"
#include "SoundsManager.h"
#include "CountingEngine.h"
#include "StatisticsManager.h"
#include "StepDetectorFactory.h"
#include "TerminationSignals.h"
#include "TivNavigationController.h"
#include "TivUtils.h"

namespace {

int fail(const QString& message) {
    std::fprintf(stderr, "pedometer: %s\n", qPrintable(message));
    return 2;
}

bool onOffscreenPlatform() {
    return QGuiApplication::platformName() == QLatin1String("offscreen");
}

// Milliseconds since this process was started (the kernel's start time, so the figure
// includes loading the libraries); falls back to `fallback` when /proc cannot tell.
qint64 millisecondsSinceProcessStart(const QElapsedTimer& fallback) {
    QFile stat(QStringLiteral("/proc/self/stat"));
    timespec now{};
    if (stat.open(QIODevice::ReadOnly) && clock_gettime(CLOCK_BOOTTIME, &now) == 0) {
        // Field 22 is the start time in clock ticks after boot; the name in field 2
        // may hold blanks, so count from the closing parenthesis.
        const QByteArray line = stat.readAll();
        const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
        bool ok = false;
        const qint64 ticks = fields.size() > 19 ? fields[19].toLongLong(&ok) : 0;
        if (ok) {
            const qint64 nowMs = qint64(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
            return nowMs - ticks * 1000 / sysconf(_SC_CLK_TCK);
        }
    }
    return fallback.elapsed();
}

// Processor time all threads of this process have used so far, in milliseconds: on a
// busy machine a steadier figure than the time since the start.
qint64 processCpuMilliseconds() {
    timespec used{};
    if (clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used) != 0) return -1;
    return qint64(used.tv_sec) * 1000 + used.tv_nsec / 1000000;
}

// Notes the watched screen's first paint: prints "painted NAME after N ms, cpu C ms" and then, once that frame is done, runs the start-up work the frame did not need.
class FirstPaintWatcher : public QObject {
public:
    FirstPaintWatcher(QString name, QElapsedTimer started, std::function<void()> afterwards)
        : name_(std::move(name)), started_(started), afterwards_(std::move(afterwards)) {}
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && !seen_) {
            seen_ = true;
            std::printf("painted %s after %lld ms, cpu %lld ms\n", qPrintable(name_),
                        static_cast<long long>(millisecondsSinceProcessStart(started_)),
                        static_cast<long long>(processCpuMilliseconds()));
            std::fflush(stdout);
            QTimer::singleShot(0, this, [this] { RunAfterwards(); });
        }
        return QObject::eventFilter(watched, event);
    }
    // Runs the deferred work now if the first paint has not done so (no window to paint).
    void RunAfterwards() {
        seen_ = true;
        if (afterwards_) std::exchange(afterwards_, nullptr)();
    }

private:
    QString name_;
    QElapsedTimer started_;
    bool seen_ = false;
    std::function<void()> afterwards_;
};

// Resident memory of this process in megabytes, from /proc; 0 when unknown.
double residentMegabytes() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0.0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toDouble() / 1024.0;
    }
    return 0.0;
}

void printInterval(int lapId, const DAOLapSeconds& s) {
    std::printf("interval lap=%d steps=%d distance_m=%.2f calories=%.4f\n", lapId, s.steps,
                s.distance, s.calories);
    std::fflush(stdout);
}

// Warns on standard error when a database cannot be used: the application still runs,
// but what it counts is not kept.
void reportDatabaseProblems() {
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

// The settings the whole process shares, from the command line.
void ApplyGlobalSettings(const LaunchOptions& options) {
    if (options.locale) {
        QLocale::setDefault(*options.locale);
        AppResource::GetInstance().SetLanguage(options.locale->name().section('_', 0, 0));
    }
    if (options.hvga) TivUtils::SetScreenResolution(TivUtils::HVGA_WIDTH);
    AppFrame::SetStartSize(options.size.value_or(options.hvga ? AppFrame::ScreenSize()
                                                               : AppFrame::kDesktopSize));
    if (options.silent) PlatformSettings::SetSilentMode(true);
    if (!options.dataDir.isEmpty()) AppPaths::SetHome(options.dataDir);
    if (options.detector) StepDetectorFactory::SetChoice(*options.detector);
    if (options.keepCountingScreenOff) ScreenOffCounting::SetOverride(*options.keepCountingScreenOff);
    // Headless runs (tests, screenshots) leave the machine's power management alone.
    StatisticsManager::GuardSleepWhileCounting(!onOffscreenPlatform());
}

// The accelerometer: a replayed recording or the machine's own, maybe recorded. Null
// with `error` set when a file cannot be used; `replay` is the replayed recording,
// `deferred` the machine's own, made only when realized (after the first paint).
std::unique_ptr<AccelerometerSource> MakeSource(const LaunchOptions& options,
                                                CsvReplaySource** replay,
                                                DeferredAccelerometerSource** deferred,
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
        auto machine = std::make_unique<DeferredAccelerometerSource>(
            [choice] { return AccelerometerSourceFactory::Create(choice); });
        *deferred = machine.get();
        source = std::move(machine);
    }
    if (!options.recordFile.isEmpty()) {
        auto recorder =
            std::make_unique<RecordingAccelerometerSource>(std::move(source), options.recordFile);
        if (!recorder->Open(error)) return nullptr;
        source = std::move(recorder);
    }
    return source;
}

// Saves the screenshot asked for, reports the memory used and leaves the event loop.
void Quit(const QString& screenshotPath, QWidget& window) {
    int status = 0;
    if (!screenshotPath.isEmpty()) {
        if (window.grab().save(screenshotPath)) {
            std::printf("screenshot %s\n", qPrintable(QDir(screenshotPath).absolutePath()));
        } else {
            std::fprintf(stderr, "pedometer: cannot save the screenshot %s\n",
                         qPrintable(screenshotPath));
            status = 1;
        }
        std::fflush(stdout);
    }
    std::fprintf(stderr, "pedometer: resident memory %.1f MB\n", residentMegabytes());
    QCoreApplication::exit(status);
}

// Reads the command line; true to go on, false with `status` to leave with.
bool ReadCommandLine(const QStringList& arguments, LaunchOptions* options, int* status) {
    QString message;
    switch (LaunchOptions::Parse(arguments, options, &message)) {
        case LaunchOptions::Outcome::Run:
            return true;
        case LaunchOptions::Outcome::Print:
            std::printf("%s", qPrintable(message));
            *status = 0;
            return false;
        case LaunchOptions::Outcome::Fail:
            *status = fail(message);
            return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    int status = 0;
    LaunchOptions options;
    QCoreApplication::setApplicationName(QStringLiteral("pedometer"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PEDOMETER_VERSION));
    {
        // Help, version, the screen names and refusals print without a display.
        QStringList arguments;
        for (int i = 0; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
        QString message;
        const LaunchOptions::Outcome early = LaunchOptions::Parse(arguments, &options, &message);
        if (early == LaunchOptions::Outcome::Print) {
            std::printf("%s", qPrintable(message));
            return 0;
        }
        // Qt's own options (-platform, -style, ...) are only known once the application
        // has taken them; without any, a refusal needs no display either.
        const bool qtOptions = std::any_of(arguments.begin() + 1, arguments.end(), [](const QString& a) {
            return a.startsWith(QLatin1Char('-')) && !a.startsWith(QLatin1String("--"));
        });
        if (early == LaunchOptions::Outcome::Fail && !qtOptions) return fail(message);
    }
    const FontConfigWarmUp fontConfig;  // meanwhile: ready for the first text laid out
    QApplication app(argc, argv);  // takes Qt's own options (-platform, ...) off the list
    QGuiApplication::setDesktopFileName(QLatin1String(SingleInstance::kAppId));
    options = LaunchOptions{};
    if (!ReadCommandLine(QCoreApplication::arguments(), &options, &status)) return status;
    ApplyGlobalSettings(options);

    // One pedometer per session on the user's own data: a second launch brings the
    // first one forward and leaves. Any process writing to a data folder locks it.
    std::unique_ptr<SingleInstance> single;
    if (options.dataDir.isEmpty() && !qEnvironmentVariableIsSet("PEDOMETER_NO_DBUS")) {
        single = std::make_unique<SingleInstance>(QDBusConnection::sessionBus());
        if (single->Claim() == SingleInstance::Outcome::HandedOver) {
            std::printf("pedometer is already running; its window was brought forward\n");
            return 0;
        }
    }
    std::unique_ptr<DataFolderLock> folderLock;
    if (const QString home = AppPaths::Home(); !home.isEmpty()) {
        QString lockError;
        folderLock = DataFolderLock::Acquire(home, &lockError);
        if (!folderLock) return fail(lockError);
        // A restore a killed tool left half done is finished before the files are opened.
        if (!DataBackup::Recover(home, &lockError)) return fail(lockError);
    }
    // Someone deleting the lock file would let a second writer in: take it back. The
    // folder is watched (inotify) rather than polled, so a hidden window does not wake.
    QFileSystemWatcher lockWatch;
    if (folderLock && lockWatch.addPath(AppPaths::Home())) {
        QObject::connect(&lockWatch, &QFileSystemWatcher::directoryChanged, [&folderLock] {
            QString error;
            if (!folderLock->Reclaim(&error)) qWarning("pedometer: %s", qPrintable(error));
        });
    }
    CsvReplaySource* replaySource = nullptr;
    DeferredAccelerometerSource* machineSource = nullptr;
    QString error;
    std::unique_ptr<AccelerometerSource> source =
        MakeSource(options, &replaySource, &machineSource, &error);
    if (!source) return fail(error);

    // The desktop's services on the session bus; without them nothing is shown or followed.
    const bool useBus = !qEnvironmentVariableIsSet("PEDOMETER_NO_DBUS");
    std::unique_ptr<DesktopNotifications> notifications;
    std::unique_ptr<FeedbackProfile> feedback;
    if (useBus) {
        notifications = std::make_unique<DesktopNotifications>(QDBusConnection::sessionBus());
        feedback = std::make_unique<FeedbackProfile>(QDBusConnection::sessionBus());
    }

    QElapsedTimer startup;
    startup.start();
    Pedometer pedometer;
    pedometer.SetStartInBackground(options.background);
    pedometer.UseNotifications(notifications.get());
    // SIGTERM (a logout, a shutdown) and SIGINT end the event loop like Quit does.
    const TerminationSignals terminationSignals([&pedometer] { pedometer.RequestQuit(); });
    pedometer.Engine().UseSensorSource(std::move(source));
    if (replaySource != nullptr || onOffscreenPlatform())
        pedometer.Engine().SetIntervalObserver(printInterval);
    // What the first frame does not need waits until it is painted: the window icon (an
    // SVG icon plug-in), the audio system and the sensor backend's plug-ins and service.
    FirstPaintWatcher firstPaint(options.screen, startup, [machineSource] {
        QApplication::setWindowIcon(
            QIcon(AppPaths::ResFile(QStringLiteral("images/pedometer-icon.svg"))));
        SoundsManager::GetInstance().PrepareClick();
        if (machineSource != nullptr) machineSource->Realize();
    });
    pedometer.OnAppInitializing();
    reportDatabaseProblems();
    QWidget* opened = ScreenDirectory::Open(options.screen, *pedometer.GetNavigationController(),
                                            options.request, &error);
    if (opened == nullptr) {
        pedometer.OnAppTerminating();
        return fail(error);
    }
    opened->installEventFilter(&firstPaint);
    if (options.background) firstPaint.RunAfterwards();  // no window, no paint
    if (single) {
        single->SetOnActivate([&pedometer](const QString& token) { pedometer.ShowWindow(token); });
    }
    if (options.autostart) {
        QTimer::singleShot(0, &app, [&] {
            pedometer.GetMainForm()->OnActionPerformed(*pedometer.GetMainForm(),
                                                       MainForm::ID_START);
        });
    }
    if (options.checkLayout) {
        QTimer::singleShot(0, &app, [&] {
            QWidget& window = *pedometer.GetFrame();
            const LayoutCheck::Result result = LayoutCheck::Check(window);
            std::printf("%s\n", qPrintable(result.Line(options.screen, window.size())));
            for (const QString& problem : result.problems)
                std::fprintf(stderr, "pedometer: %s\n", qPrintable(problem));
            std::fflush(stdout);
            QCoreApplication::exit(result.Passed() ? 0 : 1);
        });
    }
    auto quit = [&] { Quit(options.screenshotFile, *pedometer.GetFrame()); };
    if (options.quitAfterSeconds >= 0) QTimer::singleShot(options.quitAfterSeconds * 1000, &app, quit);
    if (options.quitAfterReplay && replaySource != nullptr) {
        // The last full interval is stored on the next five-second tick after the end.
        QObject::connect(
            replaySource, &CsvReplaySource::Finished, &app,
            [&] { QTimer::singleShot(5500, &app, quit); }, Qt::QueuedConnection);
    }

    status = QApplication::exec();
    pedometer.OnAppTerminating();  // stores what was counted since the last interval
    if (replaySource != nullptr || onOffscreenPlatform()) {
        const StatisticsManager& statistics = pedometer.Engine().Statistics();
        const auto lap = statistics.GetCurrentLap();
        std::printf("counted lap=%d steps=%d\n", lap ? lap->id : -1, statistics.GetLapSteps());
    }
    return status;
}
