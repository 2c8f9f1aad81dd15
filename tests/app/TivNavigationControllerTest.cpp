#include "TivNavigationController.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPointer>
#include <functional>

#include "NavigationTestSupport.h"
#include "ScreenFrame.h"

namespace {

// A frame with the root form shown, as the application sets it up.
class TivNavigationControllerTest : public ::testing::Test, protected ScreenFrame {
protected:
    void SetUp() override {
        Open();
        SetRoot(Make("root"));
        root->FormWillAppear();
        journal.lines.clear();
    }
    void TearDown() override { Close(); }

    ProbeForm* Make(const QString& name) { return new ProbeForm(name, journal, *frame); }
    // Runs the deferred deletions the frame asked for.
    static void Settle() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    Journal journal;
};

// A pushed form is initialised once (though added to the frame before), shown in the client
// area and told; only the top form hears of a pause.
TEST_F(TivNavigationControllerTest, PushInitialisesOnceShowsAndTellsTheNewForm) {
    ProbeForm* a = Make("A");
    frame->AddControl(*a);
    frame->AddControl(*a);
    navigation->PushForm(a);
    EXPECT_EQ(journal.lines, QStringList({"A init", "A appear"}));
    EXPECT_EQ(frame->GetControlCount(), 2);
    EXPECT_EQ(navigation->GetTopForm(), a);
    EXPECT_EQ(a->getNavigationController(), navigation.get());
    EXPECT_EQ(frame->GetCurrentForm(), a);
    EXPECT_TRUE(a->isVisibleTo(frame.get()));
    EXPECT_FALSE(root->isVisibleTo(frame.get()));
    EXPECT_EQ(a->geometry(), frame->GetClientAreaBounds());
    navigation->AppWillBePaused();
    EXPECT_EQ(journal.lines.last(), "A pause");
    EXPECT_EQ(journal.Count("root pause"), 0);
}

// Each way of leaving screens: who is told what, in which order, and what stays. Screens
// are removed (with no current form in between, or with the new one already current)
// before anything is destroyed, newest first.
TEST_F(TivNavigationControllerTest, LeavingScreensTellsEachFormInOrderAndDestroysTheOld) {
    using Op = std::function<void(TivNavigationController&, ProbeForm* next)>;
    const struct {
        const char* name;
        QStringList below;  // pushed over the root first
        Op op;
        QStringList journal;
        int count;
        const char* top;
    } cases[] = {
        {"pop", {"A"}, [](auto& n, auto*) { n.PopForm(true); },
         {"A terminate (current none)", "root appear", "A gone"}, 1, "root"},
        {"pop two", {"A", "B"}, [](auto& n, auto*) { n.PopTwoForms(true); },
         {"B terminate (current none)", "A terminate (current none)", "root appear", "B gone",
          "A gone"}, 1, "root"},
        {"exchange one", {"A"}, [](auto& n, auto* next) { n.ExchangeFormForm(next, true); },
         {"N init", "N appear", "A terminate (current N)", "A gone"}, 2, "N"},
        {"exchange two", {"A", "B"}, [](auto& n, auto* next) { n.ExchangeTwoForms(next, true); },
         {"N init", "N appear", "B terminate (current N)", "A terminate (current N)", "B gone",
          "A gone"}, 2, "N"},
        {"to root and push", {"A1", "A2"}, [](auto& n, auto* next) { n.PopToRootAndPush(next); },
         {"N init", "N appear", "A2 terminate (current N)", "A1 terminate (current N)",
          "A2 gone", "A1 gone"}, 2, "N"},
        {"to root and push over the root", {}, [](auto& n, auto* next) { n.PopToRootAndPush(next); },
         {"N init", "N appear"}, 2, "N"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        while (navigation->GetFormCount() > 1) navigation->PopForm(true);
        Settle();
        for (const QString& name : c.below) navigation->PushForm(Make(name));
        journal.lines.clear();
        ProbeForm* next = Make("N");
        c.op(*navigation, next);
        Settle();
        EXPECT_EQ(journal.lines, c.journal);
        EXPECT_EQ(navigation->GetFormCount(), c.count);
        EXPECT_EQ(navigation->GetTopForm()->objectName(), c.top);
        EXPECT_EQ(frame->GetCurrentForm(), navigation->GetTopForm());
        EXPECT_TRUE(navigation->GetTopForm()->isVisibleTo(frame.get()));
        EXPECT_EQ(frame->GetControlCount(), c.count);
        if (QString(c.top) != "N") delete next;
    }
}

TEST_F(TivNavigationControllerTest, TheRootIsNeverPopped) {
    navigation->PopForm(true);
    navigation->PopTwoForms(true);
    std::unique_ptr<ProbeForm> x(Make("X"));
    navigation->ExchangeFormForm(x.get(), true);  // refused: X stays with the caller
    EXPECT_EQ(navigation->GetFormCount(), 1);
    EXPECT_EQ(frame->GetCurrentForm(), root);
    EXPECT_EQ(journal.lines, QStringList());
}

TEST_F(TivNavigationControllerTest, ClosingTheFrameTerminatesTheFormsNewestFirst) {
    navigation->PushForm(Make("A"));
    journal.lines.clear();
    navigation.reset();
    frame.reset();
    EXPECT_EQ(journal.lines, QStringList({"A terminate (current A)", "A gone",
                                          "root terminate (current none)", "root gone"}));
}

}  // namespace
