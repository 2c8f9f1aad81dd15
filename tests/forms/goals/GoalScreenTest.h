#pragma once

// A screen of the goals area pushed over a plain root in a shown frame, on a fresh
// profile, with silent counted sounds.
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPointer>

#include "FakeSoundPlayer.h"
#include "FormHeader.h"
#include "FreshProfile.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "ScreenFrame.h"

class GoalScreenTest : public ::testing::Test, protected ScreenFrame {
protected:
    void SetUp() override { ASSERT_TRUE(profile.IsValid()); }
    void TearDown() override {
        Close();
        PedometerOptions::GetInstance().RestoreDefaults();
    }

    // A new frame with the screen `Form` over its root.
    template <typename Form>
    Form& Push() {
        Close();
        SetRoot();
        auto* form = new Form;
        form->Initialize();
        navigation->PushForm(form);
        screen = form;
        return *form;
    }
    void TapTab(int index) {
        FormHeader* header = screen->GetHeader();
        QTest::mouseClick(header, Qt::LeftButton, {}, header->TabRect(index).center());
    }
    // Types `text` over the field's contents and finishes with Enter.
    static void Enter(QLineEdit* field, const QString& text) {
        ASSERT_NE(field, nullptr);
        field->selectAll();
        if (text.isEmpty())
            QTest::keyClick(field, Qt::Key_Backspace);
        else
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
    FakeSounds plays;
    QPointer<PedometerForm> screen;
};
