#include "TivNavigationController.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPointer>

#include "AppFrame.h"
#include "NavigationTestSupport.h"
#include "TivUtils.h"

namespace {

// A frame with the root form shown, as the application sets it up.
class TivNavigationControllerTest : public ::testing::Test {
protected:
    void SetUp() override {
        TivUtils::SetScreenResolution(TivUtils::WVGA_WIDTH);
        frame = std::make_unique<AppFrame>();
        controller = std::make_unique<TivNavigationController>(*frame);
        root = Make("root");
        controller->InitWithRootForm(root);
        frame->AddControl(*root);
        frame->SetCurrentForm(*root);
        root->FormWillAppear();
        journal.lines.clear();
    }
    void TearDown() override {
        controller.reset();
        frame.reset();
    }

    ProbeForm* Make(const QString& name) { return new ProbeForm(name, journal, *frame); }
    // Runs the deferred deletions the frame asked for.
    static void Settle() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    Journal journal;
    std::unique_ptr<AppFrame> frame;
    std::unique_ptr<TivNavigationController> controller;
    ProbeForm* root = nullptr;
};

TEST_F(TivNavigationControllerTest, InitWithRootLeavesTheFrameToTheCaller) {
    AppFrame other;
    TivNavigationController fresh(other);
    ProbeForm* form = new ProbeForm("lonely", journal, other);
    EXPECT_EQ(fresh.InitWithRootForm(form), 0);
    EXPECT_EQ(fresh.GetTopForm(), form);
    EXPECT_EQ(form->getNavigationController(), &fresh);
    EXPECT_EQ(other.GetControlCount(), 0);
    EXPECT_TRUE(journal.lines.isEmpty());
    delete form;
}

TEST_F(TivNavigationControllerTest, PushInitialisesShowsAndTellsTheNewForm) {
    ProbeForm* a = Make("A");
    controller->PushForm(a);
    EXPECT_EQ(journal.lines, QStringList({"A init", "A appear"}));
    EXPECT_EQ(controller->GetTopForm(), a);
    EXPECT_EQ(a->getNavigationController(), controller.get());
    EXPECT_EQ(frame->GetCurrentForm(), a);
    EXPECT_TRUE(a->isVisibleTo(frame.get()));
    EXPECT_FALSE(root->isVisibleTo(frame.get()));
    EXPECT_EQ(a->geometry(), frame->GetClientAreaBounds());
}

TEST_F(TivNavigationControllerTest, PopDestroysTheTopAndTellsTheRevealedFormAgain) {
    QPointer<ProbeForm> a = Make("A");
    controller->PushForm(a);
    journal.lines.clear();

    controller->PopForm(true);
    // Removed (with no current form in between) before the root comes back.
    EXPECT_EQ(journal.lines, QStringList({"A terminate (current none)", "root appear"}));
    EXPECT_EQ(controller->GetTopForm(), root);
    EXPECT_EQ(frame->GetCurrentForm(), root);
    EXPECT_TRUE(root->isVisibleTo(frame.get()));
    Settle();
    EXPECT_TRUE(a.isNull());
    EXPECT_EQ(journal.lines.last(), "A gone");
    EXPECT_EQ(frame->GetControlCount(), 1);
}

TEST_F(TivNavigationControllerTest, PopTwoFormsLeavesTheRootToldOnce) {
    QPointer<ProbeForm> a = Make("A");
    QPointer<ProbeForm> b = Make("B");
    controller->PushForm(a);
    controller->PushForm(b);
    journal.lines.clear();

    controller->PopTwoForms(true);
    Settle();
    EXPECT_EQ(journal.lines,
              QStringList({"B terminate (current none)", "A terminate (current none)",
                           "root appear", "B gone", "A gone"}));
    EXPECT_EQ(controller->GetFormCount(), 1);
    EXPECT_EQ(frame->GetCurrentForm(), root);
    EXPECT_TRUE(a.isNull());
    EXPECT_TRUE(b.isNull());
}

TEST_F(TivNavigationControllerTest, ExchangeFormFormShowsTheNewFormBeforeDestroyingTheOld) {
    QPointer<ProbeForm> a = Make("A");
    controller->PushForm(a);
    journal.lines.clear();

    ProbeForm* b = Make("B");
    controller->ExchangeFormForm(b, true);
    Settle();
    EXPECT_EQ(journal.lines,
              QStringList({"B init", "B appear", "A terminate (current B)", "A gone"}));
    EXPECT_EQ(journal.Count("root appear"), 0);
    EXPECT_EQ(controller->GetFormCount(), 2);
    EXPECT_EQ(controller->GetTopForm(), b);
    EXPECT_TRUE(a.isNull());
}

TEST_F(TivNavigationControllerTest, ExchangeTwoFormsReplacesTheTwoTopScreens) {
    QPointer<ProbeForm> a = Make("A");
    QPointer<ProbeForm> b = Make("B");
    controller->PushForm(a);
    controller->PushForm(b);
    journal.lines.clear();

    ProbeForm* c = Make("C");
    controller->ExchangeTwoForms(c, true);
    Settle();
    EXPECT_EQ(journal.lines, QStringList({"C init", "C appear", "B terminate (current C)",
                                          "A terminate (current C)", "B gone", "A gone"}));
    EXPECT_EQ(controller->GetFormCount(), 2);
    EXPECT_EQ(controller->GetTopForm(), c);
}

TEST_F(TivNavigationControllerTest, PopToRootAndPushDestroysFromTheTopDown) {
    QPointer<ProbeForm> a1 = Make("A1");
    QPointer<ProbeForm> a2 = Make("A2");
    controller->PushForm(a1);
    controller->PushForm(a2);
    journal.lines.clear();

    ProbeForm* b = Make("B");
    controller->PopToRootAndPush(b);
    Settle();
    EXPECT_EQ(journal.lines, QStringList({"B init", "B appear", "A2 terminate (current B)",
                                          "A1 terminate (current B)", "A2 gone", "A1 gone"}));
    EXPECT_EQ(controller->GetFormCount(), 2);
    EXPECT_EQ(controller->GetTopForm(), b);

    // With only the root below, it is a plain push.
    controller->PopForm(true);
    journal.lines.clear();
    ProbeForm* c = Make("C");
    controller->PopToRootAndPush(c);
    EXPECT_EQ(journal.lines, QStringList({"C init", "C appear"}));
    EXPECT_EQ(controller->GetFormCount(), 2);
}

TEST_F(TivNavigationControllerTest, TheRootIsNeverPopped) {
    controller->PopForm(true);
    controller->PopTwoForms(true);
    std::unique_ptr<ProbeForm> x(Make("X"));
    controller->ExchangeFormForm(x.get(), true);  // refused: X stays with the caller
    EXPECT_EQ(controller->GetFormCount(), 1);
    EXPECT_EQ(frame->GetCurrentForm(), root);
    EXPECT_EQ(journal.lines, QStringList());
}

TEST_F(TivNavigationControllerTest, OnlyTheTopScreenHearsOfThePause) {
    controller->PushForm(Make("A"));
    journal.lines.clear();
    controller->AppWillBePaused();
    EXPECT_EQ(journal.lines, QStringList({"A pause"}));
}

TEST_F(TivNavigationControllerTest, AFormIsInitialisedOnlyOnce) {
    ProbeForm* a = Make("A");
    frame->AddControl(*a);
    frame->AddControl(*a);
    controller->PushForm(a);
    EXPECT_EQ(journal.Count("A init"), 1);
    EXPECT_EQ(frame->GetControlCount(), 2);
}

TEST_F(TivNavigationControllerTest, ClosingTheFrameTerminatesTheFormsNewestFirst) {
    controller->PushForm(Make("A"));
    journal.lines.clear();
    controller.reset();
    frame.reset();
    EXPECT_EQ(journal.lines, QStringList({"A terminate (current A)", "A gone",
                                          "root terminate (current none)", "root gone"}));
}

}  // namespace
