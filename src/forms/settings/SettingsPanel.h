#pragma once

#include <QDate>
#include <utility>

#include "HistoryPanel.h"

class QDateEdit;
class QLineEdit;

// The scrolling column of the settings screens: the history screens' headers and row
// buttons, plus rows that show their current value on the right (a switch's "On"/"Off",
// a height, "Automatic") and captioned text fields. Sizes are the 480-wide layout's.
// GUI thread only.
class SettingsPanel : public HistoryPanel {
    Q_OBJECT
public:
    explicit SettingsPanel(QWidget* parent = nullptr);

    // A row button with `value` right-aligned before its arrow; returns the value's
    // label.
    TivLabel* AddValueRow(const QString& text, const QString& value, int actionId,
                          IActionEventListener* listener);
    // A caption over a one-line text field the width of the column.
    QLineEdit* AddTextField(const QString& caption, const QString& text);
    // Two captioned dates side by side; the first can never be after the second.
    std::pair<QDateEdit*, QDateEdit*> AddDateRange(const QString& fromCaption,
                                                   const QString& toCaption, const QDate& from,
                                                   const QDate& to);
    // Smaller grey text, wrapped, for hints below a group of rows.
    TivLabel* AddNote(const QString& text, int height);
};
