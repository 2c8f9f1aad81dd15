#pragma once

#include <QList>
#include <QPointer>

#include "DAOBodyLog.h"
#include "PedometerForm.h"

class QLineEdit;
class TivLabel;

// What the three body entry screens share (BodyParametersForm, WheightEnterForm,
// AgeForm): a title, a prompt, one row of number fields with their separators and unit,
// and a Save button (also the left soft key, action 100). Back leaves without saving.
//
// A subclass builds its row in BuildRow() from OnInitializing(), checks a field in
// OnTextValueChanged() when its editing finishes (Enter, or the focus leaving it) and
// stores the value in Save(), after which the screen closes itself. GUI thread only.
class BodyEntryForm : public PedometerForm {
    Q_OBJECT
public:
    static constexpr int ID_SAVE = 100;

    explicit BodyEntryForm(QWidget* parent = nullptr);

    void OnInitializing() override;
    void OnActionPerformed(const QWidget& source, int actionId) override;

    // The number fields, left to right.
    const QList<QPointer<QLineEdit>>& GetFields() const { return fields_; }
    // The text parsed as a whole number, or `fallback` when it is not one.
    static int ParseInt(const QString& text, int fallback);
    // The newest non-zero value of one measurement in the body log, or 0.
    static double LatestLogged(double DAOBodyLog::*field);

protected:
    virtual QString TitleText() const = 0;
    virtual QString PromptText() const = 0;
    virtual void BuildRow() = 0;
    virtual void OnTextValueChanged(QLineEdit& field) = 0;
    virtual void Save() = 0;

    // Row items, placed left to right and centred when the row is complete. Widths are
    // in the 480-wide layout.
    QLineEdit* AddField(int maxLength, const QString& text, int width);
    void AddText(const QString& text, int width);

private:
    void PlaceRow();

    QWidget* row_ = nullptr;
    QList<QPointer<QLineEdit>> fields_;
    QList<QPair<QWidget*, int>> rowItems_;
};
