// The floor under the application's first paint on this machine: the time from process
// start to the first paint of a window that holds one line of text and nothing else, in a
// program linked against the same libraries as the application. bench/open-screens.sh
// prints it above its table: what a screen takes beyond it is the application's own start
// (its databases, strings and screens); the floor itself is the machine starting a
// process, loading Qt and painting text, and moves with how busy the machine is.
// Usage: bench_FirstPaintFloor [--size WxH]   (offscreen; QT_SCALE_FACTOR as for the app)
#include <QApplication>
#include <QLabel>
#include <QSize>
#include <cstdio>

#include "FirstPaintReporter.h"

namespace {

QSize sizeArgument(int argc, char** argv) {
    for (int i = 1; i + 1 < argc; ++i) {
        int width = 0, height = 0;
        if (QByteArray(argv[i]) == "--size" && std::sscanf(argv[i + 1], "%dx%d", &width, &height) == 2)
            return {width, height};
    }
    return {480, 860};  // the application's desktop window
}

}  // namespace

int main(int argc, char** argv) {
    QElapsedTimer started;
    started.start();
    QApplication app(argc, argv);
    QLabel window(QStringLiteral("Pedometer 12,345 steps"));
    // The app's own first-paint line ("painted floor after N ms, cpu C ms"), then quit.
    FirstPaintReporter reporter(QStringLiteral("floor"), started, [] { QCoreApplication::quit(); });
    window.installEventFilter(&reporter);
    window.resize(sizeArgument(argc, argv));
    window.show();
    return QApplication::exec();
}
