#pragma once

#include <QElapsedTimer>

// Figures about this process that the kernel keeps in /proc, for the startup and memory
// reports the benchmarks read.
class ProcessFigures {
public:
    // Milliseconds since this process was started (the kernel's start time, so the figure
    // includes loading the libraries); `fallback`'s elapsed time when /proc cannot tell.
    static qint64 MillisecondsSinceStart(const QElapsedTimer& fallback);

    // Resident memory in megabytes; 0 when unknown.
    static double ResidentMegabytes();
};
