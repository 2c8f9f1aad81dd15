#include "FirstPaintReporter.h"

#include <QEvent>
#include <QTimer>
#include <cstdio>
#include <utility>

#include "ProcessFigures.h"

FirstPaintReporter::FirstPaintReporter(QString name, QElapsedTimer started,
                                       std::function<void()> afterwards)
    : name_(std::move(name)), started_(started), afterwards_(std::move(afterwards)) {}

bool FirstPaintReporter::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint && !reported_) {
        reported_ = true;
        std::printf("painted %s after %lld ms, cpu %lld ms\n", qPrintable(name_),
                    static_cast<long long>(ProcessFigures::MillisecondsSinceStart(started_)),
                    static_cast<long long>(ProcessFigures::CpuMilliseconds()));
        std::fflush(stdout);
        QTimer::singleShot(0, this, [this] { RunAfterwards(); });
    }
    return QObject::eventFilter(watched, event);
}

void FirstPaintReporter::RunAfterwards() {
    if (afterwards_) std::exchange(afterwards_, nullptr)();
}
