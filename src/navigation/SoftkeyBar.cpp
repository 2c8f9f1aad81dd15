#include "SoftkeyBar.h"

#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "TivForm.h"
#include "TivUtils.h"

namespace {
const QColor kBarTop(0x16, 0x22, 0x38);
const QColor kBarBottom(0x05, 0x08, 0x0F);
const QColor kEdge(0x3A, 0x44, 0x58);
const QColor kPressed(0x0C, 0x9F, 0xF9, 90);
const QColor kText(0xF2, 0xF5, 0xFA);

// The soft keys take the outer thirds of the bar, the option key the middle.
constexpr double kSideShare = 0.36;
}  // namespace

SoftkeyBar::SoftkeyBar(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setProperty("touchTarget", true);
}

int SoftkeyBar::BarHeight() {
    return int(std::lround(60 * TivUtils::GetScale()));
}

void SoftkeyBar::ShowForm(TivForm* form) {
    if (form_ != form) {
        if (form_) disconnect(form_, &TivForm::SoftkeysChanged, this, nullptr);
        form_ = form;
        if (form_) connect(form_, &TivForm::SoftkeysChanged, this, &SoftkeyBar::Refresh);
    }
    Refresh();
}

void SoftkeyBar::Refresh() {
    pressed_ = Key::None;
    update();
}

bool SoftkeyBar::IsKeyShown(Key key) const {
    if (!form_) return false;
    switch (key) {
        case Key::Left:
            return form_->HasSoftkey(TivForm::SOFTKEY_0);
        case Key::Right:
            return form_->HasSoftkey(TivForm::SOFTKEY_1);
        case Key::Option:
            return form_->HasOptionkey();
        case Key::None:
            break;
    }
    return false;
}

QRect SoftkeyBar::KeyRect(Key key) const {
    const int side = int(width() * kSideShare);
    switch (key) {
        case Key::Left:
            return QRect(0, 0, side, height());
        case Key::Option:
            return QRect(side, 0, width() - 2 * side, height());
        case Key::Right:
            return QRect(width() - side, 0, side, height());
        case Key::None:
            break;
    }
    return {};
}

QString SoftkeyBar::KeyText(Key key) const {
    if (!IsKeyShown(key)) return {};
    if (key == Key::Left) return form_->GetSoftkeyText(TivForm::SOFTKEY_0);
    if (key == Key::Right) return form_->GetSoftkeyText(TivForm::SOFTKEY_1);
    return {};
}

SoftkeyBar::Key SoftkeyBar::KeyAt(const QPoint& point) const {
    for (Key key : {Key::Left, Key::Option, Key::Right}) {
        if (IsKeyShown(key) && KeyRect(key).contains(point)) return key;
    }
    return Key::None;
}

void SoftkeyBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient fill(0, 0, 0, height());
    fill.setColorAt(0, kBarTop);
    fill.setColorAt(1, kBarBottom);
    painter.fillRect(rect(), fill);
    painter.fillRect(QRect(0, 0, width(), 1), kEdge);

    if (pressed_ != Key::None && pressedInside_) {
        const int inset = std::max(2, height() / 10);
        painter.setPen(Qt::NoPen);
        painter.setBrush(kPressed);
        painter.drawRoundedRect(KeyRect(pressed_).adjusted(inset, inset, -inset, -inset), inset * 2,
                                inset * 2);
    }

    painter.setFont(TivUtils::CreateFont(TivUtils::FONT_STYLE_BOLD, height() * 2 / 5));
    painter.setPen(kText);
    for (Key key : {Key::Left, Key::Right}) {
        if (IsKeyShown(key)) painter.drawText(KeyRect(key), Qt::AlignCenter, KeyText(key));
    }
    if (IsKeyShown(Key::Option)) {
        // Three dots stacked in the middle: the phone's "more options" handle.
        const QRect box = KeyRect(Key::Option);
        const double r = std::max(2.0, height() / 22.0);
        painter.setPen(Qt::NoPen);
        painter.setBrush(kText);
        for (int i = -1; i <= 1; ++i) {
            painter.drawEllipse(
                QPointF(box.center().x() + 0.5, box.center().y() + 0.5 + i * r * 3.2), r, r);
        }
    }
    // A thin divider between the keys that are shown.
    painter.setPen(QPen(kEdge, 1));
    const int gap = height() / 4;
    if (IsKeyShown(Key::Left)) {
        const int x = KeyRect(Key::Left).right();
        painter.drawLine(x, gap, x, height() - gap);
    }
    if (IsKeyShown(Key::Right)) {
        const int x = KeyRect(Key::Right).left();
        painter.drawLine(x, gap, x, height() - gap);
    }
}

void SoftkeyBar::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    pressed_ = KeyAt(event->position().toPoint());
    pressedInside_ = pressed_ != Key::None;
    update();
}

void SoftkeyBar::mouseMoveEvent(QMouseEvent* event) {
    if (pressed_ == Key::None) return;
    const bool inside = KeyRect(pressed_).contains(event->position().toPoint());
    if (inside != pressedInside_) {
        pressedInside_ = inside;
        update();
    }
}

void SoftkeyBar::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const Key key = pressed_;
    const bool fires =
        key != Key::None && KeyRect(key).contains(event->position().toPoint()) && IsKeyShown(key);
    pressed_ = Key::None;
    update();
    if (!fires) return;
    // The receiver may close the screen and change the bar: nothing below uses state.
    if (key == Key::Option) {
        Q_EMIT OptionkeyActivated();
    } else {
        Q_EMIT SoftkeyActivated(key == Key::Left ? TivForm::SOFTKEY_0 : TivForm::SOFTKEY_1);
    }
}
