#include "TivNumberField.h"

#include <QLabel>
#include <QRegularExpressionValidator>
#include <algorithm>
#include <cmath>

#include "TivUtils.h"

TivNumberField::TivNumberField(QWidget* parent, int maxLength, int fontSize) : QLineEdit(parent) {
    setMaxLength(maxLength);
    setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), this));
    setInputMethodHints(Qt::ImhDigitsOnly);
    setAlignment(Qt::AlignCenter);
    setFont(TivUtils::CreateFont(TivUtils::FONT_STYLE_BOLD, fontSize));
    Restyle(false);
}

TivNumberField::~TivNumberField() {
    delete message_.data();
}

void TivNumberField::Restyle(bool refused) {
    setStyleSheet(QStringLiteral("QLineEdit { color: #FCD14B; background: rgba(10, 15, 26, 200);"
                                 " border: %1px solid %3; border-radius: %2px; }"
                                 "QLineEdit:focus { border-color: %4; }")
                      .arg(std::max(1, TivUtils::Scaled(2)))
                      .arg(TivUtils::Scaled(10))
                      .arg(refused ? QStringLiteral("#FFB84D") : QStringLiteral("#3A4458"))
                      .arg(refused ? QStringLiteral("#FFB84D") : QStringLiteral("#0C9FF9")));
}

bool TivNumberField::ShowVerdict(const EntryRange& range, EntryRange::Verdict verdict) {
    const bool valid = verdict == EntryRange::Verdict::VALID;
    Restyle(!valid);
    if (valid) {
        if (message_ != nullptr) message_->hide();
        return true;
    }
    QWidget* parent = parentWidget();
    if (parent == nullptr) return false;
    if (message_ == nullptr) {
        message_ = new QLabel(parent);
        message_->setObjectName(QStringLiteral("entryMessage"));
        message_->setAlignment(Qt::AlignCenter);
        message_->setFont(TivUtils::CreateFont(TivUtils::FONT_STYLE_PLAIN, TivUtils::Scaled(22)));
        message_->setStyleSheet(QStringLiteral("color: #FFB84D; background: transparent;"));
    }
    message_->setText(range.Message(verdict));
    // Centred under the field, as wide as the panel allows.
    const int height = TivUtils::Scaled(30);
    message_->setGeometry(0, geometry().bottom() + TivUtils::Scaled(4), parent->width(), height);
    message_->show();
    message_->raise();
    return false;
}

QString TivNumberField::GetMessage() const {
    return message_ != nullptr && !message_->isHidden() ? message_->text() : QString();
}
