#pragma once

// A fresh profile on 15 June 2026 with an empty goals record, and a frame whose root
// screen gets the body screens pushed on top, for the body and report tests.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <memory>

#include "AppFrame.h"
#include "DAOTarget.h"
#include "FreshProfile.h"
#include "PedometerDBManager.h"
#include "PedometerForm.h"
#include "TivNavigationController.h"
#include "TivUtils.h"

class BodyScreenTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(profile.IsValid());
        DAOTarget::GetInstance() = DAOTarget();
        TivUtils::SetScreenResolution(TivUtils::WVGA_WIDTH);
        frame = std::make_unique<AppFrame>();
        navigation = std::make_unique<TivNavigationController>(*frame);
        root = new PedometerForm;
        navigation->InitWithRootForm(root);
        frame->AddControl(*root);
        frame->SetCurrentForm(*root);
        frame->show();
    }
    void TearDown() override {
        navigation.reset();
        frame.reset();
        QCoreApplication::processEvents();
        DAOTarget::GetInstance() = DAOTarget();
    }
    template <class Form>
    Form* Push(Form* form) {
        navigation->PushForm(form);
        return form;
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
    std::unique_ptr<AppFrame> frame;
    std::unique_ptr<TivNavigationController> navigation;
    PedometerForm* root = nullptr;
};
