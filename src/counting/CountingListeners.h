#pragma once

#include <shared_mutex>
#include <vector>

#include "MainFormListener.h"

// Tells every registered listener what the counting side reports: the main screen, the
// background notification, a tool's observer. The statistics manager and the updater
// talk to one of these as their only listener.
//
// Threads: calls arrive on the sensor, updater and GUI threads and reach the listeners
// under a shared lock; Add and Remove take it exclusively, so once Remove returns the
// removed listener is never called again and may be destroyed. A listener must not add
// or remove listeners from inside a call.
class CountingListeners final : public MainFormListener {
public:
    void Add(MainFormListener& listener);
    void Remove(MainFormListener& listener);

    void RequestStepsUpdate(int lapSteps) override;
    void UpdateStepsCount(int lapSteps) override;
    void UpdateData(const DAOLap* lap) override;
    void SygnalFired() override;

private:
    mutable std::shared_mutex mutex_;
    std::vector<MainFormListener*> listeners_;
};
