#pragma once

#include <QStringList>
#include <QWidget>
#include <array>
#include <functional>
#include <memory>
#include <vector>

#include "GraphValuesHandOver.h"
#include "Timer.h"

class TivLabel;

// The main screen's graph of the last five minutes: a blue area profile of 60 values
// (GraphSeries) from zero inside a white frame, with grid lines and up to four axis
// labels at round values on the left, the title and unit above the frame, a hint below
// it, and "No data yet" in it while nothing lies above zero.
//
// The graph only scales and draws (GraphScale): the main form computes the series for
// the current type and hands it over. Everything here runs on the GUI thread, except
// PostCurrentValues(), which any thread may call while the graph lives.
//
// Redraws follow the phone's rhythm: UpdateGraphic() refreshes the hint at once and
// redraws the graph a second later. On the small (320-wide) layout the graph stays
// still while the pacer beats, and the hint says so.
class GraphicBlue : public QWidget {
    Q_OBJECT
public:
    static constexpr int kRedrawDelayMs = 1000;
    static inline const QColor AREA_COLOR{12, 159, 249, 255};

    explicit GraphicBlue(QWidget* parent = nullptr);
    ~GraphicBlue() override;

    // Places the graph over `area` and makes its labels: `labels` are the first texts
    // of the four axis labels (top to bottom; missing ones are empty), shown until
    // the first series arrives; `fontSize` is the text size of the axis labels and the
    // title, in the toolkit's units (the bands above and below the frame are 20
    // pixels high, so 20 fills them). The type comes from the settings
    // (PedometerOptions::mainGraphic). Always true.
    bool Initialize(const QRect& area, const QStringList& labels, int fontSize, bool showTitle);

    // Takes the series (non-finite values read 0) and rewrites the axis labels; the
    // graph itself is redrawn by UpdateGraphic() or InvalidateGraph().
    void SetCurrentValues(std::vector<double> values);
    const std::vector<double>& GetCurrentValues() const { return values_; }
    // Any thread: SetCurrentValues on the GUI thread, then UpdateGraphic() when
    // `updateGraphic` is set. Series that pile up fold into the newest.
    void PostCurrentValues(std::vector<double> values, bool updateGraphic);

    // GraphSeries::STEP_RATE .. PACE; others show no title or unit.
    void SetCurrentType(int type);
    int GetCurrentType() const { return type_; }
    // Title and unit of the current type, in the user's units; then InvalidateGraph().
    void UpdateLabels();
    void InvalidateGraph();
    // Shows the hint and schedules the redraw (see the class comment).
    void UpdateGraphic();
    void OnTimerExpired();
    bool IsRedrawScheduled() const { return redrawTimer_.IsActive(); }

    // Whether the pacer is beating; the metronome by default. For tests.
    void SetPacerBeatingQuery(std::function<bool()> query) { pacerBeating_ = std::move(query); }

    // The child labels; axis label i is also found by the object name "0" .. "3".
    TivLabel* GetAxisLabel(int index) const;
    TivLabel* GetUnitLabel() const { return unitLabel_; }
    TivLabel* GetTitleLabel() const { return titleLabel_; }  // null without a title
    TivLabel* GetHintLabel() const { return hintLabel_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    TivLabel* MakeLabel(const QString& name, int alignment, int size, const QColor& color);
    void LayoutLabels();
    void RefreshAxisLabels();
    void FitAxisLabels();
    int LargestFittingAxisFont(const QStringList& texts) const;

    std::vector<double> values_;
    int type_ = 0;
    bool showTitle_ = false;
    int fontSize_ = 20;
    int axisFontSize_ = 0;  // the size the axis labels' fonts were made at
    std::array<TivLabel*, 4> axisLabels_{};
    TivLabel* unitLabel_ = nullptr;
    TivLabel* titleLabel_ = nullptr;
    TivLabel* hintLabel_ = nullptr;
    Timer redrawTimer_;
    std::function<bool()> pacerBeating_;
    std::unique_ptr<GraphValuesHandOver> handOver_;
};
