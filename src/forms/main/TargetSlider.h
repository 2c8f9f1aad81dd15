#pragma once

#include <QWidget>

class TivImagePanel;
class TivLabel;

// Today's progress towards the daily goal (DAOTarget): "Progress:", today's value, the
// target and the unit, over a bar that fills with the share reached.
//
// Progress is always today's totals from the database (distance, calories, active
// minutes or steps, by the goal's kind), shown in the user's units. With no goal the control
// hides itself. The holder places it (setGeometry) and calls Initialize with the
// bar's height; the bar is as wide as its picture allows within the control. GUI thread
// only (it reads the database there).
class TargetSlider : public QWidget {
    Q_OBJECT
public:
    // Beyond this the bar would only grow past its frame; it also keeps the
    // arithmetic far from overflow when a target is tiny.
    static constexpr int kMaxPercent = 1000;

    explicit TargetSlider(QWidget* parent = nullptr);

    // Builds the labels and the bar, the bar `barHeight` pixels high. Always true.
    bool Initialize(int barHeight);
    // Reads today's totals and the goal, writes the labels and sets the bar; hides the
    // control when the goal is off.
    void UpdateData();
    // Fills percent × full width ÷ 100 of the bar (integer arithmetic); a fill under 2
    // pixels is not shown.
    void SetProgressBarValue(int percent);

    QString GetValueText() const;
    QString GetTargetText() const;
    QString GetUnitText() const;
    int GetBarFullWidth() const { return fullWidth_; }
    int GetBarFullHeight() const { return fullHeight_; }
    // The filled part's width, 0 when it is hidden.
    int GetBarFillWidth() const;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void LayoutChildren();
    void LayoutTexts();
    static TivLabel* MakeLabel(QWidget* parent, int fontSize, int fontStyle, const QColor& color);

    TivLabel* caption_ = nullptr;
    TivLabel* value_ = nullptr;
    TivLabel* separator_ = nullptr;
    TivLabel* target_ = nullptr;
    TivLabel* unit_ = nullptr;
    TivImagePanel* barBack_ = nullptr;
    TivImagePanel* bar_ = nullptr;
    int fullWidth_ = 0;
    int fullHeight_ = 0;
    int percent_ = 0;
};
