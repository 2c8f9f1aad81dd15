#include "ReportForm.h"

#include <QDir>
#include <QFile>
#include <QMenu>
#include <QTest>

#include "BodyCsvExport.h"
#include "BodyTestSupport.h"
#include "Clock.h"
#include "DocumentsFolder.h"
#include "FakeMailProgram.h"
#include "PedometerOptions.h"
#include "ReportPopup.h"
#include "SnsGateway.h"
#include "TestData.h"

namespace {

TEST(BodyReportTableTest, EachColumnTakesTheNewestNonZeroValueOnOrBeforeItsDay) {
    const QDate today(2026, 6, 15);
    for (const QByteArrayList& c : testdata::Table("body-report-columns.tsv")) {
        SCOPED_TRACE(c[0].toStdString());
        std::vector<DAOBodyLog> logs;
        for (const QByteArray& log : c[1].split('|')) {
            if (log.isEmpty()) continue;
            logs.emplace_back();
            logs.back().logDate = today.addDays(-log.split(':')[0].toInt()).startOfDay();
            logs.back().chest = log.split(':')[1].toDouble();
        }
        const auto table = BodyReportTable::FromLogs(logs, today);
        for (int column = 0; column < 4; ++column) {
            EXPECT_EQ(table.Value(0, column),
                      c[2 + column] == "-" ? BodyReportTable::kNoValue : c[2 + column].toDouble());
        }
        EXPECT_EQ(table.Value(BodyReportTable::WEIGHT, 0), BodyReportTable::kNoValue);
    }
}

// Mail goes to a fake mail program.
class ReportFormTest : public BodyScreenTest {
protected:
    void SetUp() override {
        BodyScreenTest::SetUp();
        ASSERT_TRUE(mail.IsValid());
    }
    ReportForm& Open() {
        auto* form = new ReportForm;
        form->Initialize();
        return *Push(form);
    }
    static void SetAddresses(const QString& share, const QString& exportTo) {
        DAOSocial social;
        social.share = share;
        social.export_ = exportTo;
        PedometerDBManager::GetInstance().SetSocial(social);
    }
    static void WaitUntilSent(ReportForm& form) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return !form.IsSending(); }, 10000));
    }

    FakeMailProgram mail;
};

TEST_F(ReportFormTest, TapsBuildShareTextsFilledFromTheLastPlaceholderInTheUsersUnits) {
    AddLog(40, 80, 100, 90, 0);
    AddLog(7, 0, 95, 0, 0);
    AddLog(0, 72.5, 94, 0, 0);
    for (const QByteArrayList& c : testdata::Table("report-share-texts.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        PedometerOptions::GetInstance().measurementSystem = c[0] == "1";
        const int actionId = c[2].toInt() + (c[1] == "cell"  ? ReportForm::ID_CELL
                                             : c[1] == "row" ? ReportForm::ID_ROW_HEAD
                                                             : ReportForm::ID_COLUMN_HEAD);
        ReportForm& form = Open();
        auto* area = form.findChild<QWidget*>(QStringLiteral("tap%1").arg(actionId));
        ASSERT_NE(area, nullptr);
        QTest::mouseClick(area, Qt::LeftButton, {}, area->rect().center());
        EXPECT_EQ(form.GetShareText(), QString::fromUtf8(c[3]));
        ASSERT_NE(form.GetContextMenu(), nullptr);
        form.GetContextMenu()->hide();
        navigation->PopForm();
    }
}

TEST_F(ReportFormTest, EmailAndExportGoToTheirAddressesOrLeadToTheSocialSettings) {
    ReportForm& form = Open();
    form.OnActionPerformed(form, ReportForm::ID_CELL);
    form.OnActionPerformed(form, ReportForm::ID_EMAIL);
    EXPECT_TRUE(form.GetOkPopup()->isVisible());
    EXPECT_EQ(form.GetOkPopup()->GetText(),
              "Please enter the e-mail address to share with in the social settings first.");
    EXPECT_EQ(form.GetOkTarget(), ReportForm::TARGET_SOCIAL_SETTINGS);
    form.OnActionPerformed(form, ReportForm::ID_EXPORT);
    EXPECT_EQ(form.GetOkPopup()->GetText(),
              "Please enter the e-mail address for exports in the social settings first.");
    EXPECT_FALSE(form.IsSending());

    SetAddresses("share@example.org", "export@example.org");
    form.OnActionPerformed(form, ReportForm::ID_EMAIL);
    EXPECT_TRUE(form.IsSending());
    form.OnActionPerformed(form, ReportForm::ID_EXPORT);  // ignored while sending
    WaitUntilSent(form);
    EXPECT_EQ(mail.Arguments(),
              (QStringList{"--subject", "Message from my pedometer", "--body",
                           "My pedometer: current chest size: -(cm)", "share@example.org"}));
    EXPECT_EQ(form.GetOkPopup()->GetText(), "Message sent.");
    EXPECT_EQ(form.GetOkTarget(), ReportForm::TARGET_NONE);

    form.OnActionPerformed(form, ReportForm::ID_EXPORT);
    WaitUntilSent(form);
    EXPECT_EQ(mail.Arguments(),
              (QStringList{"--subject", "Exported data from my pedometer", "--body",
                           "The exported data is attached as a CSV file.", "--attach",
                           BodyCsvExport::DefaultPath(), "export@example.org"}));
    QFile csv(BodyCsvExport::DefaultPath());
    ASSERT_TRUE(csv.open(QIODevice::ReadOnly));
    EXPECT_EQ(csv.readAll(), ";\nChest (cm);\nWaist (cm);\nHips (cm);\nWeight (kg);\n");
    // An export that cannot be written attaches nothing, not an older file.
    ASSERT_TRUE(csv.remove() && QDir().mkdir(BodyCsvExport::DefaultPath()));
    form.OnActionPerformed(form, ReportForm::ID_EXPORT);
    WaitUntilSent(form);
    EXPECT_FALSE(mail.Arguments().contains("--attach"));
}

// A mail program that fails, or none at all: the CSV or the text goes into the documents
// folder under a name of its own, and the folder is shown.
TEST_F(ReportFormTest, WithoutAMailProgramTheTextOrCsvIsSavedIntoTheDocumentsFolder) {
    const auto documents = testdata::MakeTempDir();
    QList<QUrl> shown;
    DocumentsFolder::SetForTesting(documents->path(),
                                   [&](const QUrl& folder) { return (shown << folder, true); });
    SetAddresses("share@example.org", "export@example.org");
    ReportForm& form = Open();
    form.OnActionPerformed(form, ReportForm::ID_CELL);
    const QString day = Clock::Now().date().toString(Qt::ISODate);
    const struct {
        bool failing;  // a mail program that fails, else none
        int actionId;
        const char* offer;
        QString file;
        QByteArray contents;
    } cases[] = {
        {true, ReportForm::ID_EXPORT, "the CSV file", "pedometer-body-" + day + ".csv",
         ";\nChest (cm);\nWaist (cm);\nHips (cm);\nWeight (kg);\n"},
        {false, ReportForm::ID_EMAIL, "the text", "pedometer-report-" + day + ".txt",
         "My pedometer: current chest size: -(cm)\n"},
        {false, ReportForm::ID_EMAIL, "the text", "pedometer-report-" + day + "-2.txt",
         "My pedometer: current chest size: -(cm)\n"},
    };
    for (const auto& c : cases) {
        if (c.failing) qputenv("FAKE_XDG_EMAIL_EXIT", "3");
        else mail.Remove();
        form.OnActionPerformed(form, c.actionId);
        WaitUntilSent(form);
        EXPECT_EQ(form.GetSavePopup()->GetText(),
                  QStringLiteral("No mail program found.\nSave %1 into your documents folder?")
                      .arg(QLatin1String(c.offer)));
        form.OnActionPerformed(form, ReportForm::ID_SAVE_DOCUMENTS);
        const QString path = documents->path() + '/' + c.file;
        EXPECT_EQ(form.GetOkPopup()->GetText(), "Saved as " + path);
        QFile saved(path);
        ASSERT_TRUE(saved.open(QIODevice::ReadOnly)) << c.file.toStdString();
        EXPECT_EQ(saved.readAll(), c.contents);
        EXPECT_EQ(shown.takeLast(), QUrl::fromLocalFile(documents->path()));
    }
    DocumentsFolder::SetForTesting({}, {});
}

// Twitter's sign-in goes to a port on this machine where nothing listens: the user reads
// why it failed instead of waiting, and the answers of a later post reach the popup too.
TEST_F(ReportFormTest, ASignInThatCannotReachTheProviderSaysSo) {
    SnsGateway& gateway = SnsGateway::GetInstance();
    gateway.Reset(SnsTokenStore::Backend::Options);
    gateway.SetEndpoints(
        QStringLiteral("twitter"),
        SnsEndpoints::Twitter().Rebased(QUrl(QStringLiteral("http://127.0.0.1:1"))));
    ReportForm& form = Open();
    gateway.SetListener(nullptr);  // as the social sign-in screen leaves it when it closes
    form.OnActionPerformed(form, ReportForm::ID_CELL + 1);
    form.OnActionPerformed(form, ReportForm::ID_TWITTER);
    EXPECT_TRUE(QTest::qWaitFor([&] { return form.GetOkPopup()->isVisible(); }, 10000));
    EXPECT_TRUE(form.GetOkPopup()->GetText().contains("Twitter"))
        << form.GetOkPopup()->GetText().toStdString();
    form.OnMySnsStatusTextUpdated(1, "twitter", true, {}, {});
    EXPECT_EQ(form.GetOkPopup()->GetText(), "Posted.");
    form.OnMySnsStatusTextUpdated(1, "twitter", false, "429", "Too many posts");
    EXPECT_EQ(form.GetOkPopup()->GetText(), "Too many posts");
    form.OnSnsLoggedInStatusReceived(2, "twitter", false, false, "401", "Token expired");
    EXPECT_EQ(form.GetOkPopup()->GetText(), "Token expired");
    form.OnActionPerformed(form, ReportForm::ID_POPUP_OK);
    EXPECT_FALSE(form.GetOkPopup()->isVisible());
}

}  // namespace
