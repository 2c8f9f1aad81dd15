#include "ProcessFigures.h"

#include <time.h>
#include <unistd.h>

#include <QFile>
#include <QList>

qint64 ProcessFigures::MillisecondsSinceStart(const QElapsedTimer& fallback) {
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

qint64 ProcessFigures::CpuMilliseconds() {
    timespec used{};
    if (clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used) != 0) return -1;
    return qint64(used.tv_sec) * 1000 + used.tv_nsec / 1000000;
}

double ProcessFigures::ResidentMegabytes() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0.0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toDouble() / 1024.0;
    }
    return 0.0;
}
