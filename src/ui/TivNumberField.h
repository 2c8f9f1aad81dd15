#pragma once

#include <QLineEdit>

// A digits-only entry field in the screens' style: large yellow figures on a dark box
// that turns blue while focused. `maxLength` digits at most; the phone's keyboard is
// asked for digits. The field only checks the characters: screens apply their own
// floors when editing finishes (the QLineEdit::editingFinished signal).
class TivNumberField : public QLineEdit {
    Q_OBJECT
public:
    // `fontSize` is in the toolkit's font units (TivUtils::CreateFont), already scaled.
    TivNumberField(QWidget* parent, int maxLength, int fontSize);
};
