#pragma once

#include <QString>

#include "ActivityCsv.h"
#include "SettingsScreen.h"

class ReportPopup;

// Getting the data out from the phone itself: the recorded days, laps or minutes as CSV
// (the files 'pedometer-cli export' writes and 'pedometer-cli import' reads back) and a
// backup of both databases (as 'pedometer-cli backup'; 'pedometer-cli restore' puts it
// back). Each row writes its file at once into the user's documents folder under a dated
// name, an export replacing an earlier one of the same day, a second backup of the day
// getting a name of its own ("-2", "-3", ...); a message says where it went or why it
// could not be written. Two more rows open Import and Restore ("settings-import",
// "settings-restore"). Opened by "settings-data" and the settings menu. GUI thread only.
class SettingsData : public SettingsScreen {
    Q_OBJECT
public:
    static constexpr int ID_EXPORT_DAYS = 200;
    static constexpr int ID_EXPORT_LAPS = 201;
    static constexpr int ID_EXPORT_MINUTES = 202;
    static constexpr int ID_BACKUP = 203;
    static constexpr int ID_POPUP_OK = 204;
    static constexpr int ID_IMPORT = 205;
    static constexpr int ID_RESTORE = 206;

    explicit SettingsData(QWidget* parent = nullptr);
    bool Initialize();
    void OnInitializing() override;
    void OnActionPerformed(const QWidget& source, int actionId) override;

    // Where the files go: the documents folder, or the home folder when there is none.
    QString Folder() const { return folder_; }
    void SetFolder(const QString& folder) { folder_ = folder; }
    ReportPopup* GetPopup() const { return popup_; }

    // Write one file and return the message for the user.
    QString ExportActivity(ActivityCsv::Kind kind);
    QString WriteBackup();

protected:
    QString TitleText() const override;
    void Fill(SettingsPanel& panel) override;

private:
    // The path of today's file named "pedometer-<what>-YYYY-MM-DD.<extension>", with the
    // folder made when missing; empty with `error` when it cannot be made. With `fresh`,
    // a name no file has yet ("...-YYYY-MM-DD-2.<extension>", ...).
    QString TodaysFile(const QString& what, const QString& extension, QString* error,
                       bool fresh = false) const;
    static QString Written(const QString& path);
    static QString NotWritten(const QString& path, const QString& why);

    QString folder_;
    ReportPopup* popup_ = nullptr;
};
