// Backups, restores and interrupted restores of the data folder.
#include "DataBackup.h"

#include <signal.h>
#include <sys/resource.h>

#include <QDir>
#include <functional>

#include "StorageTestSupport.h"

using storagetest::StorageTest;

namespace {

class DataBackupTest : public StorageTest {
protected:
    // A data folder `dir` with `laps` laps; returns the path of its backup.
    QString Folder(const QString& dir, int laps) {
        AppPaths::SetHome(dir);
        manager().Reopen();
        for (int i = 0; i < laps; ++i) manager().CreateNewLap();
        manager().OptionsStatus();
        manager().Reopen();
        return dir;
    }
    int Laps(const QString& dir) {
        return QueryInt(QFile::encodeName(dir + "/Statistics.db3").toStdString(),
                        "SELECT count(*) FROM Lap");
    }
    QStringList Left(const QString& dir) {
        return QDir(dir).entryList({".restore-*", DataBackup::kJournalName},
                                   QDir::AllEntries | QDir::Hidden);
    }
};

TEST_F(DataBackupTest, ARestoreIsWholeAndAForeignOrCraftedBackupChangesNothing) {
    const QString current = Folder(folder_->filePath("current"), 2);
    QString error;
    const QString source = Folder(folder_->filePath("source"), 5);
    const QString good = source + "/good.backup";  // beside the databases, under its own name
    ASSERT_TRUE(manager().SetPreference(QStringLiteral("sns-secret-twitter"), "kept-on-device"));
    ASSERT_TRUE(DataBackup::Backup(source, good, &error)) << error.toStdString();
    EXPECT_EQ(QFile::permissions(good) & 0x7077, QFile::ReadOwner | QFile::WriteOwner);
    EXPECT_FALSE(testdata::ReadFile(good).contains("kept-on-device"));  // sign-in secrets stay here
    EXPECT_FALSE(DataBackup::Backup(current, current + "/Statistics.db3", &error));
    EXPECT_TRUE(error.contains("own database")) << error.toStdString();
    // A folder without databases, then one whose first database is not one.
    const QString broken = folder_->filePath("broken");
    ASSERT_TRUE(QDir().mkpath(broken));
    for (const char* why : {"does not exist", "is not a database"}) {
        EXPECT_FALSE(DataBackup::Backup(broken, broken + ".backup", &error));
        EXPECT_TRUE(error.contains(why)) << error.toStdString();
        ASSERT_TRUE(testdata::WriteFile(broken + "/Options.db3", QByteArray(4096, 'x')));
    }

    for (const QByteArrayList& craft : testdata::Table("crafted-backups.tsv")) {
        SCOPED_TRACE(craft[0].constData());
        const QString source = Folder(folder_->filePath(craft[0]), 3);
        if (!craft[1].isEmpty())
            Exec(QFile::encodeName(source + "/Statistics.db3").toStdString(), craft[1].toStdString());
        const QString file = folder_->filePath(craft[0] + ".backup");
        ASSERT_TRUE(DataBackup::Backup(source, file, &error)) << error.toStdString();
        QFile cut(file);
        ASSERT_TRUE(cut.resize(craft[0] == "truncated" ? cut.size() - 100
                               : craft[1].isEmpty()    ? 5
                                                       : cut.size()));
        EXPECT_FALSE(DataBackup::Restore(file, current, &error));
        EXPECT_TRUE(error.contains(QString::fromUtf8(craft[2]))) << error.toStdString();
        EXPECT_EQ(Laps(current), 2);
        EXPECT_TRUE(Left(current).isEmpty()) << Left(current).join(' ').toStdString();
    }

    EXPECT_FALSE(DataBackup::Restore(good, good + "/data", &error));  // below a file
    EXPECT_TRUE(error.contains("cannot create the data folder")) << error.toStdString();
    EXPECT_FALSE(DataBackup::Restore(good + ".none", current, &error));
    EXPECT_TRUE(error.contains("cannot read")) << error.toStdString();

    // A first database's header with another name, or a size that is no size.
    const QByteArray goodBytes = testdata::ReadFile(good);
    const qsizetype headerAt = goodBytes.indexOf('\n') + 1;
    const qsizetype headerEnd = goodBytes.indexOf('\n', headerAt);
    EXPECT_EQ(goodBytes.mid(headerEnd + 1 + 18, 2), "\1\1");  // a plain file, without a log
    for (const QByteArray header : {"Options.db4 4096", "Options.db3 x", "Options.db3 0",
                                    "Options.db3 -5", "Options.db3 4294967297", "Options.db3",
                                    "Options.db3 4096 4096"}) {
        SCOPED_TRACE(header.constData());
        const QString file = folder_->filePath("header.backup");
        QByteArray bytes = goodBytes;
        ASSERT_TRUE(testdata::WriteFile(file, bytes.replace(headerAt, headerEnd - headerAt, header)));
        EXPECT_FALSE(DataBackup::Restore(file, current, &error));
        EXPECT_TRUE(error.contains("not a complete pedometer backup")) << error.toStdString();
        EXPECT_EQ(Laps(current), 2);
    }
    // Nor one that fills the disk, which stops a backup too.
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit full{40 << 10, limit.rlim_max};  // a log's shared memory, not a database
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
    EXPECT_FALSE(DataBackup::Restore(good, current, &error));
    EXPECT_TRUE(error.contains("the disk is full")) << error.toStdString();
    EXPECT_FALSE(DataBackup::Backup(current, good + ".new", &error));
    ::setrlimit(RLIMIT_FSIZE, &limit);

    // Twice within a second: each keeps what it replaced in a folder of its own.
    QString aside;
    QString secondAside;
    ASSERT_TRUE(DataBackup::Restore(good, current, &error, &aside)) << error.toStdString();
    ASSERT_TRUE(DataBackup::Restore(good, current, &error, &secondAside));
    EXPECT_EQ(QFileInfo(aside).fileName(), "aside-" + storagetest::Moment().toString("yyyyMMdd-HHmmss"));
    EXPECT_EQ(secondAside, aside + "-2");
    EXPECT_TRUE(DataBackup::Restore(good, current, &error));  // no aside folder asked for
    ASSERT_TRUE(DataBackup::Restore(good, folder_->filePath("new"), &error, &secondAside));
    EXPECT_TRUE(secondAside.isEmpty());  // nothing was there to keep
    EXPECT_EQ(Laps(aside), 2);
    EXPECT_EQ(Laps(current), 5);
    EXPECT_TRUE(Left(current).isEmpty());
    EXPECT_EQ(QFile::permissions(current + "/Options.db3"), QFile::permissions(good));  // 0600
}

TEST_F(DataBackupTest, ARestoreKilledDuringItsSwitchIsFinishedAtTheNextStart) {
    // How far the switch had come: 0 to 4 of its renames (each database aside, then new).
    for (int done = 0; done <= 4; ++done) {
        SCOPED_TRACE(done);
        const QString data = Folder(folder_->filePath(QStringLiteral("d%1").arg(done)), 2);
        ASSERT_TRUE(manager().SetPreference(QStringLiteral("sns-secret-twitter"), "here only"));
        const QString staged = Folder(data + "/.restore-abc123", 7);
        ASSERT_TRUE(QDir(data).mkpath(".restore-killed/x"));  // killed before its switch
        ASSERT_TRUE(done == 0 || QDir(data).mkdir("aside-1"));  // else made by Recover
        ASSERT_TRUE(testdata::WriteFile(data + "/" + DataBackup::kJournalName,
                                        ".restore-abc123\naside-1\n"));
        for (int step = 0; step < done; ++step) {
            const QString name = DataBackup::Entries()[step / 2].name;
            ASSERT_TRUE(step % 2 == 0 ? QFile::rename(data + "/" + name, data + "/aside-1/" + name)
                                      : QFile::rename(staged + "/" + name, data + "/" + name));
        }
        QString error;
        ASSERT_TRUE(DataBackup::Recover(data, &error)) << error.toStdString();
        EXPECT_EQ(Laps(data), 7);
        EXPECT_EQ(Laps(data + "/aside-1"), 2);
        EXPECT_FALSE(testdata::ReadFile(data + "/aside-1/Options.db3").contains("here only"));
        EXPECT_TRUE(Left(data).isEmpty()) << Left(data).join(' ').toStdString();
    }
    const QString data = folder_->filePath("d0");
    ASSERT_TRUE(testdata::WriteFile(data + "/aside-f", ""));  // a file where a folder goes
    for (const QByteArray journal : {"../x\naside-1\n", "x\naside-1\n", ".restore-x\nx\n",
                                     ".restore-x\n", ".restore-x\naside-f\n"}) {
        SCOPED_TRACE(journal.constData());
        ASSERT_TRUE(testdata::WriteFile(data + "/" + DataBackup::kJournalName, journal));
        QString error;
        EXPECT_FALSE(DataBackup::Recover(data, &error));
        EXPECT_TRUE(error.contains(journal.contains("-f") ? "cannot create" : "move it away"))
            << error.toStdString();
    }
}

}  // namespace
