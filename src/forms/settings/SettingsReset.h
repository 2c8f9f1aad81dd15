#pragma once

#include <QDate>
#include <QPointer>
#include <functional>

#include "SettingsScreen.h"

class HistoryConfirmPopup;
class ReportPopup;
class StatisticsManager;
class QDateEdit;

// Erasing what was recorded: the statistics of a range of days the user picks, each
// body measurement series (chest, waist, hips, weight), or everything (all statistics,
// every body measurement and the goal alarm's progress). Every erase first asks,
// saying how much it will remove (days, laps, minute records, measurements).
//
// A range that holds the day the lap being recorded started on (today, or yesterday for
// a lap counting across midnight) also takes that lap: it is dropped with the
// others and a new, empty lap is started at once, so counting goes on and the main
// screen shows zero. Writes through PedometerDBManager (ResetLogs, ResetChest, ...) and
// the statistics manager. Opened by "settings-reset" and the settings menu. GUI thread
// only.
class SettingsReset : public SettingsScreen {
    Q_OBJECT
public:
    static constexpr int ID_RESET_RANGE = 200;
    static constexpr int ID_RESET_CHEST = 201;
    static constexpr int ID_RESET_WAIST = 202;
    static constexpr int ID_RESET_HIPS = 203;
    static constexpr int ID_RESET_WEIGHT = 204;
    static constexpr int ID_RESET_ALL = 205;
    static constexpr int ID_NOTICE_OK = 206;

    // What erasing the statistics from `from` to `to` (whole days) takes away; a lap that
    // holds nothing yet is not counted.
    struct Extent {
        int days = 0;
        int laps = 0;
        int minutes = 0;
    };
    Extent StatisticsExtent(const QDate& from, const QDate& to) const;
    // Erases the statistics from `from` to `to`; see the class comment for today.
    void EraseStatistics(const QDate& from, const QDate& to);

    // `statistics` (the application's, recording today's lap) outlives the screen.
    explicit SettingsReset(StatisticsManager& statistics, QWidget* parent = nullptr);
    bool Initialize();
    void OnInitializing() override;
    void OnActionPerformed(const QWidget& source, int actionId) override;

    QDateEdit* GetFromField() const { return fromField_; }
    QDateEdit* GetToField() const { return toField_; }
    HistoryConfirmPopup* GetPopup() const { return popup_; }
    ReportPopup* GetNotice() const { return notice_; }

protected:
    QString TitleText() const override;
    void Fill(SettingsPanel& panel) override;

private:
    void Ask(const QString& question, std::function<void()> erase);

    StatisticsManager& statistics_;
    QDate from_;
    QDate to_;
    QPointer<QDateEdit> fromField_;
    QPointer<QDateEdit> toField_;
    HistoryConfirmPopup* popup_ = nullptr;
    ReportPopup* notice_ = nullptr;  // "nothing to erase"
    std::function<void()> erase_;
};
