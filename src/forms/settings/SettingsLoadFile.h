#pragma once

#include <QString>

#include "SettingsScreen.h"

class ReportPopup;
class StatisticsManager;

// Bringing data back in from a file, in the app: Import adds the days, laps or minutes
// of a CSV written by export ("settings-import", as 'pedometer-cli import'), Restore puts
// the databases of a backup back ("settings-restore", as 'pedometer-cli restore').
//
// The file is chosen through FileChooser (the desktop's file dialog or portal). Choosing
// reads it at once and the screen says what would change (an import is run and rolled
// back; a restore names the backup and where the present data goes) before a second row
// does it. Both go through the same storage functions as the command line
// (ActivityCsv::Import, DataBackup::Restore), so they make the same checks, and a popup
// gives the command line's message. A restore is refused while counting; after it the
// settings, goals and body profile are read again and recording goes on in a new lap.
// Opened from "settings-data" or by name. GUI thread only.
class SettingsLoadFile : public SettingsScreen {
    Q_OBJECT
public:
    enum class Mode { Import, Restore };
    static constexpr int ID_CHOOSE = 200;
    static constexpr int ID_CONFIRM = 201;
    static constexpr int ID_POPUP_OK = 202;

    // `statistics` is the counting engine's (null where nothing counts, as in tests).
    explicit SettingsLoadFile(StatisticsManager* statistics, QWidget* parent = nullptr);
    bool Initialize(Mode mode);
    void OnInitializing() override;
    void OnActionPerformed(const QWidget& source, int actionId) override;

    // Takes `path` as the chosen file and works out what it would change.
    void Choose(const QString& path);
    // Imports or restores the chosen file; the message for the user.
    QString Confirm();

    QString GetChosenFile() const { return path_; }
    // What the chosen file would change, or why it cannot be used.
    QString GetPreview() const { return preview_; }
    bool CanConfirm() const { return usable_; }
    ReportPopup* GetPopup() const { return popup_; }

protected:
    QString TitleText() const override;
    void Fill(SettingsPanel& panel) override;

private:
    // Runs the import; with `store` false it is rolled back. False with the message.
    bool RunImport(bool store, QString* message);
    QString Restore();

    StatisticsManager* statistics_;
    Mode mode_ = Mode::Import;
    QString path_;
    QString preview_;
    bool usable_ = false;
    ReportPopup* popup_ = nullptr;
};
