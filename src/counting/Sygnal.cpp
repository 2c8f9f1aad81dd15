#include "Sygnal.h"

#include <QCoreApplication>

#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "SoundsManager.h"

namespace {
// The sound players belong to the GUI thread; the alarm is reached on the updater
// thread, so the sound is handed over.
void playAlarm() {
    QCoreApplication* app = QCoreApplication::instance();
    if (app == nullptr) return;
    QMetaObject::invokeMethod(
        app, [] { SoundsManager::GetInstance().PlaySygnalSound(); }, Qt::QueuedConnection);
}
}  // namespace

bool Sygnal::AddValues(double calories, int seconds, double distanceMeters, int steps) {
    PedometerOptions& options = PedometerOptions::GetInstance();
    if (!IsRunning(options.sygnalType)) return false;

    PedometerDBManager& db = PedometerDBManager::GetInstance();
    DAOSygnal progress = db.GetTodaySygnal();
    progress.activityTime += seconds;
    progress.calories += calories;
    progress.distance += distanceMeters / 1000.0;
    progress.steps += steps;
    db.UpdateSygnal(progress);

    const int type = options.sygnalType;
    if (type == 5 && progress.distance >= options.sygnalDistance) {
        options.sygnalType = 7;
        db.SaveOptions();
        playAlarm();
    } else if (type == 6 && progress.activityTime / 60 >= options.sygnalActivity) {
        options.sygnalType = 9;
        db.SaveOptions();
        playAlarm();
    } else if (type == STEPS_RUNNING && progress.steps >= options.sygnalSteps) {
        options.sygnalType = STEPS_COMPLETED;
        db.SaveOptions();
        playAlarm();
    } else if (type == 4 && progress.calories >= static_cast<double>(options.sygnalCalories)) {
        // Calories sound before the settings are saved; the others save first.
        options.sygnalType = 8;
        playAlarm();
        db.SaveOptions();
    } else {
        return false;
    }
    return true;
}
