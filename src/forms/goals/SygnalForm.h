#pragma once

#include <QPointer>
#include <memory>

#include "GoalFieldRow.h"
#include "PedometerForm.h"
#include "TivButton.h"

#include <QLineEdit>
#include <QProgressBar>

class QTimer;
class TivLabel;

// The goal alarm screen: tabs choose the kind (calories, distance, activity, steps), fields
// set its target, Start/Pause and Reset drive it, and a bar with a label shows today's
// progress while it runs ("Goal reached!" once it completed).
//
// Reads and writes the alarm fields of PedometerOptions (sygnal*) and today's progress
// row (GetTodaySygnal, ClearSygnals). Kind and phase share one stored number (see
// Sygnal). A tab keeps the phase and saves; a target edit applies its floor (10 kcal,
// 5 min, 0.1 km or 0.1 mile, 100 steps) and saves; Start, Pause and Reset change the
// settings in memory only, so they are stored with the next save. A running alarm
// found at 100 % or more becomes 7 (distance completed), whatever its kind of the
// first three; a steps alarm becomes steps completed. While the screen is shown,
// the progress follows the counting every second, and the controls are rebuilt when
// the alarm's state changed elsewhere (it completed while counting). Opened by the main
// screen's bell button ("alarm").
class SygnalForm : public PedometerForm {
    Q_OBJECT
public:
    static constexpr int ID_CALORIES = 100;
    static constexpr int ID_DISTANCE = 101;
    static constexpr int ID_ACTIVITY = 102;
    static constexpr int ID_START = 103;
    static constexpr int ID_PAUSE = 104;
    static constexpr int ID_RESET = 105;
    static constexpr int ID_STEPS = 106;

    explicit SygnalForm(QWidget* parent = nullptr);

    // Names the screen. Always true.
    bool Initialize();
    void OnInitializing() override;
    // Rebuilds the fields, buttons and progress for the stored state.
    void ReloadControls();
    void OnActionPerformed(const QWidget& source, int actionId) override;
    // A field's editing finished: apply the kind's floor, store the target and save.
    void OnTextValueChanged(const QWidget& control);
    void OnTextValueChangeCanceled(const QWidget& control);
    // The refresh timer's tick: follows today's progress, or rebuilds the controls when
    // the stored state is no longer the one shown. Does nothing while hidden.
    void OnRefreshTick();

    // The calorie, activity or steps field; null for distance.
    QLineEdit* GetValueField() const { return valueField_; }
    QLineEdit* GetWholeField() const { return wholeField_; }
    QLineEdit* GetFractionField() const { return fractionField_; }
    TivButton* GetStartPauseButton() const { return startPause_; }
    TivButton* GetResetButton() const { return reset_; }
    // Null while the alarm is stopped.
    QProgressBar* GetProgressBar() const { return progressBar_; }
    TivLabel* GetProgressLabel() const { return progressLabel_; }

private:
    TivButton* AddButton(const QString& picture, const QString& caption, int actionId, int x);
    void AddProgress(int percent, const QString& text, const QColor& color);
    // Shows or updates the progress of a running alarm; one found at its target
    // completes and the controls are rebuilt.
    void ShowRunningProgress(int type);

    QWidget* content_ = nullptr;
    std::unique_ptr<GoalFieldRow> row_;
    QPointer<QLineEdit> valueField_;
    QPointer<QLineEdit> wholeField_;
    QPointer<QLineEdit> fractionField_;
    QPointer<TivButton> startPause_;
    QPointer<TivButton> reset_;
    QPointer<QProgressBar> progressBar_;
    QPointer<TivLabel> progressLabel_;
    QTimer* refreshTimer_ = nullptr;
    int shownType_ = -1;  // the alarm state the controls were built for
};
