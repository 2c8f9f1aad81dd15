#pragma once

#include <QList>
#include <QPointer>
#include <functional>
#include <initializer_list>
#include <optional>
#include <utility>

class EntryRange;
class PedometerForm;
class QLineEdit;
class QWidget;
class TivLabel;

// The row of digit fields shared by the daily-goal, alarm and pacer screens: a field
// with its unit (calories, minutes, steps, step rate), the whole part and fraction of a
// distance, or a hint line when nothing is chosen; plus reading a field back against
// its EntryRange. The row's widgets are children of the screen's content panel `top` pixels
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

    // The number typed into `whole` (plus `fraction` counting 1/`fractionScale`, when
    // given) if `range` takes it. Otherwise nothing: the text stays as typed and the
    // field explains the refusal under itself, so the caller keeps its stored value.
    static std::optional<double> ReadInRange(const EntryRange& range, QLineEdit& whole,
                                             QLineEdit* fraction = nullptr,
                                             int fractionScale = 0);
    // The distance the two fields hold, in km, if it lies in the goals' range: metres
    // (thousandths) after "km", or tenths after the decimal point in miles.
    static std::optional<double> ReadDistance(QLineEdit& whole, QLineEdit& fraction, bool miles);

private:
    QWidget& content_;
    int top_;
    std::function<void(QLineEdit&)> edited_;
    QList<QPointer<QWidget>> widgets_;
    QList<QPointer<QLineEdit>> fields_;
};
