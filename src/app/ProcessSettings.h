#pragma once

struct LaunchOptions;

// The settings the whole process shares (language, screen size, data folder, detector,
// silent mode, power management), taken from the command line before anything is made.
class ProcessSettings {
public:
    static void Apply(const LaunchOptions& options);
};
