#include "HistoryDays.h"

#include <QScrollBar>

#include "AppResource.h"
#include "DayList.h"
#include "HistoryDay.h"
#include "HistoryPanel.h"
#include "PedometerDBManager.h"
#include "ScreenDirectory.h"
#include "TivNavigationController.h"
#include "TivUtils.h"

HistoryDays::HistoryDays(CountingEngine& engine, QWidget* parent)
    : PedometerForm(parent), engine_(engine) {}

bool HistoryDays::Initialize() {
    setObjectName(QStringLiteral("HistoryDays"));
    return true;
}

void HistoryDays::OnInitializing() {
    SetBackgroundImage(QStringLiteral("MainScreen_bg.png"));
    SetTitleText(AppResource::Text("history__ All days"));
    ShowBackButton();
    panel_ = new HistoryPanel(this);
    panel_->setGeometry(0, GetClientTop(), width(), height() - GetClientTop());
    SetGrowBandBelowHeader();
    panel_->show();
}

void HistoryDays::FormWillAppear() {
    if (panel_ == nullptr) return;
    // A day may have been erased in its HistoryDay: read the list again, keep the place.
    const int scrolled = panel_->verticalScrollBar()->value();
    std::vector<QDate> days;
    for (const QDateTime& day : PedometerDBManager::GetInstance().GetAllDays())
        days.push_back(day.date());
    panel_->Clear();
    list_ = nullptr;
    panel_->AddGap(10);
    if (days.empty()) {
        panel_->AddRow(AppResource::Text("history__ No data"));
        return;
    }
    const int count = int(days.size());
    list_ = new DayList(std::move(days), [this](const QDate& day) { OpenDay(day); });
    // The panel's units are the 480-wide layout's; the list's rows are whole pixels.
    panel_->AddWidget(list_, 0);
    list_->resize(list_->width(), count * DayList::RowHeight());
    panel_->Content()->resize(panel_->Content()->width(), list_->geometry().bottom() + 1);
    panel_->verticalScrollBar()->setValue(scrolled);
}

void HistoryDays::OpenDay(const QDate& day) {
    auto* screen = new HistoryDay(engine_);
    screen->Initialize(day.startOfDay());
    if (TivNavigationController* navigation = getNavigationController()) {
        navigation->PushForm(screen);
    } else {
        delete screen;
    }
}

PEDOMETER_SCREEN("history-days", [](CountingEngine& engine, const ScreenRequest&,
                                    QString*) -> PedometerForm* {
    auto* days = new HistoryDays(engine);
    days->Initialize();
    return days;
});
