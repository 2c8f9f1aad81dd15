#pragma once

#include <QWidget>
#include <array>
#include <deque>
#include <vector>

// The sensitivity meter: the latest raw movement values (the detector's meter value,
// about 33 a second) as a line running right to left, over the walk, jog and run
// thresholds as dashed lines. A movement whose line crosses a gait's threshold is
// strong enough to count as that gait's step. The scale grows to the highest value or
// threshold in view and never shrinks below the run threshold. Paints from its state
// only; GUI thread only.
class GraphicAcc : public QWidget {
    Q_OBJECT
public:
    static constexpr int kPoints = 150;  // about 4.5 s of samples

    explicit GraphicAcc(QWidget* parent = nullptr);

    // Appends values (oldest first), dropping the oldest beyond kPoints, and redraws.
    void AddValues(const std::vector<double>& values);
    // Thresholds in meter units, walk, jog, run.
    void SetThresholds(double walk, double jog, double run);

    const std::deque<double>& GetValues() const { return values_; }
    const std::array<double, 3>& GetThresholds() const { return thresholds_; }
    // The value drawn at the top edge.
    double ScaleTop() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::deque<double> values_;
    std::array<double, 3> thresholds_{};
};
