#include "PedometerForm.h"

#include <gtest/gtest.h>

#include <QKeyEvent>
#include <QMenu>
#include <QPointer>
#include <QTest>

#include "FakeSoundPlayer.h"
#include "NavigationTestSupport.h"
#include "PedometerOptions.h"
#include "SoftkeyBar.h"
#include "ScreenFrame.h"
#include "SoundsManager.h"
#include "Touch.h"
#include "VirtualTime.h"

namespace {

const QString kClick = QStringLiteral("click.wav");

// Root and one screen above it with a back key, in a shown frame; the sounds are
// counted by fake players and timers run on virtual time.
class PedometerFormTest : public ::testing::Test, protected ScreenFrame {
protected:
    void SetUp() override {
        PedometerOptions::GetInstance().RestoreDefaults();
        VirtualTime::Enable(QDateTime(QDate(2026, 6, 15), QTime(9, 0)));
        Open();
        SetRoot(new ProbeForm("root", journal, *frame));
        screen = Push(new ProbeForm("screen", journal, *frame));
        screen->ShowBackButton();
        journal.lines.clear();
        // The volume is process-wide: start each test from 79, clear of both ends.
        sounds().SoundOn();
        for (int i = 0; i < 3; ++i) sounds().SoundDown();
        volumeBefore = sounds().GetVolume();
    }
    void TearDown() override {
        Close();
        VirtualTime::Disable();
    }

    static SoundsManager& sounds() { return SoundsManager::GetInstance(); }
    static void Settle() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
    void TapSoftkey(SoftkeyBar::Key key) {
        SoftkeyBar& bar = frame->GetSoftkeyBar();
        QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.KeyRect(key).center());
    }
    void SendKey(QEvent::Type type, int key, bool autoRepeat = false) {
        QKeyEvent event(type, key, Qt::NoModifier, QString(), autoRepeat);
        QApplication::sendEvent(frame.get(), &event);
    }

    FakeSounds plays;
    Journal journal;
    ProbeForm* screen = nullptr;
    int volumeBefore = 0;
};

// The back soft key (through the screen's action) and the phone's back keys (straight to the
// request) click once and pop once; the root has no back key, and its keys do nothing.
TEST_F(PedometerFormTest, BackKeysClickOnceThenPopOnceAndNeverPopTheRoot) {
    SoftkeyBar& bar = frame->GetSoftkeyBar();
    for (const bool softkey : {true, false}) {
        SCOPED_TRACE(softkey ? "soft key" : "phone key");
        if (!softkey) {
            screen = Push(new ProbeForm("screen", journal, *frame));
            screen->ShowBackButton();
        }
        journal.lines.clear();
        const int clicks = plays.Plays(kClick);
        ASSERT_TRUE(bar.IsKeyShown(SoftkeyBar::Key::Right));
        QPointer<ProbeForm> guard = screen;
        if (softkey) TapSoftkey(SoftkeyBar::Key::Right);
        else QTest::keyClick(frame.get(), Qt::Key_Escape);
        EXPECT_EQ(plays.Plays(kClick), clicks + 1);
        EXPECT_EQ(screen->actions,
                  softkey ? QList<int>{PedometerForm::BACK_ACTION_ID} : QList<int>{});
        EXPECT_EQ(journal.lines, QStringList({"screen terminate (current none)", "root appear"}));
        EXPECT_EQ(navigation->GetTopForm(), root);
        Settle();
        EXPECT_TRUE(guard.isNull());
        EXPECT_FALSE(bar.IsKeyShown(SoftkeyBar::Key::Right));
        TapSoftkey(SoftkeyBar::Key::Right);
        QTest::keyClick(frame.get(), Qt::Key_Backspace);
        QTest::keyClick(frame.get(), Qt::Key_Escape);
        EXPECT_EQ(plays.Plays(kClick), clicks + 1);
        EXPECT_EQ(navigation->GetFormCount(), 1);
    }
}

TEST_F(PedometerFormTest, SideKeysStepTheVolumeAndALongPressSwitchesItFully) {
    QTest::keyClick(frame.get(), Qt::Key_VolumeUp);
    EXPECT_EQ(sounds().GetVolume(), volumeBefore + SoundsManager::kVolumeStep);
    QTest::keyClick(frame.get(), Qt::Key_PageDown);
    QTest::keyClick(frame.get(), Qt::Key_Minus);
    EXPECT_EQ(sounds().GetVolume(), volumeBefore - SoundsManager::kVolumeStep);

    // Held down: one step at once, the keyboard's repeats ignored, full off at 600 ms.
    SendKey(QEvent::KeyPress, Qt::Key_VolumeDown);
    SendKey(QEvent::KeyRelease, Qt::Key_VolumeDown, true);
    SendKey(QEvent::KeyPress, Qt::Key_VolumeDown, true);
    EXPECT_EQ(sounds().GetVolume(), volumeBefore - 2 * SoundsManager::kVolumeStep);
    VirtualTime::AdvanceBy(AppFrame::kLongPressMs - 1);
    EXPECT_EQ(sounds().GetVolume(), volumeBefore - 2 * SoundsManager::kVolumeStep);
    VirtualTime::AdvanceBy(1);
    EXPECT_EQ(sounds().GetVolume(), 0);
    SendKey(QEvent::KeyRelease, Qt::Key_VolumeDown);

    SendKey(QEvent::KeyPress, Qt::Key_PageUp);
    VirtualTime::AdvanceBy(AppFrame::kLongPressMs);
    SendKey(QEvent::KeyRelease, Qt::Key_PageUp);
    EXPECT_EQ(sounds().GetVolume(), 100);

    // Released in time: no long press.
    sounds().SoundDown();
    SendKey(QEvent::KeyPress, Qt::Key_Minus);
    VirtualTime::AdvanceBy(AppFrame::kLongPressMs / 2);
    SendKey(QEvent::KeyRelease, Qt::Key_Minus);
    VirtualTime::AdvanceBy(AppFrame::kLongPressMs);
    EXPECT_EQ(sounds().GetVolume(), 100 - 2 * SoundsManager::kVolumeStep);
}

TEST_F(PedometerFormTest, ALongPressDoesNotReachAScreenThatWasClosedMeanwhile) {
    SendKey(QEvent::KeyPress, Qt::Key_VolumeUp);
    navigation->PopForm(true);
    VirtualTime::AdvanceBy(AppFrame::kLongPressMs);
    SendKey(QEvent::KeyRelease, Qt::Key_VolumeUp);
    EXPECT_EQ(sounds().GetVolume(), volumeBefore + SoundsManager::kVolumeStep);
}

TEST_F(PedometerFormTest, OptionKeyOpensTheMenuAndItemsReportTheirIds) {
    // Before the menu is made, calls on it do nothing and are not kept.
    screen->AddOptionKey("Lost", 5);
    screen->ShowOptionMenu();
    EXPECT_EQ(screen->GetOptionMenu(), nullptr);
    QTest::keyClick(frame.get(), Qt::Key_Menu);
    EXPECT_TRUE(screen->actions.isEmpty());
    EXPECT_FALSE(frame->GetSoftkeyBar().IsKeyShown(SoftkeyBar::Key::Option));
    screen->InitOptionMenu(ProbeForm::kOptionKey);
    screen->AddOptionKey("History", 125);
    screen->AddOptionKey("Settings", 123);
    ASSERT_TRUE(frame->GetSoftkeyBar().IsKeyShown(SoftkeyBar::Key::Option));

    TapSoftkey(SoftkeyBar::Key::Option);
    QMenu* menu = screen->GetOptionMenu();
    ASSERT_NE(menu, nullptr);
    ASSERT_TRUE(menu->isVisible());
    // Above the soft-key bar, from the left edge.
    const QRect shown(menu->pos(), menu->size());
    EXPECT_LE(shown.bottom(), frame->mapToGlobal(frame->GetClientAreaBounds().bottomLeft()).y());
    EXPECT_EQ(shown.left(), frame->mapToGlobal(QPoint(0, 0)).x());

    const QList<QAction*> items = menu->actions();
    ASSERT_EQ(items.size(), 2);
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(items[1]).center());
    EXPECT_EQ(screen->actions, QList<int>({ProbeForm::kOptionKey, 123}));
    EXPECT_FALSE(menu->isVisible());
}

TEST_F(PedometerFormTest, BackgroundIsDrawnAtTheTopLeftUnderTheControls) {
    screen->SetBackgroundImage("MainScreen_bg.png");
    ASSERT_NE(screen->GetBackgroundImage(), nullptr);
    const QImage shot = screen->grab().toImage();
    const QImage picture = screen->GetBackgroundImage()->toImage();
    EXPECT_EQ(shot.pixelColor(0, 0), picture.pixelColor(0, 0));

    // Without a picture the form draws nothing of its own.
    ProbeForm bare("bare", journal, *frame);
    bare.resize(50, 50);
    EXPECT_EQ(touch::PixelAt(bare, QPoint(10, 10)).alpha(), 0);
}

}  // namespace
