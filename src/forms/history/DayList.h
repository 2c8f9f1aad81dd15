#pragma once

#include <QDate>
#include <QPixmap>
#include <QWidget>
#include <functional>
#include <map>
#include <vector>

// The rows of the all-days list: one finger-sized row per day, newest first, with the
// day's date and steps; a tap on a row tells the open handler its day.
//
// Years of days make thousands of rows, so nothing is made per row: the list paints only
// the rows in view and reads their steps then, a screenful at a time
// (PedometerDBManager::GetDayTotals), keeping what it read. GUI thread only.
class DayList : public QWidget {
    Q_OBJECT
public:
    DayList(std::vector<QDate> days, std::function<void(const QDate&)> onOpen,
            QWidget* parent = nullptr);

    static int RowHeight();  // in the current layout
    int RowAt(int y) const;  // -1 outside the rows
    int Count() const { return int(days_.size()); }
    QDate DayAt(int index) const { return days_[size_t(index)]; }
    // The steps of row `index`, read with the rows around it when not known yet.
    int StepsAt(int index);
    void Open(int index);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void Load(int first, int last);

    std::vector<QDate> days_;
    std::map<QDate, int> steps_;
    std::function<void(const QDate&)> onOpen_;
    QPixmap row_;
    QPixmap pressedRow_;
    int pressedIndex_ = -1;
    QPoint pressedAt_;
};
