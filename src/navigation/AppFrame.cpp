#include "AppFrame.h"

#include <algorithm>
#include <QKeyEvent>
#include <QLinearGradient>
#include <QPainter>
#include <cmath>

#include "LayoutCheck.h"
#include "ReferenceLayout.h"
#include "SoftkeyBar.h"
#include "TapThroughGuard.h"
#include "TivForm.h"
#include "TivUtils.h"

AppFrame::AppFrame(QWidget* parent) : QWidget(parent), longPressTimer_([this] { OnLongPress(); }) {
    setMinimumSize(kSmallestSize);
    setFocusPolicy(Qt::StrongFocus);
    bar_ = new SoftkeyBar(this);
    new TapThroughGuard(this);
    resize(StartSize().isEmpty() ? ScreenSize() : StartSize());
    Relayout();  // a hidden window hears of its size only when shown
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
    const int width = TivUtils::GetStartupResolution();
    if (width == TivUtils::HVGA_WIDTH) return QSize(TivUtils::HVGA_WIDTH, HVGA_HEIGHT);
    const int height = int(std::lround(double(WVGA_HEIGHT) * width / TivUtils::WVGA_WIDTH));
    return QSize(width, height);
}

QSize& AppFrame::StartSize() {
    static QSize size;
    return size;
}

void AppFrame::SetStartSize(const QSize& size) {
    StartSize() = size;
}

bool AppFrame::ParseSize(const QString& text, QSize* size) {
    const QStringList parts = text.split(QLatin1Char('x'));
    if (parts.size() != 2) return false;
    bool wideOk = false;
    bool highOk = false;
    const QSize parsed(parts[0].toInt(&wideOk), parts[1].toInt(&highOk));
    if (!wideOk || !highOk || parsed.width() < kSmallestSize.width() ||
        parsed.height() < kSmallestSize.height() || parsed.width() > 16384 ||
        parsed.height() > 16384)
        return false;
    *size = parsed;
    return true;
}

QRect AppFrame::GetClientAreaBounds() const {
    return client_;
}

void AppFrame::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Relayout();
}

void AppFrame::Relayout() {
    const double scale = ReferenceLayout::ScaleFor(size());
    TivUtils::SetScale(scale);
    TivUtils::SetSmallestTextPx(LayoutCheck::SmallestAllowedText(size()));
    const QRect column = ReferenceLayout::ContentColumn(size());
    const int bar = ReferenceLayout::BarHeight(scale);
    client_ = QRect(column.x(), 0, column.width(), height() - bar);
    bar_->setGeometry(column.x(), height() - bar, column.width(), bar);
    for (const auto& held : forms_) {
        if (held) PlaceForm(*held);
    }
    update();
}

void AppFrame::PlaceForm(TivForm& form) {
    const double scale = TivUtils::GetScale();
    double extra = ReferenceLayout::ExtraFor(client_.height(), scale);
    if (form.growBandOnlyGrows_) extra = std::max(extra, 0.0);
    const ReferenceLayout::Placement to{scale, extra, form.growBandTop_, form.growBandBottom_};
    ReferenceLayout::Apply(form, form.placement_, to);
    form.placement_ = to;
    form.setGeometry(client_);
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
    forms_.append(&form);
    if (!form.initialized_) {
        // Built at the reference client height; PlaceForm then fits it to the window.
        const double scale = TivUtils::GetScale();
        form.setGeometry(client_.x(), 0, client_.width(),
                         int(std::lround(ReferenceLayout::kClientHeight * scale)));
        form.placement_ = ReferenceLayout::Placement{scale, 0, 0, 0};
        form.initialized_ = true;
        form.OnInitializing();
    }
    PlaceForm(form);
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
    // Behind the forms and beside them in a wide window: the screens' own dark gradient.
    QLinearGradient fill(0, 0, 0, height());
    fill.setColorAt(0.0, QColor(0x13, 0x21, 0x3A));
    fill.setColorAt(0.55, QColor(0x0B, 0x12, 0x22));
    fill.setColorAt(1.0, QColor(0x05, 0x08, 0x0F));
    QPainter(this).fillRect(rect(), fill);
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
