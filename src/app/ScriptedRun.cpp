#include "ScriptedRun.h"

#include <QCoreApplication>
#include <QDir>
#include <QTimer>
#include <cstdio>

#include "AppFrame.h"
#include "CsvReplaySource.h"
#include "LaunchOptions.h"
#include "LayoutCheck.h"
#include "MainForm.h"
#include "Pedometer.h"
#include "ProcessFigures.h"

void ScriptedRun::Schedule(const LaunchOptions& options, Pedometer& pedometer,
                           CsvReplaySource* replay) {
    QCoreApplication* app = QCoreApplication::instance();
    if (options.autostart) {
        QTimer::singleShot(0, app, [&pedometer] {
            pedometer.GetMainForm()->OnActionPerformed(*pedometer.GetMainForm(),
                                                       MainForm::ID_START);
        });
    }
    if (options.checkLayout)
        QTimer::singleShot(0, app, [&pedometer, screen = options.screen] { CheckLayout(screen, pedometer); });
    auto quit = [&pedometer, path = options.screenshotFile] { Quit(path, pedometer); };
    if (options.quitAfterSeconds >= 0) QTimer::singleShot(options.quitAfterSeconds * 1000, app, quit);
    if (options.quitAfterReplay && replay != nullptr) {
        // The last full interval is stored on the next five-second tick after the end.
        QObject::connect(
            replay, &CsvReplaySource::Finished, app,
            [app, quit] { QTimer::singleShot(5500, app, quit); }, Qt::QueuedConnection);
    }
}

void ScriptedRun::CheckLayout(const QString& screen, Pedometer& pedometer) {
    QWidget& window = *pedometer.GetFrame();
    const LayoutCheck::Result result = LayoutCheck::Check(window);
    std::printf("%s\n", qPrintable(result.Line(screen, window.size())));
    for (const QString& problem : result.problems)
        std::fprintf(stderr, "pedometer: %s\n", qPrintable(problem));
    std::fflush(stdout);
    QCoreApplication::exit(result.Passed() ? 0 : 1);
}

void ScriptedRun::Quit(const QString& screenshotPath, Pedometer& pedometer) {
    int status = 0;
    if (!screenshotPath.isEmpty()) {
        if (pedometer.GetFrame()->grab().save(screenshotPath)) {
            std::printf("screenshot %s\n", qPrintable(QDir(screenshotPath).absolutePath()));
        } else {
            std::fprintf(stderr, "pedometer: cannot save the screenshot %s\n",
                         qPrintable(screenshotPath));
            status = 1;
        }
        std::fflush(stdout);
    }
    std::fprintf(stderr, "pedometer: resident memory %.1f MB\n",
                 ProcessFigures::ResidentMegabytes());
    QCoreApplication::exit(status);
}
