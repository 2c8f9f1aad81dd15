#pragma once

#include <QString>
#include <memory>

#include "LaunchOptions.h"

class CsvReplaySource;
class DataFolderLock;
class DesktopNotifications;
class FeedbackProfile;
class FirstPaintReporter;
class Pedometer;
class QFileSystemWatcher;
class SingleInstance;
class TerminationSignals;

// Puts the windowed application together from its command line, in this order: one
// instance per session, the data folder's lock, the accelerometer, the desktop's
// services, the counting engine and the window with the screen asked for; then runs it.
// Everything it makes lives until the object is destroyed, after the event loop.
class AppAssembly {
public:
    enum class Outcome {
        Ready,       // Run() may start the event loop
        HandedOver,  // another pedometer was brought forward: leave with status 0
        Failed,      // `error` says why: leave with status 2
    };

    // `options` must outlive this object; ProcessSettings have been applied.
    explicit AppAssembly(const LaunchOptions& options);
    ~AppAssembly();
    AppAssembly(const AppAssembly&) = delete;
    AppAssembly& operator=(const AppAssembly&) = delete;

    Outcome Assemble(QString* error);

    // Runs the event loop, stores what was counted and returns the loop's status.
    int Run();

private:
    bool TakeDataFolder(QString* error);
    bool OpenWindow(QString* error);
    bool Headless() const;

    const LaunchOptions& options_;
    std::unique_ptr<SingleInstance> single_;
    std::unique_ptr<DataFolderLock> folderLock_;
    std::unique_ptr<QFileSystemWatcher> lockWatch_;
    std::unique_ptr<DesktopNotifications> notifications_;
    std::unique_ptr<FeedbackProfile> feedback_;
    std::unique_ptr<Pedometer> pedometer_;
    std::unique_ptr<TerminationSignals> terminationSignals_;
    std::unique_ptr<FirstPaintReporter> firstPaint_;
    CsvReplaySource* replay_ = nullptr;  // owned by the engine
};
