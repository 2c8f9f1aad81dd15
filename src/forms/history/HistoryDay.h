#pragma once

#include <QDateTime>
#include <memory>
#include <vector>

#include "PedometerForm.h"

class CountingEngine;
class DAOLap;
class HistoryConfirmPopup;
class HistoryPanel;
class HourlyChart;

// One calendar day of history: per-minute graphs of calories, speed and pace over all
// the day's laps, the day's totals and averages, its steps by the hour (a tap on a bar
// tells that hour's figures), a button per lap (newest first; today's
// last reads "Current"; laps entered by hand are marked with their steps) that opens its
// HistoryLap, the correction of the day (DayCorrect), and the reset of the whole day.
//
// Reads the day's laps with their minutes (PedometerDBManager::GetLapsForDate) each time
// it appears, so the figures follow the database. Writes only through the erase: every
// lap of the day is deleted except the one being recorded now, which is emptied through
// the statistics manager and keeps recording. Opened by the main screen's History entry
// (today, with the Reports soft key) and by the all-days list. GUI thread only.
class HistoryDay : public PedometerForm {
    Q_OBJECT
public:
    static constexpr int ID_REPORTS = 20;
    static constexpr int ID_CORRECT = 30;  // opens DayCorrect for the day
    static constexpr int ID_RESET = 50;  // HistoryConfirmPopup::ID_RESET
    static constexpr int ID_LAP_FIRST = 1000;  // + index in the day's list

    // `engine` (the lap being recorded) outlives the screen.
    explicit HistoryDay(CountingEngine& engine, QWidget* parent = nullptr);
    ~HistoryDay() override;

    // The day to show (any time of it). `useParametersForm` chooses the plain layout of
    // the body screens' variant; both look the same here. Always true.
    bool Initialize(const QDateTime& day, bool useParametersForm = false);
    void OnInitializing() override;
    void FormWillAppear() override;
    void OnActionPerformed(const QWidget& source, int actionId) override;
    void ShowPopupWithText(const QString& text);

    bool IsToday() const;
    const std::vector<std::unique_ptr<DAOLap>>& GetLaps() const { return laps_; }
    HistoryPanel* GetPanel() const { return panel_; }
    HistoryConfirmPopup* GetPopup() const { return popup_; }
    // Null when the day has no minute to show.
    HourlyChart* GetHourlyChart() const { return hourlyChart_; }

private:
    void Erase();

    CountingEngine& engine_;
    QDateTime day_;
    std::vector<std::unique_ptr<DAOLap>> laps_;
    HistoryPanel* panel_ = nullptr;
    HourlyChart* hourlyChart_ = nullptr;  // owned by the panel's content
    HistoryConfirmPopup* popup_ = nullptr;
};
