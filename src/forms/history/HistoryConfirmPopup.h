#pragma once

#include <QWidget>

class IActionEventListener;
class TivLabel;

// The question before an erase, over the whole screen that shows it: the text, and
// "Cancel" (action 105) on the left and "Reset stats" (action 106) on the right, both
// reported to the listener (not owned). The screen behind cannot be touched while it
// shows. Hidden at first; GUI thread only.
class HistoryConfirmPopup : public QWidget {
    Q_OBJECT
public:
    static constexpr int ID_CANCEL = 105;
    static constexpr int ID_CONFIRM = 106;

    HistoryConfirmPopup(QWidget& screen, IActionEventListener* listener);

    void ShowWithText(const QString& question);
    QString GetText() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRect PanelRect() const;

    TivLabel* question_ = nullptr;
};
