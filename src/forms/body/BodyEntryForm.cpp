#include "BodyEntryForm.h"

#include <QLineEdit>
#include <cmath>

#include "AppResource.h"
#include "CaptionButton.h"
#include "PedometerDBManager.h"
#include "SoundsManager.h"
#include "TivButton.h"
#include "TivLabel.h"
#include "TivNavigationController.h"
#include "TivNumberField.h"
#include "TivUtils.h"

namespace {
// The 480-wide layout, below the title.
constexpr int kPromptTop = 30;
constexpr int kPromptHeight = 90;
constexpr int kRowTop = 140;
constexpr int kRowHeight = 80;
constexpr int kGap = 10;
constexpr int kMessageTop = 226;
constexpr int kMessageHeight = 44;
constexpr int kSaveTop = 280;

const QColor kHintColor(0xC8, 0xD2, 0xE6);
// Amber rather than red: a refused value is a request to correct, not a failure.
const QColor kRefusalColor(0xFF, 0xB8, 0x4D);

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
    prompt->setGeometry(TivUtils::Scaled(20), top + TivUtils::Scaled(kPromptTop),
                        width() - TivUtils::Scaled(40), TivUtils::Scaled(kPromptHeight));
    prompt->SetFontSize(TivUtils::Scaled(32));
    prompt->SetText(PromptText());

    row_ = new QWidget(this);
    row_->setGeometry(0, top + TivUtils::Scaled(kRowTop), width(), TivUtils::Scaled(kRowHeight));
    BuildRow();
    PlaceRow();

    message_ = new TivLabel(this);
    message_->Initialize();
    message_->setObjectName(QStringLiteral("message"));
    message_->setGeometry(TivUtils::Scaled(20), top + TivUtils::Scaled(kMessageTop),
                          width() - TivUtils::Scaled(40), TivUtils::Scaled(kMessageHeight));
    message_->SetFontSize(TivUtils::Scaled(24));
    message_->SetNeedOutline(false);
    ShowVerdict(false);

    CaptionButton::Create(
        this, QStringLiteral("btn-green.png"),
        QPoint((width() - CaptionButton::Size().width()) / 2, top + TivUtils::Scaled(kSaveTop)),
        ID_SAVE, this, AppResource::GetInstance().GetString(QStringLiteral("body__ Save")))
        ->setObjectName(QStringLiteral("save"));
}

QLineEdit* BodyEntryForm::AddField(int maxLength, const QString& text, int width) {
    auto* field = new TivNumberField(row_, maxLength, TivUtils::Scaled(48));
    field->setText(text);
    connect(field, &QLineEdit::editingFinished, this, [this] { ShowVerdict(false); });
    // Enter saves and closes, as the Save button does.
    connect(field, &QLineEdit::returnPressed, this, [this] { OnActionPerformed(*this, ID_SAVE); });
    fields_.append(field);
    rowItems_.append({field, width});
    return field;
}

void BodyEntryForm::AddText(const QString& text, int width) {
    auto* label = new TivLabel(row_);
    label->Initialize();
    label->SetFontSize(TivUtils::Scaled(34));
    label->SetText(text);
    rowItems_.append({label, width});
}

void BodyEntryForm::PlaceRow() {
    int total = 0;
    for (const auto& item : rowItems_)
        total += TivUtils::Scaled(item.second) + TivUtils::Scaled(kGap);
    int x = (row_->width() - total + TivUtils::Scaled(kGap)) / 2;
    for (const auto& item : rowItems_) {
        item.first->setGeometry(x, 0, TivUtils::Scaled(item.second), row_->height());
        x += TivUtils::Scaled(item.second) + TivUtils::Scaled(kGap);
    }
}

void BodyEntryForm::OnActionPerformed(const QWidget& source, int actionId) {
    if (actionId != ID_SAVE) {
        PedometerForm::OnActionPerformed(source, actionId);
        return;
    }
    SoundsManager::GetInstance().ClickSound();
    if (closing_ || !ShowVerdict(true)) return;
    closing_ = true;
    Save(Read().value);
    if (TivNavigationController* navigation = getNavigationController()) navigation->PopForm(true);
}

EntryRange::Reading BodyEntryForm::Read() const {
    const QString whole = !fields_.isEmpty() && fields_[0] ? fields_[0]->text() : QString();
    const QString fraction = fields_.size() > 1 && fields_[1] ? fields_[1]->text() : QString();
    return Range().Read(whole, fraction, FractionScale());
}

QString BodyEntryForm::GetMessage() const {
    return message_ != nullptr ? message_->GetText() : QString();
}

bool BodyEntryForm::ShowVerdict(bool finalCheck) {
    const EntryRange range = Range();
    const EntryRange::Verdict verdict = Read().verdict;
    // While typing, an emptied field is no mistake yet; saving it is.
    const bool refused =
        verdict != EntryRange::Verdict::VALID && (finalCheck || verdict != EntryRange::Verdict::EMPTY);
    if (message_ != nullptr) {
        message_->SetText(refused ? range.Message(verdict) : range.Hint());
        message_->SetTextColor(refused ? kRefusalColor : kHintColor);
        message_->update();
    }
    return verdict == EntryRange::Verdict::VALID;
}
