#include "CountingListeners.h"

#include <algorithm>
#include <mutex>

void CountingListeners::Add(MainFormListener& listener) {
    std::unique_lock lock(mutex_);
    if (std::find(listeners_.begin(), listeners_.end(), &listener) == listeners_.end())
        listeners_.push_back(&listener);
}

void CountingListeners::Remove(MainFormListener& listener) {
    std::unique_lock lock(mutex_);
    listeners_.erase(std::remove(listeners_.begin(), listeners_.end(), &listener),
                     listeners_.end());
}

void CountingListeners::RequestStepsUpdate(int lapSteps) {
    std::shared_lock lock(mutex_);
    for (MainFormListener* listener : listeners_) listener->RequestStepsUpdate(lapSteps);
}

void CountingListeners::UpdateStepsCount(int lapSteps) {
    std::shared_lock lock(mutex_);
    for (MainFormListener* listener : listeners_) listener->UpdateStepsCount(lapSteps);
}

void CountingListeners::UpdateData(const DAOLap* lap) {
    std::shared_lock lock(mutex_);
    for (MainFormListener* listener : listeners_) listener->UpdateData(lap);
}

void CountingListeners::SygnalFired() {
    std::shared_lock lock(mutex_);
    for (MainFormListener* listener : listeners_) listener->SygnalFired();
}
