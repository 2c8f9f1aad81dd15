#pragma once

#include <QString>
#include <QVector>
#include <QWidget>

#include "DelegatePointer.h"
#include "IActionEventListener.h"

// The top of a screen: its title and, below it, an optional row of tabs.
//
// Each tab carries an action id; a tap (press and release on the same tab) selects it
// and tells the action listener, also when it was already selected. SetSelectedTab
// only changes the highlight.
class FormHeader : public QWidget {
    Q_OBJECT
public:
    explicit FormHeader(QWidget* parent = nullptr);

    void SetTitleText(const QString& title);
    QString GetTitleText() const { return title_; }

    void AddTab(const QString& text, int actionId);
    int GetTabCount() const { return int(tabs_.size()); }
    QString GetTabText(int index) const;
    int GetTabActionId(int index) const;
    // -1 (or any index out of range) selects none.
    void SetSelectedTab(int index);
    int GetSelectedTab() const { return selected_; }
    QRect TabRect(int index) const;

    // Not owned; may be null.
    void SetActionListener(IActionEventListener* listener) { listener_.Set(listener); }

    // The height that fits the title and the tab row, in the current layout.
    int PreferredHeight() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    struct Tab {
        QString text;
        int actionId = 0;
    };
    int TitleHeight() const;
    int TabAt(const QPoint& point) const;

    QString title_;
    QVector<Tab> tabs_;
    int selected_ = -1;
    int pressed_ = -1;
    DelegatePointer<IActionEventListener> listener_;
};
