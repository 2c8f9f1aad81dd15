#include "EmailSender.h"

#include <gtest/gtest.h>

#include <QEventLoop>
#include <QTimer>

#include "FakeMailProgram.h"

namespace {

class EmailSenderTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(mail.IsValid()); }

    // Sends and waits for the answer: 1 sent, 0 failed, -1 no answer, -2 not started.
    static int SendAndWait(const EmailMessage& message) {
        EmailSender sender;
        int result = -1;
        QEventLoop loop;
        if (!sender.Send(message, [&](bool sent) {
                result = sent ? 1 : 0;
                loop.quit();
            }))
            return -2;
        EXPECT_EQ(result, -1) << "answered inside Send";
        QTimer::singleShot(10000, &loop, &QEventLoop::quit);
        loop.exec();
        return result;
    }

    FakeMailProgram mail;
};

TEST_F(EmailSenderTest, XdgEmailGetsSubjectBodyAttachmentAndAddressAsSeparateArguments) {
    if (EmailSender::InSandbox()) GTEST_SKIP() << "sandboxed: the portal is used";
    const struct {
        EmailMessage message;
        QStringList arguments;
    } cases[] = {
        {{"a@b.org", "Hi; $(rm -rf x)", "Line 1\nLine 2", ""},
         {"--subject", "Hi; $(rm -rf x)", "--body", "Line 1\nLine 2", "a@b.org"}},
        {{"a@b.org", "Export", "Attached ", "/tmp/my export.csv"},
         {"--subject", "Export", "--body", "Attached ", "--attach", "/tmp/my export.csv",
          "a@b.org"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.message.subject.toStdString());
        EXPECT_EQ(SendAndWait(c.message), 1);
        EXPECT_EQ(mail.Arguments(), c.arguments);
    }
}

TEST_F(EmailSenderTest, AFailingOrMissingMailProgramIsReported) {
    if (EmailSender::InSandbox()) GTEST_SKIP() << "sandboxed: the portal is used";
    qputenv("FAKE_XDG_EMAIL_EXIT", "3");
    EXPECT_EQ(SendAndWait({"a@b.org", "S", "B", ""}), 0);
    mail.Remove();
    EXPECT_EQ(SendAndWait({"a@b.org", "S", "B", ""}), -2);
}

}  // namespace
