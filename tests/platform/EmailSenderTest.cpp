#include "EmailSender.h"

#include <gtest/gtest.h>

#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include "TestData.h"

namespace {

// A fake xdg-email first on PATH: it writes each argument, NUL-terminated, into
// args.txt and exits with the status named in FAKE_XDG_EMAIL_EXIT.
class EmailSenderTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir_->isValid());
        ASSERT_TRUE(testdata::WriteFile(
            Fake(), "#!/bin/sh\nfor a in \"$@\"; do printf '%s\\0' \"$a\"; done > \"$(dirname "
                    "\"$0\")/args.txt\"\nexit ${FAKE_XDG_EMAIL_EXIT:-0}\n"));
        QFile::setPermissions(Fake(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        oldPath_ = qgetenv("PATH");
        qputenv("PATH", dir_->path().toUtf8() + ':' + oldPath_);
    }
    void TearDown() override {
        qputenv("PATH", oldPath_);
        qunsetenv("FAKE_XDG_EMAIL_EXIT");
    }
    QString Fake() const { return dir_->path() + QStringLiteral("/xdg-email"); }
    QStringList RecordedArguments() const {
        QFile file(dir_->path() + QStringLiteral("/args.txt"));
        if (!file.open(QIODevice::ReadOnly)) return {};
        return QString::fromUtf8(file.readAll()).split(QChar(0), Qt::SkipEmptyParts);
    }
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

    std::unique_ptr<QTemporaryDir> dir_ = testdata::MakeTempDir();
    QByteArray oldPath_;
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
        EXPECT_EQ(RecordedArguments(), c.arguments);
    }
}

TEST_F(EmailSenderTest, AFailingOrMissingMailProgramIsReported) {
    if (EmailSender::InSandbox()) GTEST_SKIP() << "sandboxed: the portal is used";
    qputenv("FAKE_XDG_EMAIL_EXIT", "3");
    EXPECT_EQ(SendAndWait({"a@b.org", "S", "B", ""}), 0);
    qputenv("PATH", dir_->path().toUtf8() + "/nowhere");
    EXPECT_EQ(SendAndWait({"a@b.org", "S", "B", ""}), -2);
}

}  // namespace
