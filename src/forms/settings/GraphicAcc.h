#pragma once

#include <QPixmap>
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
//
// It redraws about 33 times a second, so it is opaque (nothing behind it is repainted)
// and keeps its frame and threshold lines in a cached picture; each redraw copies that
// and draws the line.
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
    void resizeEvent(QResizeEvent* event) override;

private:
    // The frame and the threshold lines for the current size, thresholds and scale.
    void RenderBackdrop(double top);
    QRectF PlotRect() const;

    QPixmap backdrop_;
    double backdropTop_ = -1.0;
    std::deque<double> values_;
    std::array<double, 3> thresholds_{};
};
