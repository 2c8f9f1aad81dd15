#include "LaunchOptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <algorithm>

#include "AccelerometerSourceFactory.h"
#include "AppFrame.h"
#include "TivForm.h"
#include "ScreenOffCounting.h"
#include "StepDetectorFactory.h"

namespace {

// One option: its name, the name of its value (null for a switch), its help, and how its
// value is stored; `read` returns a message when the value is not acceptable.
struct OptionRow {
    const char* name;
    const char* valueName;
    const char* help;
    QString (*read)(const QString& value, LaunchOptions& options);
};

QString ReadDate(const char* option, const QString& value, QDate* date) {
    *date = QDate::fromString(value, Qt::ISODate);
    if (date->isValid()) return {};
    return QStringLiteral("--%1 needs a date as YYYY-MM-DD, not \"%2\"")
        .arg(QLatin1String(option), value);
}

const OptionRow kOptions[] = {
    {"data-dir", "DIR", "Folder for the databases and exports.",
     [](const QString& v, LaunchOptions& o) {
         o.dataDir = v;
         return QString();
     }},
    {"sensor", "KIND", "Accelerometer: auto, qt, iio, iio-steps or none (default: the stored setting).",
     [](const QString& v, LaunchOptions& o) {
         if (!AccelerometerSourceFactory::IsValidChoice(v))
             return QStringLiteral("--sensor must be auto, qt, iio, iio-steps or none");
         o.sensor = v;
         return QString();
     }},
    {"detector", "KIND", "Step detector: classic or adaptive (default: the stored setting).",
     [](const QString& v, LaunchOptions& o) {
         DetectorKind kind = DetectorKind::Classic;
         if (!StepDetectorFactory::Parse(v, &kind))
             return QStringLiteral("--detector must be classic or adaptive");
         o.detector = kind;
         return QString();
     }},
    {"replay", "FILE", "Use a recording as the accelerometer, at its own pace.",
     [](const QString& v, LaunchOptions& o) {
         o.replayFile = v;
         return QString();
     }},
    {"loop", nullptr, "Replay the recording over and over.",
     [](const QString&, LaunchOptions& o) {
         o.loop = true;
         return QString();
     }},
    {"autostart", nullptr, "Press START as soon as the meter shows.",
     [](const QString&, LaunchOptions& o) {
         o.autostart = true;
         return QString();
     }},
    {"background", nullptr, "Start counting at once with no window (as from login).",
     [](const QString&, LaunchOptions& o) {
         o.background = true;
         return QString();
     }},
    {"record", "FILE", "Write the accelerometer samples to a CSV recording.",
     [](const QString& v, LaunchOptions& o) {
         o.recordFile = v;
         return QString();
     }},
    {"locale", "NAME", "Language and number format, e.g. de_DE.",
     [](const QString& v, LaunchOptions& o) {
         const QLocale chosen(v);
         // QLocale turns a name it does not know into the "C" locale without a word.
         if (chosen.language() == QLocale::C) {
             return QStringLiteral("--locale: \"%1\" is not a locale name such as en_US or de_DE")
                 .arg(v);
         }
         o.locale = chosen;
         return QString();
     }},
    {"hvga", nullptr, "Start at 320 x 480 (as --size 320x480).",
     [](const QString&, LaunchOptions& o) {
         o.hvga = true;
         return QString();
     }},
    {"size", "WxH", "The window's size in logical pixels (default 480x860).",
     [](const QString& v, LaunchOptions& o) {
         QSize size;
         if (!AppFrame::ParseSize(v, &size))
             return QStringLiteral("--size needs WIDTHxHEIGHT, at least 320x480, not \"%1\"").arg(v);
         o.size = size;
         return QString();
     }},
    {"check-layout", nullptr,
     "Check the screen opened by --open and quit: prints \"layout NAME WxH: ...\", and fails "
     "when a control lies outside the window, touch controls overlap or are too small, or text "
     "is too small to read.",
     [](const QString&, LaunchOptions& o) {
         o.checkLayout = true;
         return QString();
     }},
    {"silent", nullptr, "Behave as if the phone were in silent mode.",
     [](const QString&, LaunchOptions& o) {
         o.silent = true;
         return QString();
     }},
    {"screenshot", "FILE", "Save the window as PNG just before quitting.",
     [](const QString& v, LaunchOptions& o) {
         o.screenshotFile = v;
         return QString();
     }},
    {"quit-after", "SECONDS", "Quit after this many seconds.",
     [](const QString& v, LaunchOptions& o) {
         bool ok = false;
         o.quitAfterSeconds = v.toInt(&ok);
         if (!ok || o.quitAfterSeconds < 0)
             return QStringLiteral("--quit-after needs a number of seconds");
         return QString();
     }},
    {"quit-after-replay", nullptr,
     "Quit once the replayed recording has ended and its last interval is stored.",
     [](const QString&, LaunchOptions& o) {
         o.quitAfterReplay = true;
         return QString();
     }},
    {"open", "NAME", "Show the named screen on top of the main screen (see --list-screens).",
     [](const QString& v, LaunchOptions& o) {
         if (!ScreenDirectory::Contains(v))
             return QStringLiteral("no screen is called \"%1\"; --list-screens names them").arg(v);
         o.screen = v;
         return QString();
     }},
    {"day", "YYYY-MM-DD", "The day a screen opened by --open shows.",
     [](const QString& v, LaunchOptions& o) { return ReadDate("day", v, &o.request.day); }},
    {"lap", "ID", "The lap a screen opened by --open shows.",
     [](const QString& v, LaunchOptions& o) {
         bool ok = false;
         o.request.lapId = v.toInt(&ok);
         if (!ok || o.request.lapId < 1)
             return QStringLiteral("--lap needs a lap number (1 or more), not \"%1\"").arg(v);
         return QString();
     }},
    {"from", "YYYY-MM-DD", "First day of the range --open shows.",
     [](const QString& v, LaunchOptions& o) { return ReadDate("from", v, &o.request.from); }},
    {"to", "YYYY-MM-DD", "Last day of the range --open shows.",
     [](const QString& v, LaunchOptions& o) { return ReadDate("to", v, &o.request.to); }},
    {"keep-counting-screen-off", "on|off",
     "on: keep the system awake while counting, also with the screen off; off: let it sleep "
     "(default: the stored setting, on).",
     [](const QString& v, LaunchOptions& o) {
         bool on = true;
         if (!ScreenOffCounting::Parse(v, &on))
             return QStringLiteral("--keep-counting-screen-off must be on or off");
         o.keepCountingScreenOff = on;
         return QString();
     }},
};

const char kDescription[] =
    "A pedometer and fitness companion.\n\n"
    "Keys:\n"
    "  Esc, Backspace, Back         go back a screen\n"
    "  Menu, F1                     open the screen's option menu\n"
    "  Page Up, +, Volume Up        side key up\n"
    "  Page Down, -, Volume Down    side key down\n"
    "  Ctrl+Q                       quit (closing the window while counting keeps counting)";

}  // namespace

LaunchOptions::Outcome LaunchOptions::Parse(const QStringList& arguments, LaunchOptions* options,
                                            QString* message) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromLatin1(kDescription));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption listScreens(QStringLiteral("list-screens"),
                                         QStringLiteral("Print the name of every screen."));
    parser.addOption(listScreens);
    for (const OptionRow& row : kOptions) {
        parser.addOption(row.valueName == nullptr
                             ? QCommandLineOption(QString::fromLatin1(row.name),
                                                  QString::fromLatin1(row.help))
                             : QCommandLineOption(QString::fromLatin1(row.name),
                                                  QString::fromLatin1(row.help),
                                                  QString::fromLatin1(row.valueName)));
    }
    if (!parser.parse(arguments)) {
        *message = parser.errorText();
        return Outcome::Fail;
    }
    if (parser.isSet(help) || parser.isSet(QStringLiteral("help-all"))) {
        *message = parser.helpText().replace(QStringLiteral("<executable_name>"),
                                             QStringLiteral("pedometer"));
        return Outcome::Print;
    }
    if (parser.isSet(version)) {
        *message = QStringLiteral("pedometer %1\n").arg(QCoreApplication::applicationVersion());
        return Outcome::Print;
    }
    if (parser.isSet(listScreens)) {
        *message = ScreenDirectory::Names().join(QLatin1Char('\n')) + QLatin1Char('\n');
        return Outcome::Print;
    }
    if (!parser.positionalArguments().isEmpty()) {
        *message = QStringLiteral("pedometer takes options only, not \"%1\"")
                       .arg(parser.positionalArguments().first());
        return Outcome::Fail;
    }
    for (const OptionRow& row : kOptions) {
        const QString name = QString::fromLatin1(row.name);
        if (!parser.isSet(name)) continue;
        *message = row.read(parser.value(name), *options);
        if (!message->isEmpty()) return Outcome::Fail;
    }
    if (options->quitAfterReplay && options->replayFile.isEmpty()) {
        *message = QStringLiteral("--quit-after-replay needs --replay FILE");
        return Outcome::Fail;
    }
    return Outcome::Run;
}

LaunchOptions::Outcome LaunchOptions::ParseBeforeQt(const QStringList& arguments,
                                                    QString* message) {
    LaunchOptions options;
    const Outcome outcome = Parse(arguments, &options, message);
    const bool qtOptions =
        std::any_of(arguments.begin() + std::min<qsizetype>(1, arguments.size()), arguments.end(),
                    [](const QString& a) {
                        return a.startsWith(QLatin1Char('-')) && !a.startsWith(QLatin1String("--"));
                    });
    return outcome == Outcome::Fail && qtOptions ? Outcome::Run : outcome;
}
