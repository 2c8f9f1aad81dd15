#include "HistoryLap.h"

#include <QLocale>

#include "AppResource.h"
#include "CountingEngine.h"
#include "DAOLap.h"
#include "HistoryConfirmPopup.h"
#include "HistoryPanel.h"
#include "HistoryTotals.h"
#include "HourlyChart.h"
#include "LapEraser.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "ScreenDirectory.h"
#include "SoundsManager.h"
#include "TivNavigationController.h"

HistoryLap::HistoryLap(CountingEngine& engine, QWidget* parent)
    : PedometerForm(parent), engine_(engine) {}

HistoryLap::~HistoryLap() = default;

bool HistoryLap::Initialize(std::unique_ptr<DAOLap> lap) {
    setObjectName(QStringLiteral("HistoryLap"));
    lap_ = std::move(lap);
    return true;
}

void HistoryLap::OnInitializing() {
    SetBackgroundImage(QStringLiteral("MainScreen_bg.png"));
    // The lap's day and its start time: enough to tell it from the day's other laps.
    const QLocale locale;
    QString title = AppResource::Text("meter__ Lap");
    if (lap_) {
        title += QLatin1Char(' ') + locale.toString(lap_->startDate.date(), QLocale::ShortFormat) +
                 QLatin1Char(' ') + locale.toString(lap_->startDate.time(), QLocale::ShortFormat);
    }
    SetTitleText(title);
    ShowBackButton();
    panel_ = new HistoryPanel(this);
    panel_->setGeometry(0, GetClientTop(), width(), height() - GetClientTop());
    SetGrowBandBelowHeader();
    panel_->show();
    popup_ = new HistoryConfirmPopup(*this, this);
}

void HistoryLap::FormWillAppear() {
    if (panel_ == nullptr || !lap_) return;
    HistoryTotals totals(PedometerOptions::GetInstance().measurementSystem);
    totals.AddLap(*lap_);
    totals.PadSeries();
    panel_->Clear();
    panel_->AddSummary(totals, AppResource::Text("history__ Totals"),
                       AppResource::Text("history__ Averages"));
    // A lap over an hour also shows its hours, those of the day it started on.
    HourlyTotals hours(lap_->startDate.date());
    hours.AddLap(*lap_);
    if (hours.LastHour() > hours.FirstHour()) {
        panel_->AddHeader(AppResource::Text("history__ By the hour"));
        auto* chart = new HourlyChart;
        chart->SetTotals(hours, hours.FirstHour(), hours.LastHour(),
                         PedometerOptions::GetInstance().measurementSystem);
        panel_->AddWidget(chart, 220);
    }
    if (lap_->manual) {
        panel_->AddResetButton(AppResource::Text("history__ Remove"),
                               AppResource::Text("history__ Remove correction"), ID_RESET, this);
    } else {
        panel_->AddRowButton(AppResource::Text("history__ Take steps away"), ID_TAKE_AWAY, this);
        panel_->AddResetButton(AppResource::Text("history__ Reset"),
                               AppResource::Text("history__ Reset lap stats"), ID_RESET, this);
    }
    panel_->AddGap(20);
}

void HistoryLap::ShowPopupWithText(const QString& text) {
    popup_->ShowWithText(text);
}

void HistoryLap::OnActionPerformed(const QWidget& source, int actionId) {
    const auto erase = [this] {
        if (lap_) LapEraser(engine_.Statistics()).Erase(lap_->id);
        if (TivNavigationController* navigation = getNavigationController()) {
            navigation->PopForm(true);
        }
    };
    if (actionId == ID_TAKE_AWAY && lap_) {
        SoundsManager::GetInstance().ClickSound();
        if (TivNavigationController* navigation = getNavigationController()) {
            ScreenRequest request;
            request.lapId = lap_->id;
            ScreenDirectory::Open(QStringLiteral("day-correct"), *navigation, request);
        }
        return;
    }
    const char* question = lap_ && lap_->manual ? "history__ Remove the correction?"
                                                : "history__ Clear whole lap data?";
    if (popup_ == nullptr || !popup_->HandleAction(actionId, AppResource::Text(question), erase)) {
        PedometerForm::OnActionPerformed(source, actionId);
    }
}

PEDOMETER_SCREEN("history-lap", [](CountingEngine& engine, const ScreenRequest& request,
                                   QString* error) -> PedometerForm* {
    if (request.lapId < 0) {
        *error = QStringLiteral("history-lap shows one lap: give its id with --lap ID");
        return nullptr;
    }
    std::unique_ptr<DAOLap> lap = PedometerDBManager::GetInstance().GetLap(request.lapId);
    if (!lap) {
        *error = QStringLiteral("there is no lap %1 in the statistics").arg(request.lapId);
        return nullptr;
    }
    auto* screen = new HistoryLap(engine);
    screen->Initialize(std::move(lap));
    return screen;
});
