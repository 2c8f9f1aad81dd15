#pragma once

class DAOLap;

// What the counting side tells the main screen.
//
// The main form implements it; tools and tests implement it to watch the pipeline.
// Calls arrive on several threads, as noted; an implementation that touches widgets
// hands the call over to the GUI thread itself, in order, and never waits for the GUI
// thread (the GUI thread may be waiting for the updater).
class MainFormListener {
public:
    virtual ~MainFormListener() = default;

    // A step was counted; `lapSteps` is the lap's new total. Sensor thread.
    virtual void RequestStepsUpdate(int lapSteps) = 0;
    // The step count was reset or rebuilt (start, new lap, cleared lap). GUI thread.
    virtual void UpdateStepsCount(int lapSteps) = 0;
    // The lap's records changed: recompute totals and graphs. Updater thread after
    // each five-second interval, GUI thread after a new or cleared lap. `lap` may be
    // null (no open lap); its record lists are read under its recordsMutex.
    virtual void UpdateData(const DAOLap* lap) = 0;
    // The goal alarm was reached. Updater thread.
    virtual void SygnalFired() = 0;
};
