#pragma once

#include <QElapsedTimer>

// Figures about this process that the kernel keeps in /proc, for the startup and memory
// reports the benchmarks read.
class ProcessFigures {
public:
    // Milliseconds since this process was started (the kernel's start time, so the figure
    // includes loading the libraries); `fallback`'s elapsed time when /proc cannot tell.
    static qint64 MillisecondsSinceStart(const QElapsedTimer& fallback);

    // Processor time all threads of this process have used so far, in milliseconds (-1
    // when unknown): on a busy machine a steadier figure than the time since the start.
    static qint64 CpuMilliseconds();

    // Resident memory in megabytes; 0 when unknown.
    static double ResidentMegabytes();
};
