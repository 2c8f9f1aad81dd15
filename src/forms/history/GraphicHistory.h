#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <vector>

#include <QWidget>

// One per-minute graph of the day or lap history: the values as a blue area inside a
// white frame. The value axis starts at zero and is ticked at round values
// (ChartAxis), with the unit above it; the time axis under the frame is ticked at
// round clock times when the points' times are known. A series with nothing above
// zero shows "No data" instead of a scale of zeros. Every tick uses one font.
//
// Data comes in through the setters; painting reads only that state. GUI thread only.
class GraphicHistory : public QWidget {
    Q_OBJECT
public:
    static constexpr int TYPE_CALORIES = 1;
    static constexpr int TYPE_SPEED = 2;
    static constexpr int TYPE_PACE = 3;

    explicit GraphicHistory(QWidget* parent = nullptr);

    // Places the graph over `area` with its values and type; `grid` draws a line at
    // each value tick. Always true.
    bool Initialize(const QRect& area, std::vector<double> values, int type, bool grid);
    void SetCurrentType(int type);
    int GetCurrentType() const { return type_; }
    // Non-finite values read 0.
    void SetCurrentValues(std::vector<double> values);
    const std::vector<double>& GetCurrentValues() const { return values_; }
    // When each value's minute began, one per value; others leave the time axis bare.
    void SetTimes(std::vector<QDateTime> times);
    // The value axis' unit, written above it ("kcal/min").
    void SetUnit(const QString& unit);
    // The value tick texts, top to bottom, as painted; empty when there is no data.
    QStringList AxisTexts() const;
    // The clock times under the frame, left to right.
    QStringList TimeTexts() const;
    bool HasData() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<double> values_;
    std::vector<QDateTime> times_;
    QString unit_;
    int type_ = TYPE_CALORIES;
    bool grid_ = true;
};
