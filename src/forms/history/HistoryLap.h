#pragma once

#include <memory>

#include "PedometerForm.h"

class CountingEngine;
class DAOLap;
class HistoryConfirmPopup;
class HistoryPanel;

// One lap of history: the per-minute graphs, totals and averages of the lap it is
// given, taking steps away from it (DayCorrect), and the reset of that lap (the removal,
// for a lap entered by hand). The erase deletes the lap, or empties it when it is
// the one being recorded now, and goes back to the day. Opened from a lap button of
// HistoryDay, or by name with a lap id. GUI thread only.
class HistoryLap : public PedometerForm {
    Q_OBJECT
public:
    static constexpr int ID_RESET = 50;  // HistoryConfirmPopup::ID_RESET
    static constexpr int ID_TAKE_AWAY = 30;  // opens DayCorrect for the lap

    // `engine` (the lap being recorded) outlives the screen.
    explicit HistoryLap(CountingEngine& engine, QWidget* parent = nullptr);
    ~HistoryLap() override;

    // Takes the lap with its minutes. Always true.
    bool Initialize(std::unique_ptr<DAOLap> lap);
    void OnInitializing() override;
    void FormWillAppear() override;
    void OnActionPerformed(const QWidget& source, int actionId) override;
    void ShowPopupWithText(const QString& text);

    const DAOLap* GetLap() const { return lap_.get(); }
    HistoryPanel* GetPanel() const { return panel_; }
    HistoryConfirmPopup* GetPopup() const { return popup_; }

private:
    CountingEngine& engine_;
    std::unique_ptr<DAOLap> lap_;
    HistoryPanel* panel_ = nullptr;
    HistoryConfirmPopup* popup_ = nullptr;
};
