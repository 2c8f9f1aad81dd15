#include "AppFrame.h"

#include <gtest/gtest.h>

#include <QPointer>
#include <QTest>

#include "NavigationTestSupport.h"
#include "SoftkeyBar.h"
#include "TivUtils.h"

namespace {

class AppFrameTest : public ::testing::Test {
protected:
    void SetUp() override { TivUtils::SetScreenResolution(TivUtils::WVGA_WIDTH); }
    void TearDown() override { TivUtils::SetScreenResolution(TivUtils::WVGA_WIDTH); }
    Journal journal;
};

TEST_F(AppFrameTest, OnlyTheCurrentFormIsShownAndItsSoftkeysAreInTheBar) {
    AppFrame frame;
    ProbeForm* a = new ProbeForm("A", journal, frame);
    ProbeForm* b = new ProbeForm("B", journal, frame);
    frame.AddControl(*a);
    frame.AddControl(*b);
    EXPECT_FALSE(a->isVisibleTo(&frame));
    EXPECT_EQ(frame.GetCurrentForm(), nullptr);

    b->SetSoftkeyText(TivForm::SOFTKEY_0, "Left");
    frame.SetCurrentForm(*a);
    EXPECT_TRUE(a->isVisibleTo(&frame));
    EXPECT_FALSE(b->isVisibleTo(&frame));
    EXPECT_FALSE(frame.GetSoftkeyBar().IsKeyShown(SoftkeyBar::Key::Left));

    frame.SetCurrentForm(*b);
    EXPECT_FALSE(a->isVisibleTo(&frame));
    EXPECT_EQ(frame.GetSoftkeyBar().KeyText(SoftkeyBar::Key::Left), "Left");
    // A change on the current form reaches the bar at once.
    b->SetSoftkeyText(TivForm::SOFTKEY_0, QString());
    EXPECT_FALSE(frame.GetSoftkeyBar().IsKeyShown(SoftkeyBar::Key::Left));
}

// Tells its listener nothing but closes its own screen from inside the soft key.
class SelfClosing : public IActionEventListener {
public:
    explicit SelfClosing(AppFrame& frame, TivForm& form) : frame(frame), form(form) {}
    void OnActionPerformed(const QWidget&, int actionId) override {
        ids << actionId;
        frame.RemoveControl(form);
        stillThere = !guard.isNull();
    }
    AppFrame& frame;
    TivForm& form;
    QPointer<TivForm> guard{&form};
    QList<int> ids;
    bool stillThere = false;
};

TEST_F(AppFrameTest, AFormRemovedFromItsOwnSoftkeyGoesWhenTheEventLoopRuns) {
    AppFrame frame;
    ProbeForm* form = new ProbeForm("F", journal, frame);
    frame.AddControl(*form);
    frame.SetCurrentForm(*form);
    SelfClosing closer(frame, *form);
    form->SetSoftkeyText(TivForm::SOFTKEY_0, "Close");
    form->SetSoftkeyActionId(TivForm::SOFTKEY_0, 7);
    form->AddSoftkeyActionListener(TivForm::SOFTKEY_0, &closer);

    SoftkeyBar& bar = frame.GetSoftkeyBar();
    // A press that leaves the key before the release does not count.
    QTest::mousePress(&bar, Qt::LeftButton, {}, bar.KeyRect(SoftkeyBar::Key::Left).center());
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, bar.KeyRect(SoftkeyBar::Key::Right).center());
    EXPECT_TRUE(closer.ids.isEmpty());

    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.KeyRect(SoftkeyBar::Key::Left).center());
    EXPECT_EQ(closer.ids, QList<int>({7}));
    EXPECT_TRUE(closer.stillThere);
    EXPECT_EQ(frame.GetCurrentForm(), nullptr);
    EXPECT_EQ(frame.GetControlCount(), 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(closer.guard.isNull());
    EXPECT_EQ(journal.lines, QStringList({"F init", "F terminate (current none)", "F gone"}));
}

TEST_F(AppFrameTest, ASoftkeyListenerThatDiedIsForgotten) {
    AppFrame frame;
    ProbeForm* form = new ProbeForm("F", journal, frame);
    frame.AddControl(*form);
    frame.SetCurrentForm(*form);
    {
        ProbeForm other("other", journal, frame);
        form->SetSoftkeyText(TivForm::SOFTKEY_1, "Go");
        form->AddSoftkeyActionListener(TivForm::SOFTKEY_1, &other);
    }
    EXPECT_EQ(form->GetSoftkeyActionListener(TivForm::SOFTKEY_1), nullptr);
    SoftkeyBar& bar = frame.GetSoftkeyBar();
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.KeyRect(SoftkeyBar::Key::Right).center());
}

}  // namespace
