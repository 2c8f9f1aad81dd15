#pragma once

#include <QDateTime>
#include <QPointer>
#include <memory>

#include "PedometerForm.h"

class DAOLap;
class GoalFieldRow;
class QLineEdit;
class TivLabel;

// Corrects one day of history by hand. For a day it adds steps walked without the
// phone: tabs choose the gait, and either the steps or the distance is entered (each
// follows the other by the gait's step length), with the hour the walk started. For a
// lap it takes counted steps away (steps counted in a car); a second take-away from the
// same lap replaces the first. The summary line says what will change.
//
// Reads the day's laps and the body profile; the soft key stores the correction as a
// manual lap (DayCorrection, PedometerDBManager::ImportHistory) and goes back. Opened
// from the day screen and the lap screen, or by name: "day-correct" with --day (add)
// or --lap (take away). GUI thread only.
class DayCorrect : public PedometerForm {
    Q_OBJECT
public:
    static constexpr int ID_WALK = 101;  // gait = id - 100
    static constexpr int ID_JOG = 102;
    static constexpr int ID_RUN = 103;
    static constexpr int ID_SAVE = 110;

    explicit DayCorrect(QWidget* parent = nullptr);
    ~DayCorrect() override;

    // Adds to `day` (any time of it). Always true.
    bool InitializeForDay(const QDate& day);
    // Takes away from `lap`, a counted one; false for a lap entered by hand.
    bool InitializeForLap(std::unique_ptr<DAOLap> lap);
    void OnInitializing() override;
    void OnActionPerformed(const QWidget& source, int actionId) override;

    // The correction the fields describe now; null when they describe none.
    std::unique_ptr<DAOLap> Correction() const;
    QLineEdit* GetStepsField() const { return steps_; }
    QLineEdit* GetHourField() const { return hour_; }
    std::pair<QLineEdit*, QLineEdit*> GetDistanceFields() const { return {whole_, fraction_}; }
    TivLabel* GetSummary() const { return summary_; }
    // Stores the correction and goes back; false (and says so) when it was not stored.
    bool Save();

private:
    void Edited(QLineEdit& field);
    void ShowDistanceOfSteps();
    void ShowSummary();
    // A line of text (or `lines` of them, wrapped) in the content, `top` pixels down.
    TivLabel* AddCaption(const QString& text, int top, int lines = 1);

    QDate day_;
    std::unique_ptr<DAOLap> lap_;   // set when taking away
    int previousTakeAway_ = -1;     // id of an earlier take-away from the lap
    int gait_ = 1;
    QWidget* content_ = nullptr;
    std::unique_ptr<GoalFieldRow> stepsRow_;
    std::unique_ptr<GoalFieldRow> distanceRow_;
    std::unique_ptr<GoalFieldRow> hourRow_;
    QPointer<QLineEdit> steps_;
    QPointer<QLineEdit> whole_;
    QPointer<QLineEdit> fraction_;
    QPointer<QLineEdit> hour_;
    TivLabel* summary_ = nullptr;
};
