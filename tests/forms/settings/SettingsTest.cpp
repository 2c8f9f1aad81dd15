#include <QDateEdit>
#include <QLineEdit>
#include <QMap>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include "../../storage/StorageTestSupport.h"
#include "../body/BodyTestSupport.h"
#include "AccelerometerSource.h"
#include "Body.h"
#include "Clock.h"
#include "CountingEngine.h"
#include "DAOLap.h"
#include "DAOLapMinutes.h"
#include "DAOSocial.h"
#include "FileChooser.h"
#include "HistoryConfirmPopup.h"
#include "MainForm.h"
#include "Pedometer.h"
#include "PedometerOptions.h"
#include "QuorPedometer.h"
#include "ReportPopup.h"
#include "ScreenDirectory.h"
#include "SensitivitySlider.h"
#include "SettingsData.h"
#include "SettingsHeight.h"
#include "SettingsLoadFile.h"
#include "SettingsProfile.h"
#include "SettingsReset.h"
#include "SettingsSocial.h"
#include "SettingsSocialLogin.h"
#include "SnsGateway.h"
#include "StatisticsManager.h"
#include "TestData.h"
#include "TivButton.h"
#include "TivLabel.h"
#include "UpdaterThread.h"
#include "VirtualTime.h"

namespace {

// The row button reporting `id`, and the value it shows.
TivButton* Row(QWidget& form, int id) {
    return form.findChild<TivButton*>(QStringLiteral("action%1").arg(id));
}
QString RowValue(QWidget& form, int id) {
    auto* label = form.findChild<TivLabel*>(QStringLiteral("value%1").arg(id));
    return label != nullptr ? label->GetText() : QStringLiteral("<no row>");
}

using SettingsTest = BodyScreenTest;

// Stores one lap of a minute from `start`, with `steps` steps unless there are none.
void ImportLap(const QDateTime& start, int steps) {
    std::vector<std::unique_ptr<DAOLap>> laps;
    laps.push_back(storagetest::MakeLap(start, steps > 0 ? 1 : 0, steps));
    laps[0]->endDate = start.addSecs(60);
    ASSERT_TRUE(PedometerDBManager::GetInstance().ImportHistory(laps, {}));
}

// A height typed in either unit system is stored in cm and shown back as typed; inches
// above 11 carry into the feet.
TEST_F(SettingsTest, HeightEntryRoundTripsInBothUnitSystems) {
    for (const QByteArrayList& c : testdata::Table("height-entries.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        const QStringList typed = QString::fromUtf8(c[1]).split('|');
        Body::GetInstance().clear();
        PedometerOptions::GetInstance().measurementSystem = c[0] == "1";
        auto* height = new SettingsHeight;
        height->Initialize();
        Push(height);
        ASSERT_EQ(height->GetFields().size(), typed.size());
        for (int i = 0; i < typed.size(); ++i) height->GetFields()[i]->setText(typed[i]);
        height->OnActionPerformed(*height, BodyEntryForm::ID_SAVE);
        QCoreApplication::processEvents();
        PedometerDBManager::GetInstance().LoadBody();
        EXPECT_NEAR(Body::GetInstance().storedHeight(), c[2].toDouble(), 1e-9);

        auto* profile = new SettingsProfile;
        profile->Initialize();
        Push(profile);
        EXPECT_EQ(RowValue(*profile, SettingsProfile::ID_HEIGHT), QString::fromUtf8(c[3]));
        navigation->PopForm(true);
        QCoreApplication::processEvents();
    }
}

// Step lengths show the automatic value until one is entered; the last row puts them
// back to automatic, in the profile that is stored.
TEST_F(SettingsTest, StepLengthsFollowTheHeightUntilSetAndGoBackToAutomatic) {
    Body& body = Body::GetInstance();
    body.clear();
    body.setMen(1);
    body.setJogStepSize(0.9);
    auto* profile = new SettingsProfile;
    profile->Initialize();
    Push(profile);
    EXPECT_EQ(RowValue(*profile, SettingsProfile::ID_WALK_STEP), "auto 71.4 cm");
    EXPECT_EQ(RowValue(*profile, SettingsProfile::ID_JOG_STEP), "90.0 cm");
    Click(Row(*profile, SettingsProfile::ID_SEX));
    EXPECT_FALSE(body.isMen());
    Click(Row(*profile, SettingsProfile::ID_AUTO_STEPS));
    PedometerDBManager::GetInstance().LoadBody();
    EXPECT_EQ(body.storedJogStepSize(), -1.0);
    EXPECT_EQ(body.storedMen(), 0);
    EXPECT_EQ(RowValue(*profile, SettingsProfile::ID_JOG_STEP), "auto 106.6 cm");
}

// Slider positions stand for the detector's thresholds by the body model's formulas,
// both ways, and a drag stores the threshold.
TEST_F(SettingsTest, SliderPositionsMatchTheDetectorsThresholds) {
    for (int gait = 1; gait <= 3; ++gait) {
        for (int position : {0, 1, 37, 50, 99, 100}) {
            EXPECT_EQ(SensitivitySlider::PositionFor(
                          gait, SensitivitySlider::ThresholdFor(gait, position)),
                      position)
                << "gait " << gait;
        }
        EXPECT_EQ(SensitivitySlider::PositionFor(gait, -5.0), 0);
        EXPECT_EQ(SensitivitySlider::PositionFor(gait, 50.0), 100);
    }
    SensitivitySlider run(3, nullptr);
    run.resize(480, 90);
    run.Initialize();
    run.SliderValueChanged(80);
    PedometerDBManager::GetInstance().LoadBody();
    EXPECT_DOUBLE_EQ(Body::GetInstance().getRunCoef(), (0.8 * 3.3 + 1.1) * 0.5);
}

TEST_F(SettingsTest, OnlyPlausibleAddressesAreSaved) {
    for (const QByteArrayList& c : testdata::Table("email-addresses.tsv")) {
        EXPECT_EQ(SettingsSocial::IsPlausibleAddress(QString::fromUtf8(c[0])), c[1] == "1")
            << c[0].toStdString();
    }
    auto* social = new SettingsSocial;
    social->Initialize();
    Push(social);
    social->GetExportField()->setText(QStringLiteral("export@example.org"));
    social->GetShareField()->setText(QStringLiteral("not an address"));
    Click(Row(*social, SettingsSocial::ID_SAVE));
    EXPECT_TRUE(social->GetPopup()->isVisible());
    EXPECT_TRUE(PedometerDBManager::GetInstance().GetDAOSocialN()->export_.isEmpty());
    EXPECT_EQ(social->GetShareField()->text(), QStringLiteral("not an address"));  // kept

    social->GetShareField()->setText(QStringLiteral(" share@example.org "));
    EXPECT_TRUE(social->SaveAddresses());
    const auto stored = PedometerDBManager::GetInstance().GetDAOSocialN();
    EXPECT_EQ(stored->export_, QStringLiteral("export@example.org"));
    EXPECT_EQ(stored->share, QStringLiteral("share@example.org"));
}

// Each export row writes today's file with what is recorded, the backup row a backup
// file, and the message names the file; a folder that cannot be made is reported.
TEST_F(SettingsTest, ExportAndBackupRowsWriteTodaysFilesAndSayWhere) {
    ImportLap(QDateTime(QDate(2026, 6, 14), QTime(8, 0)), 120);
    PedometerDBManager::GetInstance().SaveOptions();  // a backup holds both databases

    auto* data = new SettingsData;
    data->Initialize();
    Push(data);
    QTemporaryDir dir;
    data->SetFolder(dir.filePath(QStringLiteral("exports")));
    const QMap<QByteArray, int> rows{{"days", SettingsData::ID_EXPORT_DAYS},
                                     {"laps", SettingsData::ID_EXPORT_LAPS},
                                     {"minutes", SettingsData::ID_EXPORT_MINUTES},
                                     {"backup", SettingsData::ID_BACKUP}};
    for (const QByteArrayList& c : testdata::Table("data-exports.tsv")) {
        SCOPED_TRACE(c[1].toStdString());
        Click(Row(*data, rows.value(c[0])));
        const QString path = dir.filePath(QStringLiteral("exports/") + c[1]);
        EXPECT_TRUE(data->GetPopup()->isVisible());
        EXPECT_EQ(data->GetPopup()->GetText().toStdString(), "Written to " + path.toStdString());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray written = file.readAll();
        EXPECT_TRUE(written.contains(c[2])) << written.left(300).toStdString();
        data->OnActionPerformed(*data, SettingsData::ID_POPUP_OK);
        EXPECT_FALSE(data->GetPopup()->isVisible());
    }
    data->SetFolder(dir.filePath(QStringLiteral("exports/pedometer-days-2026-06-15.csv/sub")));
    EXPECT_TRUE(data->ExportActivity(ActivityCsv::Kind::Days).startsWith("Could not write"));
    EXPECT_TRUE(data->WriteBackup().startsWith("Could not write"));
}

// Import and Restore take the file the chooser gives, say what would change, and do it
// only when confirmed, with the command line's messages.
TEST_F(SettingsTest, ImportAndRestoreAFileChosenInTheApp) {
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    ImportLap(QDateTime(QDate(2026, 6, 14), QTime(8, 0)), 120);
    QTemporaryDir dir;
    auto* data = new SettingsData;
    data->Initialize();
    Push(data);
    data->SetFolder(dir.path());
    const QString csv = dir.filePath("pedometer-laps-2026-06-15.csv");
    const QString backup = dir.filePath("pedometer-backup-2026-06-15.backup");
    ASSERT_EQ(data->ExportActivity(ActivityCsv::Kind::Laps), "Written to " + csv);
    ASSERT_EQ(data->WriteBackup(), "Written to " + backup);
    db.ResetLogs(QDate(2026, 6, 1).startOfDay(), QDate(2026, 6, 30).startOfDay());
    DAOTarget changed;
    changed.calories = 999;
    db.SaveTagets(changed);

    QString chosen;
    FileChooser::SetForTesting([&](QWidget*, const QString&, const QString&) { return chosen; });
    const auto load = [&](SettingsLoadFile::Mode mode, const QString& file) {
        auto* screen = new SettingsLoadFile(nullptr);
        screen->Initialize(mode);
        Push(screen);
        chosen = file;
        Click(Row(*screen, SettingsLoadFile::ID_CHOOSE));
        return screen;
    };
    SettingsLoadFile* import = load(SettingsLoadFile::Mode::Import, dir.filePath("none.csv"));
    EXPECT_EQ(import->GetPreview(), "Cannot read " + dir.filePath("none.csv") + ": no such file");
    EXPECT_EQ(Row(*import, SettingsLoadFile::ID_CONFIRM), nullptr);
    chosen = csv;
    Click(Row(*import, SettingsLoadFile::ID_CHOOSE));
    EXPECT_EQ(import->GetPreview(), "1 rows: 1 laps to add, 0 already here");
    EXPECT_TRUE(db.GetAllDays().empty()) << "nothing stored before the confirmation";
    Click(Row(*import, SettingsLoadFile::ID_CONFIRM));
    EXPECT_EQ(import->GetPopup()->GetText(), csv + ": 1 rows, 1 laps added, 0 already present");
    EXPECT_EQ(db.GetDayTotals(QDate(2026, 6, 14), QDate(2026, 6, 14)).at(0).steps, 120);

    SettingsLoadFile* restore = load(SettingsLoadFile::Mode::Restore, backup);
    ASSERT_TRUE(restore->CanConfirm());
    Click(Row(*restore, SettingsLoadFile::ID_CONFIRM));
    EXPECT_TRUE(restore->GetPopup()->GetText().startsWith("Restored " + backup + " into "));
    EXPECT_TRUE(restore->GetPopup()->GetText().contains("The previous databases are in "));
    EXPECT_EQ(DAOTarget::GetInstance().calories, 300) << "the goals are read again";
    FileChooser::SetForTesting({});
}

// Signing out of a network that accepts the stored token forgets the token.
TEST_F(SettingsTest, SigningOutRemovesTheStoredToken) {
    QTcpServer provider;  // answers every request with 200: the token is good
    ASSERT_TRUE(provider.listen(QHostAddress::LocalHost));
    QObject::connect(&provider, &QTcpServer::newConnection, [&provider] {
        QTcpSocket* socket = provider.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket] {
            socket->readAll();
            socket->write("HTTP/1.1 200 OK\r\nContent-Length: 2\r\nConnection: close\r\n\r\n{}");
            socket->disconnectFromHost();
        });
    });
    SnsGateway& gateway = SnsGateway::GetInstance();
    gateway.Reset(SnsTokenStore::Backend::Options);
    gateway.SetEndpoints(QStringLiteral("twitter"),
                         SnsEndpoints::Twitter().Rebased(QUrl(
                             QStringLiteral("http://127.0.0.1:%1").arg(provider.serverPort()))));
    gateway.AddAuthResult(QStringLiteral("twitter"),
                          {QStringLiteral("key"), QStringLiteral("secret")});
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    ASSERT_FALSE(db.GetPreference(QStringLiteral("sns-secret-twitter")).isEmpty());

    auto* login = new SettingsSocialLogin;
    login->Initialize();
    Push(login);
    ASSERT_TRUE(QTest::qWaitFor([&] {
        return login->GetState(QStringLiteral("twitter")) == SettingsSocialLogin::State::SignedIn;
    }));
    const int row = SettingsSocialLogin::ID_FIRST_PROVIDER +
                    int(gateway.Providers().indexOf(QStringLiteral("twitter")));
    Click(Row(*login, row));
    EXPECT_EQ(login->GetState(QStringLiteral("twitter")), SettingsSocialLogin::State::SignedOut);
    EXPECT_TRUE(db.GetPreference(QStringLiteral("sns-secret-twitter")).isEmpty());
    gateway.Reset(SnsTokenStore::Backend::Options);
}

// With the running application: a reset of a range holding today erases the laps of
// the range, the recording one included, and records on in a new empty lap that the
// main screen shows (a lap that holds nothing is not offered for erasing); reset all takes
// every lap and the body log; the detector choice switches the running engine.
TEST_F(SettingsTest, ResetOfARangeWithTodayAndDetectorChoiceActOnTheRunningApp) {
    AddLog(1, 80.0, 0.0, 0.0, 0.0);
    ImportLap(QDateTime(QDate(2026, 6, 13), QTime(8, 0)), 0);
    ImportLap(QDateTime(QDate(2026, 6, 6), QTime(8, 0)), 90);
    PedometerDBManager& db = PedometerDBManager::GetInstance();

    Pedometer app;
    app.Engine().UseSensorSource(nullptr);
    app.OnAppInitializing();
    MainForm& main = *app.GetMainForm();
    StatisticsManager& statistics = app.Engine().Statistics();
    statistics.start();
    for (int i = 0; i < 12; ++i) statistics.addStep(1);

    auto* reset = new SettingsReset(statistics);
    reset->Initialize();
    app.GetNavigationController()->PushForm(reset);
    reset->GetFromField()->setDate(QDate(2026, 6, 12));
    Click(Row(*reset, SettingsReset::ID_RESET_RANGE));
    // The empty lap of the 13th is not counted; the recording lap's unstored steps are.
    EXPECT_EQ(reset->GetPopup()->GetText(), "Erase 1 day with 1 lap and 0 minute records?");
    VirtualTime::AdvanceBy(5000);  // one stored interval: a distance and a time shown
    statistics.GetUpdaterThread()->WaitUntilIdle();
    QCoreApplication::processEvents();
    ASSERT_NE(main.GetTopValueText(1), QStringLiteral("0.000"));
    reset->OnActionPerformed(*reset, HistoryConfirmPopup::ID_CONFIRM);
    QCoreApplication::processEvents();
    Click(Row(*reset, SettingsReset::ID_RESET_RANGE));  // only the new, empty lap is left
    EXPECT_EQ(reset->GetNotice()->GetText(), "Nothing was recorded on these days.");
    reset->OnActionPerformed(*reset, SettingsReset::ID_NOTICE_OK);  // what covered the rows

    const auto left =
        db.GetLapsForPeriod(QDate(2026, 6, 1).startOfDay(), QDate(2026, 6, 15).startOfDay());
    ASSERT_EQ(left.size(), 2u);  // the lap of nine days ago and the new one
    EXPECT_EQ(left[0]->startDate.date(), QDate(2026, 6, 6));
    EXPECT_EQ(left[1]->id, statistics.GetCurrentLap()->id);
    EXPECT_EQ(statistics.GetLapSteps(), 0);
    const QStringList zeros{"0", "0.000", "0.0", "00:00", "0.0", "0.0"};
    for (int value = 0; value < 6; ++value) EXPECT_EQ(main.GetTopValueText(value), zeros[value]);
    EXPECT_TRUE(statistics.GetStarted());
    // After midnight the recording lap still belongs to the day it started on.
    Clock::SetNow(QDateTime(QDate(2026, 6, 16), QTime(0, 30)));
    reset->EraseStatistics(QDate(2026, 6, 15), QDate(2026, 6, 15));
    ASSERT_NE(statistics.GetCurrentLap(), nullptr);
    const auto recording = db.GetLap(int(statistics.GetCurrentLap()->id));
    ASSERT_NE(recording, nullptr);
    EXPECT_EQ(recording->startDate.date(), QDate(2026, 6, 16));
    Click(Row(*reset, SettingsReset::ID_RESET_ALL));  // the new lap is empty
    EXPECT_TRUE(reset->GetPopup()->GetText().contains(": 1 day with 1 lap and 1 minute record,"));
    reset->OnActionPerformed(*reset, HistoryConfirmPopup::ID_CONFIRM);
    EXPECT_EQ(db.GetLapsForPeriod(QDate(2026, 6, 1).startOfDay(), Clock::Now()).size(), 1u);
    Click(Row(*reset, SettingsReset::ID_RESET_WEIGHT));  // reset all took the weights too
    EXPECT_EQ(reset->GetPopup()->GetText(), "Erase 0 weight measurements?");

    const int before = int(app.Engine().Detector().SelectedDetector());
    ScreenDirectory::Open(QStringLiteral("settings-sensitivity"), *app.GetNavigationController());
    auto* sensitivity = app.GetNavigationController()->GetTopForm();
    Click(Row(*sensitivity, 200));
    EXPECT_NE(int(app.Engine().Detector().SelectedDetector()), before);
    EXPECT_EQ(db.GetPreference(QStringLiteral("detector")),
              before == int(DetectorKind::Classic) ? "adaptive" : "classic");
    statistics.stop();
    app.OnAppTerminating();
}

}  // namespace
