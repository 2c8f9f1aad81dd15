#pragma once

// A screen of the goals area pushed over a plain root in a shown frame, on a fresh
// profile, with silent counted sounds.
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <memory>

#include "../../sound/FakeSoundPlayer.h"
#include "AppFrame.h"
#include "FormHeader.h"
#include "FreshProfile.h"
#include "PedometerDBManager.h"
#include "PedometerForm.h"
#include "PedometerOptions.h"
#include "PlatformSettings.h"
#include "TivNavigationController.h"

class GoalScreenTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(profile.IsValid());
        PedometerOptions::GetInstance().RestoreDefaults();
        PlatformSettings::SetSilentMode(false);
        SoundsManager::GetInstance().SetPlayerFactory(FakePlayers(plays));
    }
    void TearDown() override {
        controller.reset();
        frame.reset();
        static FakePlayerLog* leftovers = new FakePlayerLog;
        SoundsManager::GetInstance().SetPlayerFactory(FakePlayers(*leftovers));
        PedometerOptions::GetInstance().RestoreDefaults();
    }

    template <typename Form>
    Form& Push() {
        frame = std::make_unique<AppFrame>();
        controller = std::make_unique<TivNavigationController>(*frame);
        auto* root = new PedometerForm;
        controller->InitWithRootForm(root);
        frame->AddControl(*root);
        frame->SetCurrentForm(*root);
        frame->show();
        auto* form = new Form;
        form->Initialize();
        controller->PushForm(form);
        screen = form;
        return *form;
    }
    void TapTab(int index) {
        FormHeader* header = screen->GetHeader();
        QTest::mouseClick(header, Qt::LeftButton, {}, header->TabRect(index).center());
    }
    static void Click(QWidget* widget) {
        ASSERT_NE(widget, nullptr);
        QTest::mouseClick(widget, Qt::LeftButton, {}, widget->rect().center());
    }
    // Types `text` over the field's contents and finishes with Enter.
    static void Enter(QLineEdit* field, const QString& text) {
        ASSERT_NE(field, nullptr);
        field->selectAll();
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
    }
    static PedometerOptions& Options() { return PedometerOptions::GetInstance(); }
    static std::unique_ptr<PedometerOptions> Stored() {
        auto stored = std::make_unique<PedometerOptions>();
        PedometerDBManager::GetInstance().LoadOptions(*stored);
        return stored;
    }

    FreshProfile profile;
    FakePlayerLog plays;
    std::unique_ptr<AppFrame> frame;
    std::unique_ptr<TivNavigationController> controller;
    QPointer<PedometerForm> screen;
};
