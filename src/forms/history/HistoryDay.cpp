#include "HistoryDay.h"

#include <QLocale>

#include "AppResource.h"
#include "Clock.h"
#include "CountingEngine.h"
#include "DAOLap.h"
#include "DbDateTime.h"
#include "HistoryConfirmPopup.h"
#include "HistoryPanel.h"
#include "HistoryTotals.h"
#include "HourlyChart.h"
#include "LapEraser.h"
#include "HistoryLap.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "ScreenDirectory.h"
#include "SoundsManager.h"
#include "TivNavigationController.h"

namespace {
constexpr int kHourlyChartHeight = 220;

}  // namespace

HistoryDay::HistoryDay(CountingEngine& engine, QWidget* parent)
    : PedometerForm(parent), engine_(engine) {}

HistoryDay::~HistoryDay() = default;

bool HistoryDay::Initialize(const QDateTime& day, bool) {
    setObjectName(QStringLiteral("HistoryDay"));
    day_ = DbDateTime::DayStart(day);
    return true;
}

bool HistoryDay::IsToday() const {
    return day_.date() == Clock::Now().date();
}

void HistoryDay::OnInitializing() {
    SetBackgroundImage(QStringLiteral("MainScreen_bg.png"));
    if (IsToday()) {
        SetTitleText(AppResource::Text("history__ Today"));
        SetSoftkeyText(SOFTKEY_0, AppResource::Text("history__ Reports"));
        SetSoftkeyActionId(SOFTKEY_0, ID_REPORTS);
        AddSoftkeyActionListener(SOFTKEY_0, this);
    } else {
        // Weekday and short date: the long form does not fit the 320-wide title.
        const QLocale locale;
        SetTitleText(locale.dayName(day_.date().dayOfWeek(), QLocale::ShortFormat) +
                     QStringLiteral(", ") + locale.toString(day_.date(), QLocale::ShortFormat));
    }
    ShowBackButton();
    panel_ = new HistoryPanel(this);
    panel_->setGeometry(0, GetClientTop(), width(), height() - GetClientTop());
    SetGrowBandBelowHeader();
    panel_->show();
    popup_ = new HistoryConfirmPopup(*this, this);
}

void HistoryDay::FormWillAppear() {
    if (panel_ == nullptr) return;
    laps_ = PedometerDBManager::GetInstance().GetLapsForDate(day_);
    HistoryTotals totals(PedometerOptions::GetInstance().measurementSystem);
    for (const auto& lap : laps_) totals.AddLap(*lap);
    totals.PadSeries();

    const bool today = IsToday();
    panel_->Clear();
    panel_->AddSummary(
        totals, AppResource::Text(today ? "history__ Total today" : "history__ Totals"),
        AppResource::Text(today ? "history__ Today averages" : "history__ Averages"));
    HourlyTotals hours(day_.date());
    for (const auto& lap : laps_) hours.AddLap(*lap);
    if (hours.FirstHour() >= 0) {
        panel_->AddHeader(AppResource::Text("history__ By the hour"));
        hourlyChart_ = new HourlyChart;
        hourlyChart_->SetTotals(hours, 0, 23, PedometerOptions::GetInstance().measurementSystem);
        panel_->AddWidget(hourlyChart_, kHourlyChartHeight);
    } else {
        hourlyChart_ = nullptr;
    }
    panel_->AddHeader(AppResource::Text("history__ Laps"));
    const QLocale locale;
    for (int i = int(laps_.size()) - 1; i >= 0; --i) {
        const DAOLap& lap = *laps_[i];
        QString caption;
        if (lap.manual) {
            // Entered by hand: marked, with the steps it adds or takes away.
            int steps = 0;
            for (const auto& minute : lap.minutes) steps += minute->steps;
            caption = AppResource::Text("history__ By hand") + QStringLiteral(": ") +
                      locale.toString(lap.startDate.time(), QLocale::ShortFormat) +
                      QStringLiteral(", ") + (steps > 0 ? QStringLiteral("+") : QString()) +
                      locale.toString(steps) + QLatin1Char(' ') +
                      AppResource::Text("history__ steps");
        } else if (today && i == int(laps_.size()) - 1) {
            caption = AppResource::Text("history__ Current");
        } else {
            const QDateTime end = lap.endDate.value_or(lap.startDate);
            caption = locale.toString(lap.startDate, QLocale::ShortFormat) +
                      QStringLiteral(" - ") + locale.toString(end, QLocale::ShortFormat);
        }
        panel_->AddRowButton(caption, ID_LAP_FIRST + i, this);
    }
    panel_->AddRowButton(AppResource::Text("history__ Correct the day"), ID_CORRECT, this);
    panel_->AddResetButton(AppResource::Text("history__ Reset"),
                           AppResource::Text("history__ Reset day stats"), ID_RESET, this);
    panel_->AddGap(20);
}

void HistoryDay::ShowPopupWithText(const QString& text) {
    popup_->ShowWithText(text);
}

void HistoryDay::OnActionPerformed(const QWidget& source, int actionId) {
    if (popup_ != nullptr &&
        popup_->HandleAction(actionId, AppResource::Text("history__ Clear whole day data?"),
                             [this] { Erase(); })) {
        return;
    }
    if (actionId == ID_REPORTS) {
        SoundsManager::GetInstance().ClickSound();
        if (TivNavigationController* navigation = getNavigationController()) {
            ScreenDirectory::Open(QStringLiteral("history-reports"), *navigation);
        }
        return;
    }
    if (actionId == ID_CORRECT) {
        SoundsManager::GetInstance().ClickSound();
        if (TivNavigationController* navigation = getNavigationController()) {
            ScreenRequest request;
            request.day = day_.date();
            ScreenDirectory::Open(QStringLiteral("day-correct"), *navigation, request);
        }
        return;
    }
    const int index = actionId - ID_LAP_FIRST;
    if (index >= 0 && index < int(laps_.size())) {
        SoundsManager::GetInstance().ClickSound();
        auto* lapScreen = new HistoryLap(engine_);
        lapScreen->Initialize(std::move(laps_[index]));
        laps_.erase(laps_.begin() + index);  // the list is read again when this reappears
        if (TivNavigationController* navigation = getNavigationController()) {
            navigation->PushForm(lapScreen);
        } else {
            delete lapScreen;
        }
        return;
    }
    PedometerForm::OnActionPerformed(source, actionId);
}

void HistoryDay::Erase() {
    const LapEraser eraser(engine_.Statistics());
    for (const auto& lap : laps_) eraser.Erase(lap->id);
    FormWillAppear();
}

PEDOMETER_SCREEN("history-day", [](CountingEngine& engine, const ScreenRequest& request,
                                   QString*) -> PedometerForm* {
    auto* day = new HistoryDay(engine);
    day->Initialize(request.day.isValid() ? request.day.startOfDay() : Clock::Now());
    return day;
});
