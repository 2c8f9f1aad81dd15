#include "ReportPopup.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "CaptionButton.h"
#include "TivButton.h"
#include "TivLabel.h"
#include "TivUtils.h"

ReportPopup::ReportPopup(QWidget* parent) : QWidget(parent) {
    hide();
}

void ReportPopup::Initialize(int actionId, const QString& buttonText,
                             IActionEventListener* listener) {
    if (parentWidget() != nullptr) setGeometry(parentWidget()->rect());
    text_ = new TivLabel(this);
    text_->Initialize();
    text_->SetFontSize(TivUtils::Scaled(28));
    button_ = CaptionButton::Create(this, QStringLiteral("btn-blue.png"), QPoint(), actionId,
                                    listener, buttonText);
    setProperty("closesOnBack", true);
    setProperty("covers", true);
}

void ReportPopup::AddSecondButton(int actionId, const QString& buttonText,
                                  IActionEventListener* listener) {
    second_ = CaptionButton::Create(this, QStringLiteral("btn-blue.png"), QPoint(), actionId,
                                    listener, buttonText);
}

QRect ReportPopup::Card() const {
    const int w = width() - TivUtils::Scaled(60);
    const int h = TivUtils::Scaled(300);
    return QRect((width() - w) / 2, (height() - h) / 2, w, h);
}

void ReportPopup::Show(const QString& text) {
    if (parentWidget() != nullptr) setGeometry(parentWidget()->rect());
    PlaceContent();
    text_->SetText(text);
    raise();
    show();
    update();
}

void ReportPopup::PlaceContent() {
    if (text_ == nullptr) return;
    const QRect card = Card();
    text_->setGeometry(card.adjusted(TivUtils::Scaled(20), TivUtils::Scaled(20),
                                     -TivUtils::Scaled(20), -TivUtils::Scaled(110)));
    const int top = card.bottom() - TivUtils::Scaled(90);
    if (second_ == nullptr) {
        button_->move(card.center().x() - button_->width() / 2, top);
        return;
    }
    const int gap = TivUtils::Scaled(8);
    button_->move(card.center().x() - gap / 2 - button_->width(), top);
    second_->move(card.center().x() + gap - gap / 2, top);
}

void ReportPopup::resizeEvent(QResizeEvent*) {
    PlaceContent();  // the card stays centred on the screen, whatever its height
}

QString ReportPopup::GetText() const {
    return text_ != nullptr ? text_->GetText() : QString();
}

int ReportPopup::GetActionId() const {
    return button_ != nullptr ? button_->GetActionId() : 0;
}

void ReportPopup::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), QColor(0, 0, 0, 150));
    painter.setPen(QPen(QColor(58, 68, 88), 1));
    painter.setBrush(QColor(22, 34, 56));
    painter.drawRoundedRect(QRectF(Card()).adjusted(0.5, 0.5, -0.5, -0.5), TivUtils::Scaled(16),
                            TivUtils::Scaled(16));
}

void ReportPopup::mousePressEvent(QMouseEvent* event) {
    event->accept();
}
