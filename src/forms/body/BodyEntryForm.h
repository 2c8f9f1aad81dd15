#pragma once

#include <QList>
#include <QPointer>

#include "DAOBodyLog.h"
#include "EntryRange.h"
#include "PedometerForm.h"

class QLineEdit;
class TivLabel;

// What the body entry screens share (BodyParametersForm, WheightEnterForm, AgeForm,
// SettingsHeight): a title, a prompt, one row of number fields with their separators
// and units, a line under the row naming the range the value must lie in, and a Save
// button (also the left soft key, action 100). Enter in a field saves too; Back and
// Escape leave without saving.
//
// A subclass builds its row in BuildRow() from OnInitializing(), names its range in
// Range() and stores a value in Save(value), after which the screen closes itself. What
// the user typed is never changed: a value that is empty, not a number or out of range
// is refused, the line under the row says why, and the screen stays open.
// GUI thread only.
class BodyEntryForm : public PedometerForm {
    Q_OBJECT
public:
    static constexpr int ID_SAVE = 100;

    explicit BodyEntryForm(QWidget* parent = nullptr);

    void OnInitializing() override;
    void OnActionPerformed(const QWidget& source, int actionId) override;

    // The number fields, left to right.
    const QList<QPointer<QLineEdit>>& GetFields() const { return fields_; }
    // The line under the row: the range, or why the last value was refused.
    QString GetMessage() const;
    // The text parsed as a whole number, or `fallback` when it is not one.
    static int ParseInt(const QString& text, int fallback);
    // The newest non-zero value of one measurement in the body log, or 0.
    static double LatestLogged(double DAOBodyLog::*field);

protected:
    virtual QString TitleText() const = 0;
    virtual QString PromptText() const = 0;
    virtual void BuildRow() = 0;
    // The values the screen accepts, in the units its fields show.
    virtual EntryRange Range() const = 0;
    // The fields read as one value in the shown unit; by default the first field is the
    // whole part and the second, if any, counts 1/FractionScale().
    virtual EntryRange::Reading Read() const;
    virtual int FractionScale() const { return 0; }
    // Stores a value that Read() found valid.
    virtual void Save(double value) = 0;

    // Row items, placed left to right and centred when the row is complete. Widths are
    // in the 480-wide layout.
    QLineEdit* AddField(int maxLength, const QString& text, int width);
    void AddText(const QString& text, int width);

private:
    void PlaceRow();
    // Shows the range, or why the fields' value is refused; true when it is valid.
    bool ShowVerdict(bool finalCheck);

    TivLabel* message_ = nullptr;
    bool closing_ = false;  // saved once; a second Enter or tap does nothing

    QWidget* row_ = nullptr;
    QList<QPointer<QLineEdit>> fields_;
    QList<QPair<QWidget*, int>> rowItems_;
};
