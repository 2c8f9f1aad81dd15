#pragma once

#include <QWidget>
#include <vector>

// One per-minute graph of the day or lap history: the values as a blue area inside a
// white frame that scales itself (GraphScale: lowest value on the bottom line, highest
// on the top), with four axis labels in the left margin.
//
// Data comes in through the setters; painting reads only that state. GUI thread only.
class GraphicHistory : public QWidget {
    Q_OBJECT
public:
    static constexpr int TYPE_CALORIES = 1;
    static constexpr int TYPE_SPEED = 2;
    static constexpr int TYPE_PACE = 3;

    explicit GraphicHistory(QWidget* parent = nullptr);

    // Places the graph over `area` with its values and type; `grid` draws the three
    // grid lines between the axis labels. Always true.
    bool Initialize(const QRect& area, std::vector<double> values, int type, bool grid);
    void SetCurrentType(int type);
    int GetCurrentType() const { return type_; }
    // Non-finite values read 0.
    void SetCurrentValues(std::vector<double> values);
    const std::vector<double>& GetCurrentValues() const { return values_; }
    // The axis label texts, top to bottom, as painted.
    QStringList AxisTexts() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<double> values_;
    int type_ = TYPE_CALORIES;
    bool grid_ = true;
};
