// pedometer: the windowed application.
#include <time.h>
#include <unistd.h>
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QIcon>
#include <QLocale>
#include <QTimer>

#include <cstdio>
#include <memory>

#include "AccelerometerSourceFactory.h"
#include "AppFrame.h"
#include "AppPaths.h"
#include "AppResource.h"
#include "CsvReplaySource.h"
#include "DAOLapSeconds.h"
#include "DataFolderLock.h"
#include "LayoutCheck.h"
#include "MainForm.h"
#include "Pedometer.h"
#include "PedometerDBManager.h"
#include "PlatformSettings.h"
#include "RecordingAccelerometerSource.h"
#include "ScreenDirectory.h"
#include "ScreenOffCounting.h"
#include "SingleInstance.h"
#include "CountingEngine.h"
#include "StatisticsManager.h"
#include "StepDetectorFactory.h"
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

// Prints "painted NAME after N ms" once the watched screen has painted for the first time.
class FirstPaintReporter : public QObject {
public:
    FirstPaintReporter(QString name, QElapsedTimer started)
        : name_(std::move(name)), started_(started) {}
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && !reported_) {
            reported_ = true;
            std::printf("painted %s after %lld ms\n", qPrintable(name_),
                        static_cast<long long>(millisecondsSinceProcessStart(started_)));
            std::fflush(stdout);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QString name_;
    QElapsedTimer started_;
    bool reported_ = false;
};

// Reads --day, --lap, --from and --to into a request; false with `error` when one of
// them does not parse.
bool readScreenRequest(const QCommandLineParser& parser, const QCommandLineOption& day,
                       const QCommandLineOption& lap, const QCommandLineOption& from,
                       const QCommandLineOption& to, ScreenRequest* request, QString* error) {
    const std::pair<const QCommandLineOption*, QDate*> dates[] = {
        {&day, &request->day}, {&from, &request->from}, {&to, &request->to}};
    for (const auto& [option, date] : dates) {
        if (!parser.isSet(*option)) continue;
        *date = QDate::fromString(parser.value(*option), Qt::ISODate);
        if (!date->isValid()) {
            *error = QStringLiteral("--%1 needs a date as YYYY-MM-DD, not \"%2\"")
                         .arg(option->names().first(), parser.value(*option));
            return false;
        }
    }
    if (parser.isSet(lap)) {
        bool ok = false;
        request->lapId = parser.value(lap).toInt(&ok);
        if (!ok || request->lapId < 1) {
            *error = QStringLiteral("--lap needs a lap number (1 or more), not \"%1\"")
                         .arg(parser.value(lap));
            return false;
        }
    }
    return true;
}

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

// Whether the command line only asks for information (help, version, screen names):
// such a run shows no window, so it must not need a display.
bool onlyPrints(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const QByteArray arg(argv[i]);
        if (arg == "--help" || arg == "-h" || arg == "--help-all" || arg == "--version" ||
            arg == "-v" || arg == "--list-screens") {
            return true;
        }
    }
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    if (onlyPrints(argc, argv) && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("pedometer"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PEDOMETER_VERSION));
    QGuiApplication::setDesktopFileName(QLatin1String(SingleInstance::kAppId));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("A pedometer and fitness companion.\n\n"
                       "Keys:\n"
                       "  Esc, Backspace, Back         go back a screen\n"
                       "  Menu, F1                     open the screen's option menu\n"
                       "  Page Up, +, Volume Up        side key up\n"
                       "  Page Down, -, Volume Down    side key down"));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption dataDir(QStringLiteral("data-dir"),
                                     QStringLiteral("Folder for the databases and exports."),
                                     QStringLiteral("DIR"));
    const QCommandLineOption sensor(QStringLiteral("sensor"),
                                    QStringLiteral("Accelerometer: auto, qt, iio or none."),
                                    QStringLiteral("KIND"), QStringLiteral("auto"));
    const QCommandLineOption detector(
        QStringLiteral("detector"),
        QStringLiteral("Step detector: classic or adaptive (default: the stored setting)."),
        QStringLiteral("KIND"));
    const QCommandLineOption replay(QStringLiteral("replay"),
                                    QStringLiteral("Use a recording as the accelerometer, at its "
                                                   "own pace."),
                                    QStringLiteral("FILE"));
    const QCommandLineOption loop(QStringLiteral("loop"),
                                  QStringLiteral("Replay the recording over and over."));
    const QCommandLineOption autostart(QStringLiteral("autostart"),
                                       QStringLiteral("Press START as soon as the meter shows."));
    const QCommandLineOption record(QStringLiteral("record"),
                                    QStringLiteral("Write the accelerometer samples to a CSV "
                                                   "recording."),
                                    QStringLiteral("FILE"));
    const QCommandLineOption locale(QStringLiteral("locale"),
                                    QStringLiteral("Language and number format, e.g. de_DE."),
                                    QStringLiteral("NAME"));
    const QCommandLineOption hvga(QStringLiteral("hvga"),
                                  QStringLiteral("Start at 320 x 480 (as --size 320x480)."));
    const QCommandLineOption size(QStringLiteral("size"),
                                  QStringLiteral("The window's size in logical pixels "
                                                 "(default 480x860)."),
                                  QStringLiteral("WxH"));
    const QCommandLineOption checkLayout(
        QStringLiteral("check-layout"),
        QStringLiteral("Check the screen opened by --open and quit: prints \"layout NAME WxH: "
                       "...\", and fails when a control lies outside the window, touch controls "
                       "overlap or are too small, or text is too small to read."));
    const QCommandLineOption silent(QStringLiteral("silent"),
                                    QStringLiteral("Behave as if the phone were in silent mode."));
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Save the window as PNG just before "
                                                       "quitting."),
                                        QStringLiteral("FILE"));
    const QCommandLineOption quitAfter(QStringLiteral("quit-after"),
                                       QStringLiteral("Quit after this many seconds."),
                                       QStringLiteral("SECONDS"));
    const QCommandLineOption quitAtEnd(QStringLiteral("quit-after-replay"),
                                       QStringLiteral("Quit once the replayed recording has ended "
                                                      "and its last interval is stored."));
    const QCommandLineOption open(QStringLiteral("open"),
                                  QStringLiteral("Show the named screen on top of the main "
                                                 "screen (see --list-screens)."),
                                  QStringLiteral("NAME"));
    const QCommandLineOption listScreens(QStringLiteral("list-screens"),
                                         QStringLiteral("Print the name of every screen."));
    const QCommandLineOption day(QStringLiteral("day"),
                                 QStringLiteral("The day a screen opened by --open shows."),
                                 QStringLiteral("YYYY-MM-DD"));
    const QCommandLineOption lap(QStringLiteral("lap"),
                                 QStringLiteral("The lap a screen opened by --open shows."),
                                 QStringLiteral("ID"));
    const QCommandLineOption from(QStringLiteral("from"),
                                  QStringLiteral("First day of the range --open shows."),
                                  QStringLiteral("YYYY-MM-DD"));
    const QCommandLineOption to(QStringLiteral("to"),
                                QStringLiteral("Last day of the range --open shows."),
                                QStringLiteral("YYYY-MM-DD"));
    const QCommandLineOption screenOff(
        QStringLiteral("keep-counting-screen-off"),
        QStringLiteral("on: keep the system awake while counting, also with the screen off; "
                       "off: let it sleep (default: the stored setting, on)."),
        QStringLiteral("on|off"));
    parser.addOptions({dataDir,     sensor, detector, replay,     loop,      autostart, record,
                       locale,      hvga,   silent,   screenshot, quitAfter, quitAtEnd, open,
                       listScreens, day,    lap,      from,       to,        screenOff,
                       size,        checkLayout});
    parser.process(app);

    if (parser.isSet(listScreens)) {
        for (const QString& name : ScreenDirectory::Names()) std::printf("%s\n", qPrintable(name));
        return 0;
    }
    const QString screenName = parser.isSet(open) ? parser.value(open) : QStringLiteral("main");
    if (!ScreenDirectory::Contains(screenName)) {
        return fail(QStringLiteral("no screen is called \"%1\"; --list-screens names them")
                        .arg(screenName));
    }
    ScreenRequest screenRequest;
    QString requestError;
    if (!readScreenRequest(parser, day, lap, from, to, &screenRequest, &requestError)) {
        return fail(requestError);
    }

    if (parser.isSet(quitAtEnd) && !parser.isSet(replay)) {
        return fail(QStringLiteral("--quit-after-replay needs --replay FILE"));
    }
    if (parser.isSet(locale)) {
        const QLocale chosen(parser.value(locale));
        // QLocale turns a name it does not know into the "C" locale without a word.
        if (chosen.language() == QLocale::C) {
            return fail(QStringLiteral("--locale: \"%1\" is not a locale name such as en_US or "
                                       "de_DE")
                            .arg(parser.value(locale)));
        }
        QLocale::setDefault(chosen);
        AppResource::GetInstance().SetLanguage(chosen.name().section('_', 0, 0));
    }
    if (parser.isSet(hvga)) TivUtils::SetScreenResolution(TivUtils::HVGA_WIDTH);
    QSize windowSize = parser.isSet(hvga) ? AppFrame::ScreenSize() : AppFrame::kDesktopSize;
    if (parser.isSet(size) && !AppFrame::ParseSize(parser.value(size), &windowSize)) {
        return fail(QStringLiteral("--size needs WIDTHxHEIGHT, at least 320x480, not \"%1\"")
                        .arg(parser.value(size)));
    }
    AppFrame::SetStartSize(windowSize);
    if (parser.isSet(silent)) PlatformSettings::SetSilentMode(true);
    if (parser.isSet(dataDir)) AppPaths::SetHome(parser.value(dataDir));
    if (!AccelerometerSourceFactory::IsValidChoice(parser.value(sensor))) {
        return fail(QStringLiteral("--sensor must be auto, qt, iio or none"));
    }
    if (parser.isSet(detector)) {
        DetectorKind kind = DetectorKind::Classic;
        if (!StepDetectorFactory::Parse(parser.value(detector), &kind)) {
            return fail(QStringLiteral("--detector must be classic or adaptive"));
        }
        StepDetectorFactory::SetChoice(kind);
    }
    if (parser.isSet(screenOff)) {
        bool on = true;
        if (!ScreenOffCounting::Parse(parser.value(screenOff), &on)) {
            return fail(QStringLiteral("--keep-counting-screen-off must be on or off"));
        }
        ScreenOffCounting::SetOverride(on);
    }
    bool quitSeconds = false;
    const int quitAfterSeconds = parser.value(quitAfter).toInt(&quitSeconds);
    if (parser.isSet(quitAfter) && (!quitSeconds || quitAfterSeconds < 0)) {
        return fail(QStringLiteral("--quit-after needs a number of seconds"));
    }

    // One pedometer per session on the user's own data: a second launch brings the
    // first one forward and leaves. Any process writing to a data folder locks it.
    std::unique_ptr<SingleInstance> single;
    if (!parser.isSet(dataDir) && !qEnvironmentVariableIsSet("PEDOMETER_NO_DBUS")) {
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
    }
    QApplication::setWindowIcon(
        QIcon(AppPaths::ResFile(QStringLiteral("images/pedometer-icon.svg"))));
    // Headless runs (tests, screenshots) leave the machine's power management alone.
    StatisticsManager::GuardSleepWhileCounting(!onOffscreenPlatform());

    // The accelerometer: a replayed recording or the machine's own, maybe recorded.
    CsvReplaySource* replaySource = nullptr;
    std::unique_ptr<AccelerometerSource> source;
    if (parser.isSet(replay)) {
        QString error;
        std::unique_ptr<CsvReplaySource> csv =
            CsvReplaySource::FromFile(parser.value(replay), &error);
        if (!csv) return fail(error);
        csv->SetLooping(parser.isSet(loop));
        replaySource = csv.get();
        source = std::move(csv);
    } else {
        // Without --sensor, the choice stored by the sensitivity settings.
        QString choice = parser.value(sensor);
        if (!parser.isSet(sensor)) {
            choice = PedometerDBManager::GetInstance().GetPreference(QStringLiteral("sensor"),
                                                                     QStringLiteral("auto"));
            if (!AccelerometerSourceFactory::IsValidChoice(choice)) choice = QStringLiteral("auto");
        }
        AccelerometerSourceFactory::SetChoice(choice);
        source = AccelerometerSourceFactory::Create();
    }
    if (parser.isSet(record)) {
        auto recorder =
            std::make_unique<RecordingAccelerometerSource>(std::move(source), parser.value(record));
        QString error;
        if (!recorder->Open(&error)) return fail(error);
        source = std::move(recorder);
    }
    QElapsedTimer startup;
    startup.start();
    Pedometer pedometer;
    pedometer.Engine().UseSensorSource(std::move(source));
    if (replaySource != nullptr || onOffscreenPlatform())
        pedometer.Engine().SetIntervalObserver(printInterval);
    FirstPaintReporter firstPaint(screenName, startup);
    pedometer.OnAppInitializing();
    reportDatabaseProblems();
    QString openError;
    QWidget* opened = ScreenDirectory::Open(screenName, *pedometer.GetNavigationController(),
                                            screenRequest, &openError);
    if (opened == nullptr) {
        pedometer.OnAppTerminating();
        return fail(openError);
    }
    opened->installEventFilter(&firstPaint);
    if (single) {
        single->SetOnActivate([frame = pedometer.GetFrame()](const QString& token) {
            if (!token.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
            frame->show();
            frame->setWindowState((frame->windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
            frame->raise();
            frame->activateWindow();
        });
    }
    if (parser.isSet(autostart)) {
        QTimer::singleShot(0, &app, [&] {
            pedometer.GetMainForm()->OnActionPerformed(*pedometer.GetMainForm(),
                                                       MainForm::ID_START);
        });
    }

    if (parser.isSet(checkLayout)) {
        QTimer::singleShot(0, &app, [&] {
            QWidget& window = *pedometer.GetFrame();
            const LayoutCheck::Result result = LayoutCheck::Check(window);
            std::printf("%s\n", qPrintable(result.Line(screenName, window.size())));
            for (const QString& problem : result.problems)
                std::fprintf(stderr, "pedometer: %s\n", qPrintable(problem));
            std::fflush(stdout);
            QCoreApplication::exit(result.Passed() ? 0 : 1);
        });
    }

    const QString screenshotPath = parser.value(screenshot);
    auto quit = [&] {
        int quitStatus = 0;
        if (!screenshotPath.isEmpty()) {
            if (pedometer.GetFrame()->grab().save(screenshotPath)) {
                std::printf("screenshot %s\n", qPrintable(QDir(screenshotPath).absolutePath()));
            } else {
                std::fprintf(stderr, "pedometer: cannot save the screenshot %s\n",
                             qPrintable(screenshotPath));
                quitStatus = 1;
            }
            std::fflush(stdout);
        }
        std::fprintf(stderr, "pedometer: resident memory %.1f MB\n", residentMegabytes());
        QCoreApplication::exit(quitStatus);
    };
    if (parser.isSet(quitAfter)) QTimer::singleShot(quitAfterSeconds * 1000, &app, quit);
    if (parser.isSet(quitAtEnd) && replaySource != nullptr) {
        // The last full interval is stored on the next five-second tick after the end.
        QObject::connect(
            replaySource, &CsvReplaySource::Finished, &app,
            [&] { QTimer::singleShot(5500, &app, quit); }, Qt::QueuedConnection);
    }

    const int status = QApplication::exec();
    pedometer.OnAppTerminating();
    return status;
}
