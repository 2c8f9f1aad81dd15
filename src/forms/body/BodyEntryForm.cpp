#include "BodyEntryForm.h"

#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <cmath>

#include "AppResource.h"
#include "CaptionButton.h"
#include "PedometerDBManager.h"
#include "SoundsManager.h"
#include "TivButton.h"
#include "TivLabel.h"
#include "TivNavigationController.h"
#include "TivUtils.h"

namespace {
// The 480-wide layout, below the title.
constexpr int kPromptTop = 30;
constexpr int kPromptHeight = 90;
constexpr int kRowTop = 140;
constexpr int kRowHeight = 80;
constexpr int kGap = 10;
constexpr int kSaveTop = 270;

int S(int size) {
    return int(std::lround(size * TivUtils::GetScale()));
}
}  // namespace

BodyEntryForm::BodyEntryForm(QWidget* parent) : PedometerForm(parent) {}

int BodyEntryForm::ParseInt(const QString& text, int fallback) {
    bool ok = false;
    const int value = text.toInt(&ok);
    return ok ? value : fallback;
}

double BodyEntryForm::LatestLogged(double DAOBodyLog::*field) {
    const std::vector<DAOBodyLog> logs = PedometerDBManager::GetInstance().GetBodyLogs();
    for (auto log = logs.rbegin(); log != logs.rend(); ++log) {
        if ((*log).*field != 0.0) return (*log).*field;
    }
    return 0.0;
}

void BodyEntryForm::OnInitializing() {
    SetBackgroundImage(QStringLiteral("MainScreen_bg.png"));
    SetTitleText(TitleText());
    ShowBackButton();
    SetSoftkeyText(SOFTKEY_0, AppResource::GetInstance().GetString(QStringLiteral("body__ Save")));
    SetSoftkeyActionId(SOFTKEY_0, ID_SAVE);
    AddSoftkeyActionListener(SOFTKEY_0, this);

    const int top = GetClientTop();
    auto* prompt = new TivLabel(this);
    prompt->Initialize();
    prompt->setObjectName(QStringLiteral("prompt"));
    prompt->setGeometry(S(20), top + S(kPromptTop), width() - S(40), S(kPromptHeight));
    prompt->SetFontSize(S(32));
    prompt->SetText(PromptText());

    row_ = new QWidget(this);
    row_->setGeometry(0, top + S(kRowTop), width(), S(kRowHeight));
    BuildRow();
    PlaceRow();

    CaptionButton::Create(this, QStringLiteral("btn-green.png"),
                          QPoint((width() - CaptionButton::Size().width()) / 2, top + S(kSaveTop)),
                          ID_SAVE, this,
                          AppResource::GetInstance().GetString(QStringLiteral("body__ Save")))
        ->setObjectName(QStringLiteral("save"));
}

QLineEdit* BodyEntryForm::AddField(int maxLength, const QString& text, int width) {
    auto* field = new QLineEdit(row_);
    field->setMaxLength(maxLength);
    field->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), field));
    field->setInputMethodHints(Qt::ImhDigitsOnly);
    field->setAlignment(Qt::AlignCenter);
    field->setFont(TivUtils::CreateFont(TivUtils::FONT_STYLE_BOLD, S(48)));
    field->setStyleSheet(
        QStringLiteral("QLineEdit { color: #FCD14B; background: rgba(10, 15, 26, 200);"
                       " border: %1px solid #3A4458; border-radius: %2px; }"
                       "QLineEdit:focus { border-color: #0C9FF9; }")
            .arg(std::max(1, S(2)))
            .arg(S(10)));
    field->setText(text);
    connect(field, &QLineEdit::editingFinished, this, [this, field] { OnTextValueChanged(*field); });
    fields_.append(field);
    rowItems_.append({field, width});
    return field;
}

void BodyEntryForm::AddText(const QString& text, int width) {
    auto* label = new TivLabel(row_);
    label->Initialize();
    label->SetFontSize(S(34));
    label->SetText(text);
    rowItems_.append({label, width});
}

void BodyEntryForm::PlaceRow() {
    int total = 0;
    for (const auto& item : rowItems_) total += S(item.second) + S(kGap);
    int x = (row_->width() - total + S(kGap)) / 2;
    for (const auto& item : rowItems_) {
        item.first->setGeometry(x, 0, S(item.second), row_->height());
        x += S(item.second) + S(kGap);
    }
}

void BodyEntryForm::OnActionPerformed(const QWidget& source, int actionId) {
    if (actionId != ID_SAVE) {
        PedometerForm::OnActionPerformed(source, actionId);
        return;
    }
    SoundsManager::GetInstance().ClickSound();
    Save();
    if (TivNavigationController* navigation = getNavigationController()) navigation->PopForm(true);
}
