#include "HistoryPeriod.h"

#include <QLocale>
#include <cmath>

#include "AppResource.h"
#include "Clock.h"
#include "Converter.h"
#include "DAOTarget.h"
#include "HistoryPanel.h"
#include "HistoryTotals.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "PeriodChart.h"
#include "PeriodSummary.h"
#include "ScreenDirectory.h"
#include "SoundsManager.h"
#include "StreakRows.h"
#include "TivLabel.h"
#include "TivUtils.h"

namespace {
constexpr int kCaptionHeight = 40;
constexpr int kChartHeight = 290;
const QString kMeasurePreference = QStringLiteral("history.period.measure");

// The name and unit of a measure, in the user's units.
QString MeasureCaption(int measure, bool miles) {
    switch (measure) {
        case PeriodSummary::DISTANCE:
            return AppResource::Text("today_goal__ Distance") + QStringLiteral(" (") +
                   AppResource::Text(miles ? "history__ ml" : "today_goal__ km") + QLatin1Char(')');
        case PeriodSummary::CALORIES:
            return AppResource::Text("meter__ Calories") + QStringLiteral(" (") +
                   AppResource::Text("today_goal__ Cal") + QLatin1Char(')');
        case PeriodSummary::TIME:
            return AppResource::Text("today_goal__ Activity") + QStringLiteral(" (") +
                   AppResource::Text("today_goal__ min") + QLatin1Char(')');
        default:
            return AppResource::Text("meter__ Steps");
    }
}

// The figures of a measure's value as the rows show them.
QString ValueText(double value, int measure, bool miles) {
    switch (measure) {
        case PeriodSummary::DISTANCE:
            return QLocale().toString(value, 'f', 1) + QLatin1Char(' ') +
                   AppResource::Text(miles ? "history__ ml" : "today_goal__ km");
        case PeriodSummary::CALORIES:
            return QLocale().toString(value, 'f', 0) + QLatin1Char(' ') +
                   AppResource::Text("today_goal__ Cal");
        case PeriodSummary::TIME:
            return QLocale().toString(value, 'f', 0) + QLatin1Char(' ') +
                   AppResource::Text("today_goal__ min");
        default:
            return AppResource::GetInstance().GetCountString(
                QStringLiteral("count__ %@ steps"), std::llround(value),
                Converter::GetCountString(std::llround(value)));
    }
}
}  // namespace

HistoryPeriod::HistoryPeriod(QWidget* parent) : PedometerForm(parent) {}

HistoryPeriod::~HistoryPeriod() = default;

bool HistoryPeriod::Initialize(const QDate& from, const QDate& to, const QString& title) {
    setObjectName(QStringLiteral("HistoryPeriod"));
    from_ = from;
    to_ = to;
    title_ = title;
    return true;
}

void HistoryPeriod::OnInitializing() {
    SetBackgroundImage(QStringLiteral("MainScreen_bg.png"));
    SetTitleText(title_);
    ShowBackButton();
    const int margin = TivUtils::Scaled(10);
    int y = GetClientTop() + TivUtils::Scaled(6);
    caption_ = new TivLabel(this);
    caption_->Initialize();
    caption_->SetFontSize(TivUtils::Scaled(22));
    caption_->SetFontStyle(TivUtils::FONT_STYLE_BOLD);
    caption_->SetTextColor(HistoryPanel::kTitleColor);
    caption_->SetNeedOutline(false);
    caption_->SetHorizontalAlligment(TivLabel::ALIGN_LEFT);
    caption_->setGeometry(margin, y, width() * 3 / 5, TivUtils::Scaled(kCaptionHeight));
    auto* hint = new TivLabel(this);
    hint->Initialize();
    hint->SetFontSize(TivUtils::Scaled(17));
    hint->SetTextColor(QColor(128, 148, 176));
    hint->SetNeedOutline(false);
    hint->SetHorizontalAlligment(TivLabel::ALIGN_RIGHT);
    hint->SetText(AppResource::Text("meter__ Tap to change"));
    hint->setGeometry(width() * 3 / 5, y, width() * 2 / 5 - margin,
                      TivUtils::Scaled(kCaptionHeight));
    y += TivUtils::Scaled(kCaptionHeight);
    chart_ = new PeriodChart(this);
    chart_->setGeometry(0, y, width(), TivUtils::Scaled(kChartHeight));
    chart_->setProperty("touchTarget", true);
    // The chart and the rows below share the height.
    SetGrowBand(int(std::lround(y / TivUtils::GetScale())), ReferenceLayout::kClientHeight);
    chart_->SetTapHandler([this] {
        SoundsManager::GetInstance().ClickSound();
        NextMeasure();
    });
    y += TivUtils::Scaled(kChartHeight);
    panel_ = new HistoryPanel(this);
    panel_->setGeometry(0, y, width(), height() - y);
    const int stored = PedometerDBManager::GetInstance().GetPreference(kMeasurePreference).toInt();
    measure_ = stored >= 0 && stored < PeriodSummary::kMeasures ? stored : 0;
}

void HistoryPeriod::FormWillAppear() {
    if (chart_ == nullptr) return;
    summary_ = std::make_unique<PeriodSummary>(
        from_, to_, PedometerDBManager::GetInstance().GetDayTotals(from_, to_),
        PedometerOptions::GetInstance().measurementSystem);
    streaks_ = PedometerDBManager::GetInstance().GetGoalStreaks(from_, to_);
    ShowMeasure();
}

void HistoryPeriod::NextMeasure() {
    measure_ = (measure_ + 1) % PeriodSummary::kMeasures;
    PedometerDBManager::GetInstance().SetPreference(kMeasurePreference, QString::number(measure_));
    ShowMeasure();
}

void HistoryPeriod::ShowMeasure() {
    if (!summary_) return;
    const bool miles = PedometerOptions::GetInstance().measurementSystem;
    const PeriodSummary& s = *summary_;
    caption_->SetText(MeasureCaption(measure_, miles));
    caption_->update();
    chart_->SetSummary(&s, measure_, s.Goal(measure_, DAOTarget::GetInstance()));

    // Totals and daily averages in the day screens' words.
    HistoryTotals totals(miles);
    HistoryTotals averages(miles);
    for (int i = 0; i < s.DayCount(); ++i) {
        const DAODayTotals& day = s.Day(i);
        totals.steps += day.steps;
        totals.distance += day.distance;
        totals.calories += day.calories;
        totals.seconds += day.seconds;
    }
    const int days = std::max(1, s.DayCount());
    averages.steps = int(std::lround(double(totals.steps) / days));
    averages.distance = totals.distance / days;
    averages.calories = totals.calories / days;
    averages.seconds = int(std::lround(double(totals.seconds) / days));

    panel_->Clear();
    panel_->AddHeader(AppResource::Text("history__ Totals"));
    for (const QString& row : totals.TotalRows()) panel_->AddRow(row);
    panel_->AddRow(AppResource::Text("history__ Active days: ") +
                   Converter::GetCountString(s.ActiveDays()) + QStringLiteral(" / ") +
                   Converter::GetCountString(s.DayCount()));
    panel_->AddHeader(AppResource::Text("history__ Daily averages"));
    for (const QString& row : averages.TotalRows()) panel_->AddRow(row);
    const int best = s.BestDay(measure_);
    if (best >= 0) {
        panel_->AddRow(AppResource::Text("history__ Best day: ") +
                       QLocale().toString(s.Day(best).day, QLocale::ShortFormat) +
                       QStringLiteral(", ") + ValueText(s.Value(best, measure_), measure_, miles));
    }
    panel_->AddHeader(AppResource::Text("history__ Goal streaks"));
    for (const QString& row : StreakRows::Rows(streaks_)) panel_->AddRow(row);
    panel_->AddGap(20);
    panel_->show();
}

namespace {
PedometerForm* LastDays(int days, const char* titleKey) {
    auto* screen = new HistoryPeriod;
    const QDate today = Clock::Now().date();
    screen->Initialize(today.addDays(1 - days), today, AppResource::Text(titleKey));
    return screen;
}
}  // namespace

PEDOMETER_SCREEN("history-7", [](const ScreenRequest&, QString*) {
    return LastDays(7, "history__ Last 7 days");
});
PEDOMETER_SCREEN("history-30", [](const ScreenRequest&, QString*) {
    return LastDays(30, "history__ Last 30 days");
});
PEDOMETER_SCREEN("history-180", [](const ScreenRequest&, QString*) {
    return LastDays(180, "history__ Last 180 days");
});
PEDOMETER_SCREEN("history-range",
                 [](const ScreenRequest& request, QString* error) -> PedometerForm* {
                     if (!request.from.isValid() || !request.to.isValid()) {
                         *error = QStringLiteral(
                             "history-range shows a range of days: give both --from and --to");
                         return nullptr;
                     }
                     if (request.from > request.to) {
                         *error = QStringLiteral("history-range: --from %1 is after --to %2")
                                      .arg(request.from.toString(Qt::ISODate),
                                           request.to.toString(Qt::ISODate));
                         return nullptr;
                     }
                     auto* screen = new HistoryPeriod;
                     const QLocale locale;
                     screen->Initialize(request.from, request.to,
                                        locale.toString(request.from, QLocale::ShortFormat) +
                                            QStringLiteral(" – ") +
                                            locale.toString(request.to, QLocale::ShortFormat));
                     return screen;
                 });
