#include "SettingsPanel.h"

#include <QDateEdit>
#include <QFontMetrics>
#include <QLineEdit>
#include <QLocale>
#include <algorithm>
#include <cmath>

#include "TivButton.h"
#include "TivLabel.h"
#include "TivUtils.h"

namespace {
constexpr int kMargin = 10;
const QColor kValueColor{252, 209, 75};
const QColor kNoteColor{196, 212, 232};

TivLabel* MakeLabel(QWidget* parent, const QString& text, int size, const QColor& color, int style,
                    int alignment) {
    auto* label = new TivLabel(parent);
    label->Initialize();
    label->SetText(text);
    label->SetFontSize(TivUtils::Scaled(size));
    label->SetFontStyle(style);
    label->SetTextColor(color);
    label->SetNeedOutline(false);
    label->SetHorizontalAlligment(alignment);
    label->show();
    return label;
}
}  // namespace

SettingsPanel::SettingsPanel(QWidget* parent) : HistoryPanel(parent) {}

TivLabel* SettingsPanel::AddValueRow(const QString& text, const QString& value, int actionId,
                                     IActionEventListener* listener) {
    TivButton* button = AddRowButton(text, actionId, listener);
    // The value keeps its whole width up to the arrow (at most half the row); the caption
    // gets the rest and wraps when it must.
    const QFont font = TivUtils::CreateFont(TivUtils::FONT_STYLE_BOLD, TivUtils::Scaled(22));
    const int valueWidth = std::min(
        QFontMetrics(font).horizontalAdvance(value) + TivUtils::Scaled(8), button->width() / 2);
    const int valueRight = button->width() - TivUtils::Scaled(50);
    const int split = valueRight - valueWidth;
    if (auto* caption = button->findChild<TivLabel*>()) {
        caption->setGeometry(caption->x(), 0, split - caption->x() - TivUtils::Scaled(6),
                             button->height());
    }
    TivLabel* shown =
        MakeLabel(button, value, 22, kValueColor, TivUtils::FONT_STYLE_BOLD, TivLabel::ALIGN_RIGHT);
    shown->setObjectName(QStringLiteral("value%1").arg(actionId));
    shown->setGeometry(split, 0, valueWidth, button->height());
    button->AddControl(*shown);
    return shown;
}

QLineEdit* SettingsPanel::AddTextField(const QString& caption, const QString& text) {
    auto* row = new QWidget;
    AddWidget(row, 100);
    const int inner = row->width() - 2 * TivUtils::Scaled(kMargin);
    TivLabel* label =
        MakeLabel(row, caption, 20, kNoteColor, TivUtils::FONT_STYLE_PLAIN, TivLabel::ALIGN_LEFT);
    label->setGeometry(TivUtils::Scaled(kMargin), 0, inner, TivUtils::Scaled(30));
    auto* field = new QLineEdit(text, row);
    field->setFont(TivUtils::CreateFont(TivUtils::FONT_STYLE_BOLD, TivUtils::Scaled(26)));
    field->setStyleSheet(
        QStringLiteral("QLineEdit { color: #FCD14B; background: rgba(10, 15, 26, 200);"
                       " border: %1px solid #3A4458; border-radius: %2px; padding-left: %3px; }"
                       "QLineEdit:focus { border-color: #0C9FF9; }")
            .arg(std::max(1, TivUtils::Scaled(2)))
            .arg(TivUtils::Scaled(10))
            .arg(TivUtils::Scaled(8)));
    field->setGeometry(TivUtils::Scaled(kMargin), TivUtils::Scaled(32), inner,
                       TivUtils::Scaled(60));
    field->show();
    return field;
}

TivLabel* SettingsPanel::AddNote(const QString& text, int height) {
    auto* row = new QWidget;
    AddWidget(row, height);
    TivLabel* label =
        MakeLabel(row, text, 18, kNoteColor, TivUtils::FONT_STYLE_PLAIN, TivLabel::ALIGN_LEFT);
    label->SetVerticalAlligment(TivLabel::ALIGN_TOP);
    label->setGeometry(TivUtils::Scaled(kMargin), TivUtils::Scaled(4),
                       row->width() - 2 * TivUtils::Scaled(kMargin),
                       row->height() - TivUtils::Scaled(4));
    return label;
}

std::pair<QDateEdit*, QDateEdit*> SettingsPanel::AddDateRange(const QString& fromCaption,
                                                              const QString& toCaption,
                                                              const QDate& from, const QDate& to) {
    auto* row = new QWidget;
    AddWidget(row, 100);
    const int half = (row->width() - 3 * TivUtils::Scaled(kMargin)) / 2;
    QDateEdit* fields[2] = {};
    const QString captions[2] = {fromCaption, toCaption};
    const QDate dates[2] = {from, to};
    for (int i = 0; i < 2; ++i) {
        const int x = TivUtils::Scaled(kMargin) + i * (half + TivUtils::Scaled(kMargin));
        TivLabel* label = MakeLabel(row, captions[i], 20, kNoteColor, TivUtils::FONT_STYLE_PLAIN,
                                    TivLabel::ALIGN_LEFT);
        label->setGeometry(x, 0, half, TivUtils::Scaled(30));
        auto* field = new QDateEdit(dates[i], row);
        field->setCalendarPopup(true);
        field->setDisplayFormat(QLocale().dateFormat(QLocale::ShortFormat));
        field->setFont(TivUtils::CreateFont(TivUtils::FONT_STYLE_BOLD, TivUtils::Scaled(28)));
        field->setStyleSheet(
            QStringLiteral("QDateEdit { color: #FCD14B; background: rgba(10, 15, 26, 200);"
                           " border: %1px solid #3A4458; border-radius: %2px; padding-left: %3px; }"
                           "QDateEdit:focus { border-color: #0C9FF9; }")
                .arg(std::max(1, TivUtils::Scaled(2)))
                .arg(TivUtils::Scaled(10))
                .arg(TivUtils::Scaled(8)));
        field->setGeometry(x, TivUtils::Scaled(32), half, TivUtils::Scaled(60));
        field->show();
        fields[i] = field;
    }
    fields[0]->setMaximumDate(fields[1]->date());
    fields[1]->setMinimumDate(fields[0]->date());
    connect(fields[0], &QDateEdit::dateChanged, fields[1], &QDateEdit::setMinimumDate);
    connect(fields[1], &QDateEdit::dateChanged, fields[0], &QDateEdit::setMaximumDate);
    return {fields[0], fields[1]};
}
