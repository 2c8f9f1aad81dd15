// Every tool that writes a user's file, faced with a planted link, a full disk and a
// folder reached through links, run as the user runs it.
#include <sys/stat.h>

#include <QDir>
#include <QProcess>

#include "DataFolderLock.h"
#include "StorageTestSupport.h"

using storagetest::StorageTest;

namespace {

struct CliResult {
    int exitCode = -1;
    QString err;
};

// pedometer-cli with `args`; `fileBlocks` > 0 limits the files it writes to that many
// 512-byte blocks (a full disk), with the signal ignored so that the write fails.
CliResult Cli(const QStringList& args, int fileBlocks = 0) {
    QProcess process;
    const QString limit =
        fileBlocks > 0 ? QStringLiteral("trap '' XFSZ; ulimit -f %1; ").arg(fileBlocks) : QString();
    process.start("/bin/sh", QStringList{"-c", limit + "umask 022; exec \"$0\" \"$@\"",
                                         testdata::CliPath()} +
                                 args);
    CliResult run;
    if (!process.waitForFinished(120000)) return run;
    run.exitCode = process.exitCode();
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

class WriterSafetyTest : public StorageTest {
protected:
    void SetUp() override {
        StorageTest::SetUp();
        ASSERT_EQ(Cli({"seed-history", "--years", "1", "--data-dir", home_}).exitCode, 0);
        // Reading a rollback-journal file writes nothing, so only the output hits the limit.
        for (const std::string& path : {StatisticsPath(), OptionsPath()})
            Exec(path, "PRAGMA journal_mode=DELETE");
    }
};

TEST_F(WriterSafetyTest, AWriterReplacesItsFileWholeOrNotAtAllAndFollowsNoLink) {
    const QString out = folder_->filePath("out.csv");
    const QString victim = folder_->filePath("victim");
    const QStringList writers[] = {
        {"export", "minutes", "--out", out, "--data-dir", home_},
        {"export-body", "--out", out, "--data-dir", home_},
        {"backup", out, "--data-dir", home_},
    };
    for (const QStringList& writer : writers) {
        SCOPED_TRACE(writer.first().toStdString());
        ASSERT_TRUE(testdata::WriteFile(victim, "someone else's"));
        ASSERT_TRUE(QFile::link(victim, out));
        CliResult run = Cli(writer);
        EXPECT_NE(run.exitCode, 0);
        EXPECT_TRUE(run.err.contains("symbolic link")) << run.err.toStdString();
        EXPECT_TRUE(QFileInfo(out).isSymLink());
        ASSERT_TRUE(QFile::remove(out));

        ASSERT_TRUE(testdata::WriteFile(out, "previous"));
        run = Cli(writer, 1);
        EXPECT_NE(run.exitCode, 0);
        EXPECT_TRUE(run.err.contains("disk is full")) << run.err.toStdString();
        QFile previous(out);
        ASSERT_TRUE(previous.open(QIODevice::ReadOnly));
        EXPECT_EQ(previous.readAll(), "previous");

        ASSERT_EQ(Cli(writer).exitCode, 0);
        struct stat info {};
        ASSERT_EQ(::stat(QFile::encodeName(out).constData(), &info), 0);
        EXPECT_EQ(info.st_mode & 0777, 0600u);
        EXPECT_GT(info.st_size, 100);
        EXPECT_EQ(QDir(folder_->path()).entryList({"out.csv.tmp*"}, QDir::Files).size(), 0);
        ASSERT_TRUE(QFile::remove(out));
    }
    QFile victimFile(victim);
    ASSERT_TRUE(victimFile.open(QIODevice::ReadOnly));
    EXPECT_EQ(victimFile.readAll(), "someone else's");
}

TEST_F(WriterSafetyTest, FoldersAboveTheDataMayBeLinksButTheAppsOwnFilesMayNot) {
    // A moved home folder: the data is reached through a link and saved as usual.
    ASSERT_TRUE(QFile::link(home_, folder_->filePath("moved")));
    const QString linked = folder_->filePath("moved/deeper/data");
    EXPECT_EQ(Cli({"backup", folder_->filePath("b"), "--data-dir", home_}).exitCode, 0);
    CliResult run = Cli({"restore", folder_->filePath("b"), "--data-dir", linked});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    run = Cli({"export", "days", "--out", folder_->filePath("d"), "--data-dir", linked});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();

    // A lock file planted as a link is refused, naming it; its target stays as it was.
    const QString victim = folder_->filePath("victim");
    ASSERT_TRUE(testdata::WriteFile(victim, "x"));
    QFile::remove(home_ + "/" + DataFolderLock::kFileName);
    ASSERT_TRUE(QFile::link(victim, home_ + "/" + DataFolderLock::kFileName));
    run = Cli({"import", folder_->filePath("d"), "--data-dir", home_});
    EXPECT_NE(run.exitCode, 0);
    EXPECT_TRUE(run.err.contains(DataFolderLock::kFileName + QString(" is a symbolic link")))
        << run.err.toStdString();
    EXPECT_EQ(QFileInfo(victim).size(), 1);

    // An empty folder name is refused, not taken for the current folder.
    run = Cli({"import", folder_->filePath("d"), "--data-dir", ""});
    EXPECT_NE(run.exitCode, 0);
    EXPECT_TRUE(run.err.contains("empty")) << run.err.toStdString();
}

TEST_F(WriterSafetyTest, ALockFileDeletedUnderTheHolderIsTakenBack) {
    QString error;
    const auto lock = DataFolderLock::Acquire(home_, &error);
    ASSERT_TRUE(lock) << error.toStdString();
    ASSERT_TRUE(QFile::remove(home_ + "/" + DataFolderLock::kFileName));
    EXPECT_TRUE(lock->Reclaim(&error)) << error.toStdString();
    const CliResult second = Cli({"import", folder_->filePath("none"), "--data-dir", home_});
    EXPECT_TRUE(second.err.contains("another pedometer")) << second.err.toStdString();
}

}  // namespace
