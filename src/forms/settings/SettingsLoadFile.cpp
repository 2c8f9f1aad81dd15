#include "SettingsLoadFile.h"

#include <QFile>
#include <QFileInfo>

#include "ActivityCsv.h"
#include "AppPaths.h"
#include "DataBackup.h"
#include "FileChooser.h"
#include "CountingEngine.h"
#include "PedometerDBManager.h"
#include "ReportPopup.h"
#include "ScreenDirectory.h"
#include "SettingsPanel.h"
#include "SoundsManager.h"
#include "StatisticsManager.h"
#include "UpdaterThread.h"

namespace {
// The text with each "%@" replaced by the next of `values`.
QString Filled(QString text, const QStringList& values) {
    for (const QString& value : values) {
        const qsizetype at = text.indexOf(QStringLiteral("%@"));
        if (at < 0) break;
        text.replace(at, 2, value);
    }
    return text;
}
}  // namespace

SettingsLoadFile::SettingsLoadFile(StatisticsManager* statistics, QWidget* parent)
    : SettingsScreen(parent), statistics_(statistics) {}

bool SettingsLoadFile::Initialize(Mode mode) {
    mode_ = mode;
    setObjectName(mode == Mode::Import ? QStringLiteral("SettingsImport")
                                       : QStringLiteral("SettingsRestore"));
    return true;
}

void SettingsLoadFile::OnInitializing() {
    SettingsScreen::OnInitializing();
    popup_ = new ReportPopup(this);
    popup_->Initialize(ID_POPUP_OK, Text("settings__ OK"), this);
}

QString SettingsLoadFile::TitleText() const {
    return Text(mode_ == Mode::Import ? "settings__ Import activity" : "settings__ Restore a backup");
}

void SettingsLoadFile::Fill(SettingsPanel& panel) {
    const bool import = mode_ == Mode::Import;
    panel.AddHeader(TitleText());
    panel.AddRowButton(Text(import ? "settings__ Choose a CSV file" : "settings__ Choose a backup file"),
                       ID_CHOOSE, this);
    if (!path_.isEmpty()) {
        panel.AddNote(path_ + QLatin1Char('\n') + preview_, 150);
        if (usable_) {
            panel.AddRowButton(Text(import ? "settings__ Import" : "settings__ Restore"),
                               ID_CONFIRM, this);
        }
    }
    panel.AddNote(Text(import ? "settings__ Import note" : "settings__ Restore note"), 130);
}

bool SettingsLoadFile::RunImport(bool store, QString* message) {
    QFile file(path_);
    const QFileInfo info(path_);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly)) {
        const QString why = !info.exists()  ? Text("settings__ no such file")
                            : info.isDir()  ? Text("settings__ it is a folder")
                            : !info.isFile() ? Text("settings__ not a regular file")
                                             : file.errorString();
        *message = Filled(Text("settings__ Cannot read %@: "), {path_}) + why;
        return false;
    }
    DatabaseConnection& statistics = PedometerDBManager::GetInstance().StatisticsConnection();
    ActivityCsv::ImportResult result;
    QString error;
    bool parsed = false;
    const bool done = statistics.Run([&](SQLite::Database& db) {
        parsed = ActivityCsv::Import(db, file, &result, &error, store);
    });
    if (!done) {
        const DatabaseStatus status = statistics.Status();
        *message = Text("settings__ Nothing was stored: ") +
                   (status.error.isEmpty() ? status.lastFailure : status.error);
        return false;
    }
    if (!parsed) {
        *message = Filled(Text("settings__ %@: %@; nothing was stored"), {path_, error});
        return false;
    }
    const QLocale locale;
    *message = Filled(Text(store ? "settings__ %@: %@ rows, %@ laps added, %@ already present"
                                 : "settings__ %@ rows: %@ laps to add, %@ already here"),
                      (store ? QStringList{path_} : QStringList{}) +
                          QStringList{locale.toString(result.rows),
                                      locale.toString(result.lapsAdded),
                                      locale.toString(result.lapsSkipped)});
    return true;
}

void SettingsLoadFile::Choose(const QString& path) {
    path_ = path;
    if (mode_ == Mode::Import) {
        usable_ = RunImport(false, &preview_);
    } else {
        const QFileInfo info(path_);
        usable_ = info.isFile() && info.isReadable();
        preview_ = usable_ ? Filled(Text("settings__ Replaces all data with the backup of %@."),
                                    {QLocale().toString(info.lastModified(), QLocale::ShortFormat)})
                           : Filled(Text("settings__ Cannot read %@: "), {path_}) +
                                 Text(info.exists() ? "settings__ not a regular file"
                                                    : "settings__ no such file");
    }
    Refill();
}

QString SettingsLoadFile::Restore() {
    StatisticsManager* statistics = statistics_;
    if (statistics != nullptr && statistics->GetStarted()) {
        return Text("settings__ Stop counting before restoring a backup.");
    }
    const QString home = AppPaths::Home();
    if (home.isEmpty()) return AppPaths::HomeError();
    // The recording lap belongs to the databases that go aside; the files are closed
    // before they move and opened again from the restored ones.
    if (statistics != nullptr) {
        if (UpdaterThread* updater = statistics->GetUpdaterThread()) updater->WaitUntilIdle();
        statistics->WillClearData();
    }
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    db.Reopen();
    QString error;
    QString aside;
    const bool restored = DataBackup::Restore(path_, home, &error, &aside);
    db.Reopen();
    db.LoadOptions();
    db.LoadTargets();
    db.LoadBody();
    if (statistics != nullptr) statistics->StartNewLap();
    if (!restored) return error;
    QString message = Filled(Text("settings__ Restored %@ into %@"), {path_, home});
    if (!aside.isEmpty()) {
        message += QLatin1Char('\n') + Filled(Text("settings__ The previous databases are in %@"), {aside});
    }
    return message;
}

QString SettingsLoadFile::Confirm() {
    if (!usable_) return preview_;
    QString message;
    if (mode_ == Mode::Import) {
        RunImport(true, &message);
    } else {
        message = Restore();
    }
    path_.clear();
    preview_.clear();
    usable_ = false;
    Refill();
    return message;
}

void SettingsLoadFile::OnActionPerformed(const QWidget& source, int actionId) {
    switch (actionId) {
        case ID_CHOOSE: {
            SoundsManager::GetInstance().ClickSound();
            const QString path = FileChooser::ChooseFile(
                this, TitleText(),
                mode_ == Mode::Import ? Text("settings__ CSV files (*.csv)")
                                      : Text("settings__ Backups (*.backup)"));
            if (!path.isEmpty()) Choose(path);
            return;
        }
        case ID_CONFIRM:
            SoundsManager::GetInstance().ClickSound();
            popup_->Show(Confirm());
            return;
        case ID_POPUP_OK:
            SoundsManager::GetInstance().ClickSound();
            popup_->hide();
            return;
        default:
            SettingsScreen::OnActionPerformed(source, actionId);
    }
}

PEDOMETER_SCREEN("settings-import", [](CountingEngine& engine, const ScreenRequest&,
                                        QString*) -> PedometerForm* {
    auto* form = new SettingsLoadFile(&engine.Statistics());
    form->Initialize(SettingsLoadFile::Mode::Import);
    return form;
});

PEDOMETER_SCREEN("settings-restore", [](CountingEngine& engine, const ScreenRequest&,
                                         QString*) -> PedometerForm* {
    auto* form = new SettingsLoadFile(&engine.Statistics());
    form->Initialize(SettingsLoadFile::Mode::Restore);
    return form;
});
