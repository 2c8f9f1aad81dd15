#pragma once

#include <QWidget>
#include <functional>

class IActionEventListener;
class TivLabel;

// The question before an erase, over the whole screen that shows it: the text, and
// "Cancel" (action 105) on the left and "Reset stats" (action 106) on the right, both
// reported to the listener (not owned), which hands them to HandleAction. The screen
// behind cannot be touched while it shows; the back key (Escape) cancels it rather than
// leaving the screen. Hidden at first; GUI thread only.
class HistoryConfirmPopup : public QWidget {
    Q_OBJECT
public:
    static constexpr int ID_CANCEL = 105;
    static constexpr int ID_CONFIRM = 106;
    static constexpr int ID_RESET = 50;  // the screens' reset button, which asks

    // The erase dialogue of a screen: the reset button shows `question`, Cancel hides
    // it, Reset stats hides it and calls `erase`; each with the click. False for an id
    // that is not one of these three.
    bool HandleAction(int actionId, const QString& question, const std::function<void()>& erase);

    HistoryConfirmPopup(QWidget& screen, IActionEventListener* listener);

    void ShowWithText(const QString& question);
    QString GetText() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QRect PanelRect() const;
    void PlaceContent();

    TivLabel* question_ = nullptr;
    QWidget* cancel_ = nullptr;
    QWidget* confirm_ = nullptr;
};
