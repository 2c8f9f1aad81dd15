#include "SettingsScreen.h"

#include <QScrollBar>

#include "AppResource.h"
#include "ScreenDirectory.h"
#include "SettingsPanel.h"
#include "TivNavigationController.h"

SettingsScreen::SettingsScreen(QWidget* parent) : PedometerForm(parent) {}

QString SettingsScreen::Text(const char* key) {
    return AppResource::Text(key);
}

QString SettingsScreen::OnOff(bool on) {
    return Text(on ? "settings__ On" : "settings__ Off");
}

void SettingsScreen::OnInitializing() {
    SetBackgroundImage(QStringLiteral("MainScreen_bg.png"));
    SetTitleText(TitleText());
    ShowBackButton();
    panel_ = new SettingsPanel(this);
    panel_->setGeometry(0, GetClientTop(), width(), height() - GetClientTop());
    SetGrowBandBelowHeader();
    panel_->show();
}

void SettingsScreen::FormWillAppear() {
    Refill();
}

void SettingsScreen::Refill() {
    if (panel_ == nullptr) return;
    const int scrolled = panel_->verticalScrollBar() ? panel_->verticalScrollBar()->value() : 0;
    panel_->Clear();
    panel_->AddGap(12);
    Fill(*panel_);
    panel_->AddGap(12);
    if (panel_->verticalScrollBar()) panel_->verticalScrollBar()->setValue(scrolled);
}

void SettingsScreen::Open(const QString& name) {
    TivNavigationController* navigation = getNavigationController();
    if (navigation == nullptr) return;
    QString error;
    if (ScreenDirectory::Open(name, *navigation, ScreenRequest{}, &error) == nullptr) {
        qWarning("%s", qPrintable(error));
    }
}
