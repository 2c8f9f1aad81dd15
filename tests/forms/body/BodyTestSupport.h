#pragma once

// A fresh profile on 15 June 2026 with an empty goals record, and a frame whose root
// screen gets the body screens pushed on top, for the body and report tests.
#include <gtest/gtest.h>

#include "DAOTarget.h"
#include "FreshProfile.h"
#include "PedometerDBManager.h"
#include "ScreenFrame.h"

class BodyScreenTest : public ::testing::Test, protected ScreenFrame {
protected:
    void SetUp() override {
        ASSERT_TRUE(profile.IsValid());
        DAOTarget::GetInstance() = DAOTarget();
        SetRoot();
    }
    void TearDown() override {
        Close();
        DAOTarget::GetInstance() = DAOTarget();
    }
    // One day's log row, `daysAgo` before today (0.0: not measured).
    static void AddLog(int daysAgo, double weight, double chest, double waist, double hip) {
        DAOBodyLog log;
        log.logDate = QDate(2026, 6, 15).addDays(-daysAgo).startOfDay();
        log.weight = weight;
        log.chest = chest;
        log.waist = waist;
        log.hip = hip;
        std::vector<std::unique_ptr<DAOLap>> noLaps;
        ASSERT_TRUE(PedometerDBManager::GetInstance().ImportHistory(noLaps, {log}));
    }

    FreshProfile profile;
};
