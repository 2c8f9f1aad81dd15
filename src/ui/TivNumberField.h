#pragma once

#include <QLineEdit>
#include <QPointer>

#include "EntryRange.h"

class QLabel;

// A digits-only entry field in the screens' style: large yellow figures on a dark box
// that turns blue while focused. `maxLength` digits at most; the phone's keyboard is
// asked for digits. The field only checks the characters; a screen checks the value
// against its EntryRange when editing finishes (the QLineEdit::editingFinished signal)
// and hands the verdict to ShowVerdict(), which explains a refusal under the field.
class TivNumberField : public QLineEdit {
    Q_OBJECT
public:
    // `fontSize` is in the toolkit's font units (TivUtils::CreateFont), already scaled.
    TivNumberField(QWidget* parent, int maxLength, int fontSize);
    // Takes its explanation along: the line belongs to the parent, not to the field.
    ~TivNumberField() override;

    // True for a valid verdict, which clears any earlier explanation. Otherwise the
    // text stays as typed, the frame turns amber and the reason (`range`'s message)
    // shows in a line just under the field, over whatever lies there, until the next
    // valid verdict.
    bool ShowVerdict(const EntryRange& range, EntryRange::Verdict verdict);
    // The explanation shown, or empty.
    QString GetMessage() const;

private:
    void Restyle(bool refused);

    QPointer<QLabel> message_;
};
