#pragma once

// A fresh data folder on a fixed day, and today's activity written straight into it, for
// the daily-goal tests.
#include <gtest/gtest.h>

#include <QDateTime>
#include <QTemporaryDir>

#include "AppPaths.h"
#include "DAOTarget.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "TivUtils.h"
#include "VirtualTime.h"

class GoalTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        AppPaths::SetHome(dir.path());
        PedometerDBManager::GetInstance().Reopen();
        VirtualTime::Enable(QDateTime(QDate(2026, 6, 15), QTime(18, 30)));
        PedometerOptions::GetInstance().RestoreDefaults();
        Goal() = DAOTarget();
        TivUtils::SetScreenResolution(TivUtils::WVGA_WIDTH);
    }
    void TearDown() override {
        VirtualTime::Disable();
        PedometerOptions::GetInstance().RestoreDefaults();
        Goal() = DAOTarget();
        PedometerDBManager::GetInstance().Reopen();
    }

    static DAOTarget& Goal() { return DAOTarget::GetInstance(); }
    // Adds one minute of activity to a new lap of today.
    static void AddToday(double metres, double kcal, int seconds, int steps = 0) {
        PedometerDBManager& db = PedometerDBManager::GetInstance();
        auto lap = db.CreateNewLap();
        ASSERT_GE(lap->id, 0);
        DAOLapMinutes minute;
        minute.lapId = lap->id;
        minute.lapMinute = 1;
        minute.distance = metres;
        minute.calories = kcal;
        minute.secondsCompleted = seconds;
        minute.steps = steps;
        db.CreateNewLapMinute(minute);  // the row, then its values
        db.UpdateLapMinute(minute);
    }
    // The goals as stored in the database.
    static DAOTarget Stored() {
        DAOTarget stored;
        PedometerDBManager::GetInstance().LoadTargets(stored);
        return stored;
    }

    QTemporaryDir dir;
};
