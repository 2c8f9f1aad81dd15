#include "BlockPane.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "AppFrame.h"
#include "AppResource.h"
#include "SoundsManager.h"
#include "TivForm.h"
#include "TivImagePanel.h"
#include "TivLabel.h"
#include "TivUtils.h"
#include "TouchEventDispatcher.h"
#include "UnblockListener.h"

BlockPane::BlockPane(QWidget* parent) : QWidget(parent) {}

bool BlockPane::Initialize(UnblockListener* form) {
    form_.Set(form);
    unlocked_ = false;
    setGeometry(QRect(QPoint(0, 0), AppFrame::ScreenSize()));
    setProperty("covers", true);  // the layout fits it to the screen it covers

    delete picture_;
    picture_ = new TivImagePanel(this);
    pictureX_ = 0;
    picture_->Initialize(QPoint(pictureX_, TivUtils::Scaled(kPictureY)),
                         QStringLiteral("unlock.png"));
    picture_->show();

    delete caption_;
    caption_ = new TivLabel(this);
    // On the slide track itself, between the knob and the arrows, so the words sit
    // where the finger goes.
    caption_->setGeometry(TivUtils::Scaled(kCaptionLeft), TivUtils::Scaled(kPictureY + 28),
                          TivUtils::Scaled(kCaptionRight - kCaptionLeft), TivUtils::Scaled(64));
    caption_->SetBackColor(QColor(0, 0, 0, 0));
    caption_->SetFontSize(TivUtils::Scaled(kCaptionFontSize));
    caption_->SetShrinkToFit(true);
    caption_->SetTextColor(Qt::white);
    caption_->SetText(AppResource::GetInstance().GetString(QStringLiteral("SLIDE_TO_UNLOCK")));
    caption_->show();

    TouchEventDispatcher::AddTouchEventListener(*this, *this);
    TouchEventDispatcher::AddTouchEventListener(*caption_, *this);
    return true;
}

bool BlockPane::IsUnlockSlide(long long dx, int distance) {
    return std::llabs(dx) >= distance;
}

int BlockPane::UnlockDistance() {
    return std::max(1, TivUtils::Scaled(kUnlockDistance));
}

void BlockPane::Dismiss(QWidget* pane) {
    if (pane == nullptr) return;
    pane->hide();
    pane->deleteLater();
    SoundsManager::GetInstance().ClickSound();
}

void BlockPane::OnTouchPressed(const QWidget&, const QPoint&, const TouchEventInfo&) {
    SlidePicture(0);
}

void BlockPane::OnTouchMoved(const QWidget&, const QPoint& point, const TouchEventInfo& info) {
    if (unlocked_) return;  // the pane is on its way out; the finger may still move
    const long long dx = static_cast<long long>(point.x()) - info.GetStartPosition().x();
    const int distance = UnlockDistance();
    if (!IsUnlockSlide(dx, distance)) {
        SlidePicture(static_cast<int>(dx));
        return;
    }
    SlidePicture(dx > 0 ? distance : -distance);
    unlocked_ = true;
    if (UnblockListener* form = form_.Get()) form->Unblock(this);
}

void BlockPane::OnTouchReleased(const QWidget&, const QPoint&, const TouchEventInfo&) {
    if (!unlocked_) SlidePicture(0);
}

void BlockPane::SlidePicture(int offset) {
    if (picture_ == nullptr || offset == pictureX_) return;
    pictureX_ = offset;
    picture_->move(offset, picture_->y());
}

void BlockPane::paintEvent(QPaintEvent*) {
    // The live values above the slide stay clear; below it the screen is dimmed, so the
    // caption reads well and the buttons under the pane look out of reach.
    QPainter painter(this);
    const int top = qRound(kPictureY * TivUtils::GetScale());
    painter.fillRect(QRect(0, top, width(), height() - top), QColor(0, 0, 0, 170));
}
