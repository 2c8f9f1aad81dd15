#include "GoalFieldRow.h"

#include <QLineEdit>
#include <QLocale>
#include <algorithm>
#include <cmath>

#include "AppResource.h"
#include "Converter.h"
#include "DistanceEntry.h"
#include "EntryRange.h"
#include "PedometerForm.h"
#include "TivLabel.h"
#include "TivNumberField.h"
#include "TivUtils.h"

namespace {
// Sizes in the 480-wide layout.
constexpr int kFieldHeight = 72;
constexpr int kFieldFont = 44;

}  // namespace

GoalFieldRow::GoalFieldRow(QWidget& content, int top, std::function<void(QLineEdit&)> edited)
    : content_(content), top_(top), edited_(std::move(edited)) {}

void GoalFieldRow::AddTabs(PedometerForm& form,
                           std::initializer_list<std::pair<const char*, int>> tabs, int selected) {
    for (const auto& [key, actionId] : tabs) form.AddTabItem(AppResource::Text(key), actionId);
    form.SetSelectedTabIndex(selected >= 0 && selected < int(tabs.size()) ? selected : -1);
}

void GoalFieldRow::Clear() {
    for (const QPointer<QWidget>& widget : std::as_const(widgets_)) {
        if (widget == nullptr) continue;
        widget->disconnect();
        widget->hide();
        widget->deleteLater();
    }
    widgets_.clear();
    fields_.clear();
}

QLineEdit* GoalFieldRow::AddField(int maxLength, const QString& text, int x, int width) {
    auto* field = new TivNumberField(&content_, maxLength, TivUtils::Scaled(kFieldFont));
    field->setText(text);
    field->setGeometry(x, top_, width, TivUtils::Scaled(kFieldHeight));
    QObject::connect(field, &QLineEdit::editingFinished, field, [edited = edited_, field] {
        if (edited) edited(*field);
    });
    field->show();
    widgets_.append(field);
    fields_.append(field);
    return field;
}

void GoalFieldRow::AddUnit(const QString& text, int x, int width, int fontSize) {
    auto* label = new TivLabel(&content_);
    label->setObjectName(QStringLiteral("unit"));
    label->SetText(text);
    label->SetFontSize(TivUtils::Scaled(fontSize));
    label->SetHorizontalAlligment(TivLabel::ALIGN_LEFT);
    label->setGeometry(x, top_, width, TivUtils::Scaled(kFieldHeight));
    label->show();
    widgets_.append(label);
}

QLineEdit* GoalFieldRow::AddValue(int maxLength, int value, const QString& unit, int fieldWidth,
                                  int unitWidth) {
    const int field = TivUtils::Scaled(fieldWidth);
    const int gap = TivUtils::Scaled(12);
    const int x = content_.width() / 2 - (field + gap + TivUtils::Scaled(unitWidth)) / 2;
    QLineEdit* added = AddField(maxLength, QString::number(value), x, field);
    AddUnit(unit, x + field + gap, TivUtils::Scaled(unitWidth));
    return added;
}

std::pair<QLineEdit*, QLineEdit*> GoalFieldRow::AddDistance(double kilometres, bool miles) {
    const DistanceEntry entry = DistanceEntry::FromKilometers(kilometres, miles);
    const int fieldWhole = TivUtils::Scaled(100);
    const int fieldFraction = TivUtils::Scaled(miles ? 70 : 130);
    const int between = TivUtils::Scaled(miles ? 30 : 70);
    const int after = TivUtils::Scaled(70);
    const int gap = TivUtils::Scaled(10);
    int x = content_.width() / 2 - (fieldWhole + gap + between + fieldFraction + gap + after) / 2;
    QLineEdit* whole = AddField(2, QString::number(std::min(entry.whole, 99)), x, fieldWhole);
    x += fieldWhole + gap;
    AddUnit(miles ? QString(QLocale().decimalPoint()) : AppResource::Text("today_goal__ km"), x,
            between);
    x += between;
    QLineEdit* fraction = AddField(miles ? 1 : 3, entry.FractionText(miles), x, fieldFraction);
    x += fieldFraction + gap;
    AddUnit(AppResource::Text(miles ? "today_goal__ ml" : "meter__ m"), x, after);
    return {whole, fraction};
}

TivLabel* GoalFieldRow::AddHint(const QString& text, int height) {
    auto* hint = new TivLabel(&content_);
    hint->setObjectName(QStringLiteral("hint"));
    const int margin = TivUtils::Scaled(30);
    hint->setGeometry(margin, top_, content_.width() - 2 * margin, height);
    hint->SetFontSize(TivUtils::Scaled(28));
    hint->SetVerticalAlligment(TivLabel::ALIGN_TOP);
    hint->SetTextColor(QColor(0xC8, 0xD2, 0xE6));
    hint->SetNeedOutline(false);
    hint->SetText(text);
    hint->show();
    widgets_.append(hint);
    return hint;
}

void GoalFieldRow::CommitEditing() {
    for (const QPointer<QLineEdit>& field : std::as_const(fields_)) {
        if (field != nullptr && field->hasFocus()) field->clearFocus();
    }
}

bool GoalFieldRow::Holds(const QWidget& control) const {
    return std::any_of(fields_.begin(), fields_.end(),
                       [&](const QPointer<QLineEdit>& field) { return field == &control; });
}

std::optional<double> GoalFieldRow::ReadInRange(const EntryRange& range, QLineEdit& whole,
                                                QLineEdit* fraction, int fractionScale) {
    const EntryRange::Reading typed =
        fraction != nullptr ? range.Read(whole.text(), fraction->text(), fractionScale)
                            : range.Read(whole.text());
    // The row makes every field a TivNumberField; another field is only checked.
    auto* shown = qobject_cast<TivNumberField*>(&whole);
    const bool valid = shown != nullptr ? shown->ShowVerdict(range, typed.verdict)
                                        : typed.verdict == EntryRange::Verdict::VALID;
    if (!valid) return std::nullopt;
    return typed.value;
}

std::optional<double> GoalFieldRow::ReadDistance(QLineEdit& whole, QLineEdit& fraction,
                                                 bool miles) {
    const std::optional<double> typed =
        ReadInRange(EntryRange::GoalDistance(miles), whole, &fraction, miles ? 10 : 1000);
    if (!typed) return std::nullopt;
    return miles ? Converter::ConvertMilesToKilometers(*typed) : *typed;
}
