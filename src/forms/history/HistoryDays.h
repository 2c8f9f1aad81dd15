#pragma once

#include "PedometerForm.h"

class CountingEngine;
class DayList;
class HistoryPanel;

// Every day with a lap, newest first, each with its steps; a tap opens that day's
// HistoryDay. Reads the days (PedometerDBManager::GetAllDays) when it appears, and the
// steps of the rows in view (DayList). Writes nothing. Opened from the reports screen
// or by name. GUI thread only.
class HistoryDays : public PedometerForm {
    Q_OBJECT
public:
    // `engine` outlives the screen; the days it opens erase through it.
    explicit HistoryDays(CountingEngine& engine, QWidget* parent = nullptr);

    bool Initialize();
    void OnInitializing() override;
    void FormWillAppear() override;

    DayList* GetList() const { return list_; }

private:
    CountingEngine& engine_;
    void OpenDay(const QDate& day);

    HistoryPanel* panel_ = nullptr;
    DayList* list_ = nullptr;
};
