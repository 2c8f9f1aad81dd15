#include "LapEraser.h"

#include "DAOLap.h"
#include "MainForm.h"
#include "PedometerDBManager.h"
#include "StatisticsManager.h"

int LapEraser::RecordingLapId() {
    const StatisticsManager* manager = MainForm::__statManager;
    if (manager == nullptr) return -1;
    const std::shared_ptr<DAOLap> lap = manager->GetCurrentLap();
    return lap ? lap->id : -1;
}

void LapEraser::Erase(int lapId) {
    if (lapId != -1 && lapId == RecordingLapId()) {
        MainForm::__statManager->ClearCurrentLap();
    } else {
        PedometerDBManager::GetInstance().DeleteLap(lapId);
    }
}
