#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>

// Prints "painted NAME after N ms" once the widget it filters has painted for the first
// time; N counts from the process's start (bench/open-screens.sh reads the line).
class FirstPaintReporter : public QObject {
public:
    FirstPaintReporter(QString name, QElapsedTimer started);
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString name_;
    QElapsedTimer started_;
    bool reported_ = false;
};
