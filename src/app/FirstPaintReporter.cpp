#include "FirstPaintReporter.h"

#include <QEvent>
#include <cstdio>

#include "ProcessFigures.h"

FirstPaintReporter::FirstPaintReporter(QString name, QElapsedTimer started)
    : name_(std::move(name)), started_(started) {}

bool FirstPaintReporter::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint && !reported_) {
        reported_ = true;
        std::printf("painted %s after %lld ms\n", qPrintable(name_),
                    static_cast<long long>(ProcessFigures::MillisecondsSinceStart(started_)));
        std::fflush(stdout);
    }
    return QObject::eventFilter(watched, event);
}
