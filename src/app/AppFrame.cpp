#include "AppFrame.h"

#include <QKeyEvent>
#include <QPainter>
#include <cmath>

#include "SoftkeyBar.h"
#include "TivForm.h"
#include "TivUtils.h"

AppFrame::AppFrame(QWidget* parent) : QWidget(parent), longPressTimer_([this] { OnLongPress(); }) {
    setFixedSize(ScreenSize());
    setFocusPolicy(Qt::StrongFocus);
    bar_ = new SoftkeyBar(this);
    bar_->setGeometry(0, height() - SoftkeyBar::BarHeight(), width(), SoftkeyBar::BarHeight());
    connect(bar_, &SoftkeyBar::SoftkeyActivated, this, &AppFrame::OnSoftkey);
    connect(bar_, &SoftkeyBar::OptionkeyActivated, this, &AppFrame::OnOptionkey);
}

AppFrame::~AppFrame() {
    longPressTimer_.Cancel();
    // Terminate while the forms are whole, newest first, as a closing stack would.
    for (auto it = forms_.rbegin(); it != forms_.rend(); ++it) {
        TivForm* form = it->data();
        if (form == nullptr) continue;
        form->OnTerminating();
        delete form;
    }
    forms_.clear();
}

QSize AppFrame::ScreenSize() {
    if (TivUtils::IsHVGA()) return QSize(TivUtils::HVGA_WIDTH, HVGA_HEIGHT);
    const int width = TivUtils::GetScreenResolution();
    const int height = int(std::lround(double(WVGA_HEIGHT) * width / TivUtils::WVGA_WIDTH));
    return QSize(width, height);
}

QRect AppFrame::GetClientAreaBounds() const {
    return QRect(0, 0, width(), height() - SoftkeyBar::BarHeight());
}

bool AppFrame::HasControl(const TivForm& form) const {
    for (const auto& held : forms_) {
        if (held == &form) return true;
    }
    return false;
}

int AppFrame::GetControlCount() const {
    int count = 0;
    for (const auto& held : forms_) count += held.isNull() ? 0 : 1;
    return count;
}

void AppFrame::AddControl(TivForm& form) {
    forms_.removeIf([](const QPointer<TivForm>& held) { return held.isNull(); });
    if (HasControl(form)) return;
    form.hide();
    form.setParent(this);
    form.setGeometry(GetClientAreaBounds());
    forms_.append(&form);
    if (!form.initialized_) {
        form.initialized_ = true;
        form.OnInitializing();
    }
}

void AppFrame::RemoveControl(TivForm& form) {
    if (!HasControl(form)) return;
    forms_.removeAll(&form);
    if (current_ == &form) {
        current_ = nullptr;
        bar_->ShowForm(nullptr);
    }
    if (heldForm_ == &form) {
        longPressTimer_.Cancel();
        heldForm_ = nullptr;
        heldKey_ = KEY_INVALID;
    }
    form.hide();
    form.OnTerminating();
    // Deferred: the caller is often the form itself (its back key).
    form.deleteLater();
}

void AppFrame::SetCurrentForm(TivForm& form) {
    if (!HasControl(form)) {
        qWarning("AppFrame: a form must be added before it can be made current");
        return;
    }
    current_ = &form;
    form.setGeometry(GetClientAreaBounds());
    form.show();
    form.raise();
    for (const auto& held : forms_) {
        if (held && held != &form) held->hide();
    }
    bar_->raise();
    bar_->ShowForm(&form);
    // Keys start from the new screen, not from a field of the one it covers.
    form.setFocus(Qt::OtherFocusReason);
}

void AppFrame::RequestRedraw(bool) {
    update();
    if (current_) current_->update();
    bar_->update();
}

void AppFrame::paintEvent(QPaintEvent*) {
    // Behind the forms (seen only when there is none): the phone's black.
    QPainter(this).fillRect(rect(), Qt::black);
}

KeyCode AppFrame::SideKeyOf(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_VolumeUp:
        case Qt::Key_PageUp:
        case Qt::Key_Plus:
            return KEY_SIDE_UP;
        case Qt::Key_VolumeDown:
        case Qt::Key_PageDown:
        case Qt::Key_Minus:
            return KEY_SIDE_DOWN;
        default:
            return KEY_INVALID;
    }
}

void AppFrame::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Escape:
        case Qt::Key_Backspace:
        case Qt::Key_Back:
            event->accept();
            if (!event->isAutoRepeat()) OnBackKey();
            return;
        case Qt::Key_Menu:
        case Qt::Key_F1:
            event->accept();
            if (!event->isAutoRepeat()) OnOptionkey();
            return;
        default:
            break;
    }
    const KeyCode key = SideKeyOf(*event);
    if (key == KEY_INVALID) {
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
    if (event->isAutoRepeat() || !current_) return;
    heldKey_ = key;
    heldForm_ = current_;
    longPressTimer_.Start(kLongPressMs);
    const QPointer<TivForm> form = current_;
    for (IKeyEventListener* listener : form->GetKeyEventListeners()) {
        if (!form) return;
        listener->OnKeyPressed(*form, key);
    }
}

void AppFrame::keyReleaseEvent(QKeyEvent* event) {
    const KeyCode key = SideKeyOf(*event);
    if (key == KEY_INVALID) {
        QWidget::keyReleaseEvent(event);
        return;
    }
    event->accept();
    if (event->isAutoRepeat()) return;
    longPressTimer_.Cancel();
    const QPointer<TivForm> form = heldKey_ == key ? heldForm_ : QPointer<TivForm>();
    heldKey_ = KEY_INVALID;
    heldForm_ = nullptr;
    if (!form) return;
    for (IKeyEventListener* listener : form->GetKeyEventListeners()) {
        if (!form) return;
        listener->OnKeyReleased(*form, key);
    }
}

void AppFrame::OnLongPress() {
    const QPointer<TivForm> form = heldForm_;
    if (!form || form != current_) return;
    const KeyCode key = heldKey_;
    for (IKeyEventListener* listener : form->GetKeyEventListeners()) {
        if (!form) return;
        listener->OnKeyLongPressed(*form, key);
    }
}

void AppFrame::OnSoftkey(int softkey) {
    TivForm* form = current_;
    if (form == nullptr) return;
    const auto key = TivForm::Softkey(softkey);
    if (IActionEventListener* listener = form->GetSoftkeyActionListener(key)) {
        listener->OnActionPerformed(*bar_, form->GetSoftkeyActionId(key));
    }
}

void AppFrame::OnOptionkey() {
    TivForm* form = current_;
    if (form == nullptr) return;
    if (IActionEventListener* listener = form->GetOptionkeyActionListener()) {
        listener->OnActionPerformed(*bar_, form->GetOptionkeyActionId());
    }
}

void AppFrame::OnBackKey() {
    TivForm* form = current_;
    if (form == nullptr) return;
    if (IFormBackEventListener* listener = form->GetFormBackEventListener()) {
        listener->OnFormBackRequested(*form);
    }
}
