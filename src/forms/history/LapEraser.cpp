#include "LapEraser.h"

#include "DAOLap.h"
#include "PedometerDBManager.h"
#include "StatisticsManager.h"

int LapEraser::RecordingLapId() const {
    const std::shared_ptr<DAOLap> lap = statistics_.GetCurrentLap();
    return lap ? lap->id : -1;
}

void LapEraser::Erase(int lapId) const {
    if (lapId != -1 && lapId == RecordingLapId()) {
        statistics_.ClearCurrentLap();
    } else {
        PedometerDBManager::GetInstance().DeleteLap(lapId);
    }
}
