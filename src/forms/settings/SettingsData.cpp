#include "SettingsData.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include "AppPaths.h"
#include "Clock.h"
#include "DataBackup.h"
#include "PedometerDBManager.h"
#include "ReportPopup.h"
#include "ScreenDirectory.h"
#include "SettingsPanel.h"
#include "SoundsManager.h"

SettingsData::SettingsData(QWidget* parent) : SettingsScreen(parent) {
    folder_ = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (folder_.isEmpty()) folder_ = QDir::homePath();
}

bool SettingsData::Initialize() {
    setObjectName(QStringLiteral("SettingsData"));
    return true;
}

void SettingsData::OnInitializing() {
    SettingsScreen::OnInitializing();
    popup_ = new ReportPopup(this);
    popup_->Initialize(ID_POPUP_OK, Text("settings__ OK"), this);
}

QString SettingsData::TitleText() const {
    return Text("settings__ Export and backup");
}

void SettingsData::Fill(SettingsPanel& panel) {
    panel.AddHeader(Text("settings__ Activity as CSV"));
    panel.AddRowButton(Text("settings__ Export days"), ID_EXPORT_DAYS, this);
    panel.AddRowButton(Text("settings__ Export laps"), ID_EXPORT_LAPS, this);
    panel.AddRowButton(Text("settings__ Export minutes"), ID_EXPORT_MINUTES, this);
    panel.AddHeader(Text("settings__ Backup"));
    panel.AddRowButton(Text("settings__ Back up all data"), ID_BACKUP, this);
    panel.AddHeader(Text("settings__ Bring data back"));
    panel.AddRowButton(Text("settings__ Import activity"), ID_IMPORT, this);
    panel.AddRowButton(Text("settings__ Restore a backup"), ID_RESTORE, this);
    panel.AddNote(Text("settings__ Files are written to %@.").replace(QStringLiteral("%@"), folder_),
                  90);
}

QString SettingsData::TodaysFile(const QString& what, const QString& extension, QString* error,
                                 bool fresh) const {
    if (!QDir().mkpath(folder_)) {
        *error = Text("settings__ the folder cannot be made");
        return {};
    }
    const QString stem =
        QStringLiteral("pedometer-%1-%2").arg(what, Clock::Now().date().toString(Qt::ISODate));
    QString path = QDir(folder_).filePath(stem + QLatin1Char('.') + extension);
    for (int n = 2; fresh && QFileInfo::exists(path); ++n) {
        path = QDir(folder_).filePath(QStringLiteral("%1-%2.%3").arg(stem).arg(n).arg(extension));
    }
    return path;
}

QString SettingsData::Written(const QString& path) {
    return Text("settings__ Written to %@").replace(QStringLiteral("%@"), path);
}

QString SettingsData::NotWritten(const QString& path, const QString& why) {
    return Text("settings__ Could not write %@: ").replace(QStringLiteral("%@"), path) + why;
}

QString SettingsData::ExportActivity(ActivityCsv::Kind kind) {
    const QString what = QString::fromLatin1(kind == ActivityCsv::Kind::Days   ? "days"
                                             : kind == ActivityCsv::Kind::Laps ? "laps"
                                                                               : "minutes");
    QString error;
    const QString path = TodaysFile(what, QStringLiteral("csv"), &error);
    if (path.isEmpty()) return NotWritten(folder_, error);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return NotWritten(path, file.errorString());
    DatabaseConnection& statistics = PedometerDBManager::GetInstance().StatisticsConnection();
    qint64 rows = -1;
    const bool read = statistics.Run(
        [&](SQLite::Database& db) { rows = ActivityCsv::Export(db, kind, {}, {}, file); });
    if (!read) {
        const DatabaseStatus& status = statistics.Status();
        return NotWritten(path, status.error.isEmpty() ? status.lastFailure : status.error);
    }
    if (rows < 0 || !file.commit()) return NotWritten(path, file.errorString());
    return Written(path);
}

QString SettingsData::WriteBackup() {
    QString error;
    const QString path =
        TodaysFile(QStringLiteral("backup"), QStringLiteral("backup"), &error, true);
    if (path.isEmpty()) return NotWritten(folder_, error);
    const QString home = AppPaths::Home();
    if (home.isEmpty()) return NotWritten(path, AppPaths::HomeError());
    // Opening both databases makes a missing one (a folder filled by an import holds only
    // the statistics), so that the backup has both to copy.
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    db.OptionsStatus();
    db.StatisticsStatus();
    if (!DataBackup::Backup(home, path, &error)) return NotWritten(path, error);
    return Written(path);
}

void SettingsData::OnActionPerformed(const QWidget& source, int actionId) {
    switch (actionId) {
        case ID_EXPORT_DAYS:
        case ID_EXPORT_LAPS:
        case ID_EXPORT_MINUTES: {
            SoundsManager::GetInstance().ClickSound();
            const ActivityCsv::Kind kind = actionId == ID_EXPORT_DAYS   ? ActivityCsv::Kind::Days
                                           : actionId == ID_EXPORT_LAPS ? ActivityCsv::Kind::Laps
                                                                        : ActivityCsv::Kind::Minutes;
            popup_->Show(ExportActivity(kind));
            return;
        }
        case ID_BACKUP:
            SoundsManager::GetInstance().ClickSound();
            popup_->Show(WriteBackup());
            return;
        case ID_IMPORT:
        case ID_RESTORE:
            SoundsManager::GetInstance().ClickSound();
            Open(actionId == ID_IMPORT ? QStringLiteral("settings-import")
                                       : QStringLiteral("settings-restore"));
            return;
        case ID_POPUP_OK:
            SoundsManager::GetInstance().ClickSound();
            popup_->hide();
            return;
        default:
            SettingsScreen::OnActionPerformed(source, actionId);
    }
}

PEDOMETER_SCREEN("settings-data", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* form = new SettingsData;
    form->Initialize();
    return form;
});
