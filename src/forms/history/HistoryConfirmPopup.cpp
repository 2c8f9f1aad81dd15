#include "HistoryConfirmPopup.h"

#include <QPainter>
#include <cmath>

#include "AppResource.h"
#include "SoundsManager.h"
#include "TivButton.h"
#include "TivLabel.h"
#include "TivUtils.h"

namespace {
TivButton* MakeButton(QWidget* parent, const QString& picture, const char* key, int actionId,
                      IActionEventListener* listener) {
    auto* button = new TivButton(parent);
    button->setObjectName(QStringLiteral("action%1").arg(actionId));
    // Rendered when the popup first shows: most screens that have one never open it.
    const QString name = picture + QStringLiteral(".png");
    const QSize size = TivUtils::ScaledSize(name);
    button->Initialize(QRect(QPoint(), size.isEmpty()
                                           ? QSize(TivUtils::Scaled(200), TivUtils::Scaled(72))
                                           : size));
    button->SetPictures(name);
    button->SetActionId(actionId);
    button->AddActionEventDelegate(listener);
    auto* caption = new TivLabel(button);
    caption->Initialize();
    caption->SetText(AppResource::GetInstance().GetString(QString::fromUtf8(key)));
    caption->SetFontSize(TivUtils::Scaled(24));
    caption->SetFontStyle(TivUtils::FONT_STYLE_BOLD);
    caption->SetNeedOutline(false);
    caption->setGeometry(0, 0, button->width(), button->height());
    button->AddControl(*caption);
    return button;
}
}  // namespace

HistoryConfirmPopup::HistoryConfirmPopup(QWidget& screen, IActionEventListener* listener)
    : QWidget(&screen) {
    setGeometry(screen.rect());
    question_ = new TivLabel(this);
    question_->Initialize();
    question_->SetFontSize(TivUtils::Scaled(26));
    question_->SetNeedOutline(false);
    cancel_ = MakeButton(this, QStringLiteral("btn-blue"), "body__ Cancel", ID_CANCEL, listener);
    confirm_ =
        MakeButton(this, QStringLiteral("btn-red"), "meter__ Reset stats", ID_CONFIRM, listener);
    PlaceContent();
    setProperty("closesOnBack", true);
    setProperty("covers", true);
    hide();
}

void HistoryConfirmPopup::PlaceContent() {
    const QRect panel = PanelRect();
    question_->setGeometry(panel.adjusted(TivUtils::Scaled(20), TivUtils::Scaled(16),
                                          -TivUtils::Scaled(20), -TivUtils::Scaled(100)));
    const int y = panel.bottom() - TivUtils::Scaled(16) - cancel_->height();
    cancel_->move(panel.left() + TivUtils::Scaled(14), y);
    confirm_->move(panel.right() - TivUtils::Scaled(14) - confirm_->width(), y);
}

void HistoryConfirmPopup::resizeEvent(QResizeEvent*) {
    // The panel stays centred on the screen, whatever height the screen has.
    PlaceContent();
}

QRect HistoryConfirmPopup::PanelRect() const {
    const int w = width() - 2 * TivUtils::Scaled(10);
    const int h = TivUtils::Scaled(250);
    return QRect((width() - w) / 2, (height() - h) / 2, w, h);
}

void HistoryConfirmPopup::ShowWithText(const QString& question) {
    question_->SetText(question);
    question_->update();
    raise();
    show();
}

bool HistoryConfirmPopup::HandleAction(int actionId, const QString& question,
                                       const std::function<void()>& erase) {
    if (actionId != ID_RESET && actionId != ID_CANCEL && actionId != ID_CONFIRM) return false;
    SoundsManager::GetInstance().ClickSound();
    if (actionId == ID_RESET) {
        ShowWithText(question);
        return true;
    }
    hide();
    if (actionId == ID_CONFIRM) erase();
    return true;
}

QString HistoryConfirmPopup::GetText() const {
    return question_->GetText();
}

void HistoryConfirmPopup::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), QColor(0, 0, 0, 150));
    painter.setPen(QPen(QColor(58, 68, 88), 1));
    painter.setBrush(QColor(22, 34, 56));
    painter.drawRoundedRect(QRectF(PanelRect()).adjusted(0.5, 0.5, -0.5, -0.5),
                            TivUtils::Scaled(16), TivUtils::Scaled(16));
}
