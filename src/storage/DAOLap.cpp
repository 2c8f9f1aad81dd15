#include "DAOLap.h"

DAOLapMinutes* DAOLap::AddMinute(std::unique_ptr<DAOLapMinutes> minute) {
    std::lock_guard lock(recordsMutex);
    minutes.push_back(std::move(minute));
    return minutes.back().get();
}

DAOLapSeconds* DAOLap::AddSecond(std::unique_ptr<DAOLapSeconds> second) {
    std::lock_guard lock(recordsMutex);
    seconds.push_back(std::move(second));
    return seconds.back().get();
}

std::vector<DAOLapMinutes> DAOLap::CopyMinutes() const {
    std::lock_guard lock(recordsMutex);
    std::vector<DAOLapMinutes> copy;
    copy.reserve(minutes.size());
    for (const auto& minute : minutes) copy.push_back(*minute);
    return copy;
}

std::vector<DAOLapSeconds> DAOLap::CopySeconds() const {
    std::lock_guard lock(recordsMutex);
    std::vector<DAOLapSeconds> copy;
    copy.reserve(seconds.size());
    for (const auto& second : seconds) copy.push_back(*second);
    return copy;
}
