#include "VirtualTime.h"

#include <atomic>
#include <map>
#include <mutex>

#include "Clock.h"
#include "Timer.h"

namespace {
std::atomic<bool> enabled{false};
std::mutex scheduleMutex;
// Pending timers by deadline; equal deadlines fire in the order they were armed.
std::multimap<qint64, Timer*> schedule;

void eraseLocked(Timer* timer) {
    for (auto it = schedule.begin(); it != schedule.end(); ++it) {
        if (it->second == timer) {
            schedule.erase(it);
            return;
        }
    }
}
}  // namespace

void VirtualTime::Enable(const QDateTime& start) {
    Clock::SetNow(start);
    enabled = true;
}

void VirtualTime::Disable() {
    {
        std::lock_guard lock(scheduleMutex);
        for (auto& [deadline, timer] : schedule) timer->virtualPending_ = false;
        schedule.clear();
    }
    enabled = false;
    Clock::UseSystemTime();
}

bool VirtualTime::IsEnabled() {
    return enabled.load();
}

void VirtualTime::AdvanceBy(qint64 ms) {
    AdvanceTo(Clock::NowMs() + ms);
}

void VirtualTime::AdvanceTo(qint64 msSinceEpoch) {
    for (;;) {
        Timer* due = nullptr;
        {
            std::lock_guard lock(scheduleMutex);
            auto first = schedule.begin();
            if (first == schedule.end() || first->first > msSinceEpoch) break;
            due = first->second;
            if (first->first > Clock::NowMs()) Clock::SetNowMs(first->first);
            schedule.erase(first);
            due->virtualPending_ = false;
        }
        due->Fire();
    }
    if (msSinceEpoch > Clock::NowMs()) Clock::SetNowMs(msSinceEpoch);
}

qint64 VirtualTime::NextDeadline() {
    std::lock_guard lock(scheduleMutex);
    return schedule.empty() ? -1 : schedule.begin()->first;
}

void VirtualTime::Schedule(Timer* timer, int ms) {
    std::lock_guard lock(scheduleMutex);
    eraseLocked(timer);
    schedule.emplace(Clock::NowMs() + ms, timer);
    timer->virtualPending_ = true;
}

void VirtualTime::Unschedule(Timer* timer) {
    std::lock_guard lock(scheduleMutex);
    eraseLocked(timer);
    timer->virtualPending_ = false;
}
