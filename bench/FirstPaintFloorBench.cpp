// The floor under the application's first paint on this machine: the time from process
// start to the first paint of a window that holds one line of text and nothing else, in a
// program linked against the same libraries as the application. bench/open-screens.sh
// prints it above its table: what a screen takes beyond it is the application's own start
// (its databases, strings and screens); the floor itself is the machine starting a
// process, loading Qt and painting text, and moves with how busy the machine is.
// Usage: bench_FirstPaintFloor [--size WxH]   (offscreen; QT_SCALE_FACTOR as for the app)
#include <QApplication>
#include <QLabel>
#include <QPaintEvent>
#include <QSize>
#include <QTimer>
#include <cstdio>

#include "ProcessFigures.h"

namespace {

// Reports its first paint, then ends the event loop.
class FloorWindow : public QLabel {
public:
    explicit FloorWindow(QElapsedTimer started)
        : QLabel(QStringLiteral("Pedometer 12,345 steps")), started_(started) {}

protected:
    void paintEvent(QPaintEvent* event) override {
        QLabel::paintEvent(event);
        if (reported_) return;
        reported_ = true;
        std::printf("painted floor after %lld ms, cpu %lld ms\n",
                    static_cast<long long>(ProcessFigures::MillisecondsSinceStart(started_)),
                    static_cast<long long>(ProcessFigures::CpuMilliseconds()));
        std::fflush(stdout);
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    }

private:
    QElapsedTimer started_;
    bool reported_ = false;
};

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
    FloorWindow window(started);
    window.resize(sizeArgument(argc, argv));
    window.show();
    return QApplication::exec();
}
