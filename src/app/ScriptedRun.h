#pragma once

#include <QString>

class CsvReplaySource;
class Pedometer;
struct LaunchOptions;

// What the command line asks the running application to do by itself, for scripts and
// benchmarks: press START, check the layout of the opened screen, and quit after some
// seconds or once the replayed recording is stored, saving a screenshot first and
// reporting the memory used ("pedometer: resident memory N MB" on standard error).
class ScriptedRun {
public:
    // `pedometer` and `replay` (null without --replay) outlive the event loop.
    static void Schedule(const LaunchOptions& options, Pedometer& pedometer,
                         CsvReplaySource* replay);

private:
    static void CheckLayout(const QString& screen, Pedometer& pedometer);
    static void Quit(const QString& screenshotPath, Pedometer& pedometer);
};
