#include "TivNavigationController.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPointer>
#include <functional>
#include <map>

#include "NavigationTestSupport.h"
#include "ScreenFrame.h"
#include "TestData.h"

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
    const std::map<QByteArray, std::function<void(TivNavigationController&, ProbeForm*)>> ops = {
        {"pop", [](auto& n, auto*) { n.PopForm(true); }},
        {"pop two", [](auto& n, auto*) { n.PopTwoForms(true); }},
        {"exchange one", [](auto& n, auto* next) { n.ExchangeFormForm(next, true); }},
        {"exchange two", [](auto& n, auto* next) { n.ExchangeTwoForms(next, true); }},
        {"to root and push", [](auto& n, auto* next) { n.PopToRootAndPush(next); }}};
    for (const QByteArrayList& c : testdata::Table("leaving-screens.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        while (navigation->GetFormCount() > 1) navigation->PopForm(true);
        Settle();
        for (const QByteArray& name : c[1].split('|'))
            if (!name.isEmpty()) navigation->PushForm(Make(QString::fromLatin1(name)));
        journal.lines.clear();
        ProbeForm* next = Make("N");
        ops.at(c[0])(*navigation, next);
        Settle();
        EXPECT_EQ(journal.lines, QString::fromLatin1(c[2]).split('|'));
        EXPECT_EQ(navigation->GetFormCount(), c[3].toInt());
        EXPECT_EQ(navigation->GetTopForm()->objectName(), QString::fromLatin1(c[4]));
        EXPECT_EQ(frame->GetCurrentForm(), navigation->GetTopForm());
        EXPECT_TRUE(navigation->GetTopForm()->isVisibleTo(frame.get()));
        EXPECT_EQ(frame->GetControlCount(), c[3].toInt());
        if (c[4] != "N") delete next;
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
