#pragma once

#include <QPointer>
#include <array>

#include "BodyGraphSeries.h"
#include "PedometerForm.h"

class GraphicBody;
class TivButton;
class TivLabel;

// The body tracker: four graph slots (chest, waist, hips, weight) with the lowest,
// highest and current value of each, the desired value in green, a legend for it and
// the BMI. A measurement entered on fewer than two days shows a message instead of its
// graph. Tapping a slot opens its entry form (BodyParametersForm 0-2, WheightEnterForm
// 3); the option menu opens the body goals ("settings-goals") and the report.
//
// Reads the body log, the goals (DAOTarget), the body profile and the settings afresh
// every time it appears; writes nothing. Opened by the main screen's option menu
// ("body"). GUI thread only.
class BodyMeterForm : public PedometerForm {
    Q_OBJECT
public:
    static constexpr int ID_CHEST = 100;  // ... ID_CHEST + 3 for the weight
    static constexpr int ID_OPTION_KEY = 104;
    static constexpr int ID_GOALS = 105;
    static constexpr int ID_REPORT = 108;

    explicit BodyMeterForm(QWidget* parent = nullptr);
    // Always true.
    bool Initialize();
    void OnInitializing() override;
    void FormWillAppear() override;
    // Reads everything again and lays out the four slots from scratch.
    void UpdateData();
    void OnActionPerformed(const QWidget& source, int actionId) override;

    // What the last rebuild shows, for tests: per slot the graph (null while there is
    // no graph) and its labels: the message, or low, high and middle.
    struct Slot {
        QPointer<TivButton> button;
        QPointer<GraphicBody> graph;
        QPointer<TivLabel> message;
        QPointer<TivLabel> low;
        QPointer<TivLabel> high;
        QPointer<TivLabel> middle;
    };
    const Slot& GetSlot(int index) const { return slots_[index]; }
    TivLabel* GetLegendLabel() const { return legend_; }
    TivLabel* GetBmiLabel() const { return bmi_; }

private:
    void BuildSlot(int index, const std::vector<DAOBodyLog>& logs);
    TivLabel* AddLabel(TivButton& slot, const QRect& bounds, int fontSize, const QString& text,
                       int alignment);
    void Open(const QString& name);

    QWidget* container_ = nullptr;
    TivLabel* legend_ = nullptr;
    TivLabel* bmi_ = nullptr;
    std::array<Slot, 4> slots_;
};
