#include "CaptionButton.h"

#include <cmath>

#include "TivButton.h"
#include "TivLabel.h"
#include "TivUtils.h"

QSize CaptionButton::Size() {
    return QSize(TivUtils::Scaled(200), TivUtils::Scaled(72));
}

TivButton* CaptionButton::Create(QWidget* parent, const QString& picture, const QPoint& at,
                                 int actionId, IActionEventListener* listener,
                                 const QString& caption) {
    auto* button = new TivButton(parent);
    button->Initialize(QRect(at, Size()));
    button->SetPictures(picture);
    button->SetActionId(actionId);
    button->AddActionEventDelegate(listener);
    auto* label = new TivLabel(button);
    label->Initialize();
    label->setGeometry(0, 0, button->width(), button->height());
    label->SetFontSize(TivUtils::Scaled(32));
    label->SetFontStyle(TivUtils::FONT_STYLE_BOLD);
    label->SetText(caption);
    button->AddControl(*label);
    return button;
}
