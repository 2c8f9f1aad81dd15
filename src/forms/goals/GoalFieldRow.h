#pragma once

#include <QList>
#include <QPointer>
#include <functional>
#include <initializer_list>
#include <utility>

class PedometerForm;
class QLineEdit;
class QWidget;
class TivLabel;

// The row of digit fields shared by the daily-goal, alarm and pacer screens: a field
// with its unit (calories, minutes, steps, step rate), the whole part and fraction of a
// distance, or a hint line when nothing is chosen; plus reading a field back with its
// floor. The row's widgets are children of the screen's content panel `top` pixels
// down; other children of the panel are left alone. `edited` is told when a field's
// editing finishes (Enter, or the focus leaving it). GUI thread only.
class GoalFieldRow {
public:
    GoalFieldRow(QWidget& content, int top, std::function<void(QLineEdit&)> edited);

    // The screen's tabs: (text key, action id) in order, and the one selected (-1 none).
    static void AddTabs(PedometerForm& form,
                        std::initializer_list<std::pair<const char*, int>> tabs, int selected);

    // Removes the row's widgets, quietly: a field may be emitting its own signal now.
    void Clear();
    // A digits-only field of at most `maxLength` digits, `x` and `width` in pixels.
    QLineEdit* AddField(int maxLength, const QString& text, int x, int width);
    void AddUnit(const QString& text, int x, int width, int fontSize = 34);
    // One field and its unit, centred; `fieldWidth` and `unitWidth` in the 480-wide layout.
    QLineEdit* AddValue(int maxLength, int value, const QString& unit, int fieldWidth,
                        int unitWidth = 100);
    // The whole part and the fraction of a distance in km, centred: metres (three digits)
    // after "km", or tenths after the decimal point in miles.
    std::pair<QLineEdit*, QLineEdit*> AddDistance(double kilometres, bool miles);
    // A line of help in place of the fields, `height` pixels high.
    TivLabel* AddHint(const QString& text, int height);
    // Takes a field still being edited before the screen changes what it shows.
    void CommitEditing();
    bool Holds(const QWidget& control) const;

    // The field's whole number: a text that is not one counts as 0, and a number under
    // `floor` becomes the floor; a changed value is written back into the field.
    static int ReadAtLeast(QLineEdit& field, int floor);
    // The distance the two fields hold, in km: a metric fraction is padded to three
    // digits, and 0 and 0 become the least distance (0.1 km or 0.1 mile).
    static double ReadDistance(QLineEdit& whole, QLineEdit& fraction, bool miles);

private:
    QWidget& content_;
    int top_;
    std::function<void(QLineEdit&)> edited_;
    QList<QPointer<QWidget>> widgets_;
    QList<QPointer<QLineEdit>> fields_;
};
