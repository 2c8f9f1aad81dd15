#include "TivNumberField.h"

#include <QRegularExpressionValidator>
#include <algorithm>
#include <cmath>

#include "TivUtils.h"

TivNumberField::TivNumberField(QWidget* parent, int maxLength, int fontSize) : QLineEdit(parent) {
    const auto scaled = [](int size) { return int(std::lround(size * TivUtils::GetScale())); };
    setMaxLength(maxLength);
    setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), this));
    setInputMethodHints(Qt::ImhDigitsOnly);
    setAlignment(Qt::AlignCenter);
    setFont(TivUtils::CreateFont(TivUtils::FONT_STYLE_BOLD, fontSize));
    setStyleSheet(QStringLiteral("QLineEdit { color: #FCD14B; background: rgba(10, 15, 26, 200);"
                                 " border: %1px solid #3A4458; border-radius: %2px; }"
                                 "QLineEdit:focus { border-color: #0C9FF9; }")
                      .arg(std::max(1, scaled(2)))
                      .arg(scaled(10)));
}
