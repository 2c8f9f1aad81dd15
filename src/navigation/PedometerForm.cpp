#include "PedometerForm.h"

#include <QMenu>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <cmath>

#include "AppResource.h"
#include "FormHeader.h"
#include "SoundsManager.h"
#include "TivNavigationController.h"
#include "TivUtils.h"

namespace {
// The background stretched to `size`, one pixel per logical pixel whatever the device's
// ratio: the pictures are soft gradients, and a full-screen render at a phone's scale 2
// would cost four times the memory for nothing to see. Shared by every screen of that size.
QPixmap Background(const QString& name, const QSize& size) {
    const QString key =
        QStringLiteral("PedometerForm:%1@%2x%3").arg(name).arg(size.width()).arg(size.height());
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) return pixmap;
    QSvgRenderer renderer(TivUtils::GetArtworkPath(name));
    if (!renderer.isValid() || size.isEmpty()) return {};
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        renderer.render(&painter, QRectF(QPointF(0, 0), QSizeF(size)));
    }
    pixmap = QPixmap::fromImage(std::move(image));
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}
}  // namespace

PedometerForm::PedometerForm(QWidget* parent) : TivForm(parent) {
    AddKeyEventListener(*this);
}

PedometerForm::~PedometerForm() = default;

void PedometerForm::SetBackgroundImage(const QString& name) {
    backgroundName_ = name;
    background_.reset();
    backgroundScale_ = 0;
    TivUtils::ReferenceSize(name);  // one warning now when the picture is missing
    update();
}

const QPixmap* PedometerForm::GetBackgroundImage() const {
    if (backgroundName_.isEmpty()) return nullptr;
    if (backgroundScale_ != TivUtils::GetScale()) {
        background_ = TivUtils::GetBitmapWithRightResolutionN(backgroundName_);
        backgroundScale_ = TivUtils::GetScale();
    }
    return background_.get();
}

bool PedometerForm::OnDraw(QPainter& painter) {
    // Stretched over the screen's grown or shortened height: the pictures are gradients.
    if (backgroundName_.isEmpty()) return true;
    const QPixmap background = Background(backgroundName_, size());
    if (!background.isNull()) painter.drawPixmap(rect(), background);
    return true;
}

void PedometerForm::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    OnDraw(painter);
}

// --- Option menu ---------------------------------------------------------------

void PedometerForm::InitOptionMenu(int actionId) {
    delete optionMenu_;
    optionMenu_ = new QMenu(this);
    optionMenu_->setObjectName(QStringLiteral("optionMenu"));
    // Styled when shown (ShowOptionMenu): its font and style sheet cost a screen's opening.
    SetOptionkeyActionId(actionId);
    AddOptionkeyActionListener(this);
}

void PedometerForm::StyleMenu(QMenu& menu) {
    menu.setFont(TivUtils::CreateFont(TivUtils::FONT_STYLE_PLAIN, TivUtils::Scaled(30)));
    menu.setMinimumWidth(TivUtils::Scaled(300));
    menu.setStyleSheet(QStringLiteral("QMenu { background: #162238; color: #F2F5FA;"
                                      " border: 1px solid #3A4458; padding: %1px 0; }"
                                      "QMenu::item { padding: %2px %3px; }"
                                      "QMenu::item:selected { background: #0C9FF9; }")
                           .arg(TivUtils::Scaled(6))
                           .arg(TivUtils::Scaled(16))
                           .arg(TivUtils::Scaled(28)));
}

void PedometerForm::AddOptionKey(const QString& text, int actionId) {
    if (!optionMenu_) {
        qWarning("PedometerForm: AddOptionKey before InitOptionMenu");
        return;
    }
    QAction* item = optionMenu_->addAction(text);
    item->setData(actionId);
    QMenu* menu = optionMenu_;
    connect(item, &QAction::triggered, this,
            [this, menu, actionId] { OnActionPerformed(*menu, actionId); });
}

void PedometerForm::ShowOptionMenu() {
    if (!optionMenu_) {
        qWarning("PedometerForm: ShowOptionMenu before InitOptionMenu");
        return;
    }
    StyleMenu(*optionMenu_);  // at the layout's current scale
    // Rising from the bottom-left corner, just above the soft-key bar.
    const QSize size = optionMenu_->sizeHint();
    optionMenu_->popup(mapToGlobal(QPoint(0, height() - size.height())));
}

void PedometerForm::HideOptionMenu() {
    if (optionMenu_) optionMenu_->hide();
}

// --- Title and tabs ------------------------------------------------------------

FormHeader& PedometerForm::Header() {
    if (header_ == nullptr) {
        header_ = new FormHeader(this);
        header_->SetActionListener(this);
        header_->show();
    }
    return *header_;
}

void PedometerForm::PlaceHeader() {
    if (header_ != nullptr) header_->setGeometry(0, 0, width(), header_->PreferredHeight());
}

void PedometerForm::SetTitleText(const QString& title) {
    Header().SetTitleText(title);
    PlaceHeader();
}

void PedometerForm::AddTabItem(const QString& text, int actionId) {
    Header().AddTab(text, actionId);
    PlaceHeader();
}

void PedometerForm::SetSelectedTabIndex(int index) {
    Header().SetSelectedTab(index);
}

int PedometerForm::GetSelectedTabIndex() const {
    return header_ != nullptr ? header_->GetSelectedTab() : -1;
}

int PedometerForm::GetClientTop() const {
    return header_ != nullptr ? header_->PreferredHeight() : 0;
}

void PedometerForm::SetGrowBandBelowHeader() {
    SetGrowBand(int(std::lround(GetClientTop() / TivUtils::GetScale())),
                ReferenceLayout::kClientHeight);
}

void PedometerForm::resizeEvent(QResizeEvent* event) {
    TivForm::resizeEvent(event);
    PlaceHeader();
}

// --- Back, actions and keys --------------------------------------------------------

void PedometerForm::ShowBackButton() {
    SetSoftkeyText(SOFTKEY_1,
                   AppResource::GetInstance().GetString(QStringLiteral("meter_ BackButton")));
    SetSoftkeyActionId(SOFTKEY_1, BACK_ACTION_ID);
    AddSoftkeyActionListener(SOFTKEY_1, this);
    SetFormBackEventListener(this);
}

void PedometerForm::OnActionPerformed(const QWidget&, int actionId) {
    if (actionId == BACK_ACTION_ID) OnFormBackRequested(*this);
}

void PedometerForm::OnFormBackRequested(TivForm&) {
    SoundsManager::GetInstance().ClickSound();
    // A question or note over the screen (property "closesOnBack") is what the back key
    // closes, not the screen beneath it.
    for (QWidget* child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (child->isVisible() && child->property("closesOnBack").toBool()) {
            child->hide();
            return;
        }
    }
    if (TivNavigationController* controller = getNavigationController()) controller->PopForm(true);
}

void PedometerForm::OnKeyPressed(const QWidget&, KeyCode keyCode) {
    if (keyCode == KEY_SIDE_UP) SoundsManager::GetInstance().SoundUp();
    if (keyCode == KEY_SIDE_DOWN) SoundsManager::GetInstance().SoundDown();
}

void PedometerForm::OnKeyReleased(const QWidget&, KeyCode) {}

void PedometerForm::OnKeyLongPressed(const QWidget&, KeyCode keyCode) {
    if (keyCode == KEY_SIDE_UP) SoundsManager::GetInstance().SoundOn();
    if (keyCode == KEY_SIDE_DOWN) SoundsManager::GetInstance().SoundOff();
}
