#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <functional>

// Prints "painted NAME after N ms, cpu C ms" once the widget it filters has painted for
// the first time; N counts from the process's start, C is the processor time all threads
// have used so far (bench/open-screens.sh reads the line). Once that frame is done it runs
// the start-up work the frame did not need.
class FirstPaintReporter : public QObject {
public:
    FirstPaintReporter(QString name, QElapsedTimer started, std::function<void()> afterwards);
    bool eventFilter(QObject* watched, QEvent* event) override;

    // Runs the deferred work now if the first paint has not done so (no window to paint).
    void RunAfterwards();

private:
    QString name_;
    QElapsedTimer started_;
    bool reported_ = false;
    std::function<void()> afterwards_;
};
