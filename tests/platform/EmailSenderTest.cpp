#include "EmailSender.h"

#include <gtest/gtest.h>

#include <QEventLoop>
#include <QTimer>

#include "FakeMailProgram.h"
#include "TestData.h"

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
    for (const QByteArrayList& c : testdata::Table("mail-arguments.tsv")) {
        SCOPED_TRACE(c[1].toStdString());
        EXPECT_EQ(SendAndWait({c[0], c[1], c[2], c[3]}), 1);
        EXPECT_EQ(mail.Arguments(), QString::fromUtf8(c[4]).split('|'));
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
