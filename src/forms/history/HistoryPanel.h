#pragma once

#include <QScrollArea>
#include <vector>

class GraphicHistory;
class HistoryTotals;
class IActionEventListener;
class TivButton;
class TivLabel;

// The scrolling column the history screens fill from the top down: titled graphs,
// section headers, value rows on dark strips, finger-sized row buttons and the reset
// button with its caption. Sizes are the 480-wide layout's, scaled to the current one.
//
// Clear() empties it before a screen rebuilds its content. Buttons report their action
// ids to the given listener (not owned). A finger drag scrolls it. GUI thread only.
class HistoryPanel : public QScrollArea {
    Q_OBJECT
public:
    static inline const QColor kTitleColor{12, 159, 249, 255};

    explicit HistoryPanel(QWidget* parent = nullptr);

    void Clear();
    void AddTitle(const QString& text);
    GraphicHistory* AddGraph(std::vector<double> values, int type);
    // Any widget of the given height (480-wide units), the full width of the column.
    void AddWidget(QWidget* widget, int height);
    void AddHeader(const QString& text);
    TivLabel* AddRow(const QString& text);
    TivButton* AddRowButton(const QString& text, int actionId, IActionEventListener* listener);
    TivButton* AddResetButton(const QString& buttonText, const QString& caption, int actionId,
                              IActionEventListener* listener);
    // The three titled graphs, then the totals and the averages under their headers.
    void AddSummary(const HistoryTotals& totals, const QString& totalsHeader,
                    const QString& averagesHeader);
    // Space below the last item, in 480-wide units.
    void AddGap(int height);

    QWidget* Content() const { return content_; }

protected:
    // A drag that starts on a control that drags itself (a slider, the property
    // "dragsItself") belongs to that control: the panel does not scroll with it.
    bool viewportEvent(QEvent* event) override;

private:
    int Place(int height);  // the y of a new item of `height` (scaled) and moves on

    QWidget* content_ = nullptr;
    int next_ = 0;
};
