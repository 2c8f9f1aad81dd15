#pragma once

#include <QColor>
#include <QVector>
#include <QWidget>

// One body-meter graph: the measurement's history as a smooth trend line over a soft
// fading area, oldest on the left, with the newest value marked by a dot and the
// desired value as a dashed green line. The vertical axis runs from `low` (bottom) to
// `high` (top); the widget leaves a band at the top and the bottom free for the labels
// the body meter lays over it. Mouse events pass through to the slot underneath.
//
// Handed its numbers by SetCurrentValues; draws in paintEvent only. GUI thread only.
class GraphicBody : public QWidget {
    Q_OBJECT
public:
    explicit GraphicBody(QWidget* parent = nullptr);

    // `desired` is -1 for none. Redraws.
    void SetCurrentValues(const QVector<double>& series, double low, double high, double desired);
    void SetAccentColor(const QColor& color);

    const QVector<double>& GetSeries() const { return series_; }
    double GetLow() const { return low_; }
    double GetHigh() const { return high_; }
    double GetDesired() const { return desired_; }
    // The y of `value` inside the widget.
    double ValueToY(double value) const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRectF PlotArea() const;

    QVector<double> series_;
    double low_ = 0.0;
    double high_ = 1.0;
    double desired_ = -1.0;
    QColor accent_{63, 193, 255};
};
