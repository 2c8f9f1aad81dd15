#pragma once

#include <QPointer>

#include "PedometerForm.h"

#include <QDateEdit>

class HistoryPanel;
class TivDatePicker;
class TivLabel;

// The choice of period history: all days, the last 7, 30 or 180 days, or a range of two
// dates picked below (the first can never be after the second; a tap on a date opens a
// finger-sized picker over the screen, TivDatePicker). Each opens its screen by name.
// Above them, the current and the longest streak of days with the daily goal reached,
// read (GetGoalStreaks over all history) every time the screen appears. Writes
// nothing. Opened by today's "Reports" soft key or by
// name. GUI thread only.
class HistoryReports : public PedometerForm {
    Q_OBJECT
public:
    static constexpr int ID_ALL_DAYS = 200;
    static constexpr int ID_LAST_7 = 201;
    static constexpr int ID_LAST_30 = 202;
    static constexpr int ID_LAST_180 = 203;
    static constexpr int ID_RANGE = 204;

    explicit HistoryReports(QWidget* parent = nullptr);

    bool Initialize();
    void OnInitializing() override;
    void FormWillAppear() override;
    void OnActionPerformed(const QWidget& source, int actionId) override;
    // The current and the longest streak's rows.
    TivLabel* GetStreakRow(int index) const { return streakRows_[index]; }

    QDateEdit* GetFromField() const { return from_; }
    QDateEdit* GetToField() const { return to_; }
    TivDatePicker* GetDatePicker() const { return picker_; }

protected:
    // A tap on a date field opens the picker for it.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QDateEdit* AddDateField(QWidget* row, const char* captionKey, const QDate& date, int x,
                            int width);

    HistoryPanel* panel_ = nullptr;
    TivLabel* streakRows_[2] = {nullptr, nullptr};
    QPointer<QDateEdit> from_;
    QPointer<QDateEdit> to_;
    TivDatePicker* picker_ = nullptr;
};
