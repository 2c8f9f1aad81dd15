#include "SettingsReset.h"

#include <QDateEdit>
#include <set>

#include "AppResource.h"
#include "Clock.h"
#include "Converter.h"
#include "DAOLap.h"
#include "HistoryConfirmPopup.h"
#include "CountingEngine.h"
#include "PedometerDBManager.h"
#include "ReportPopup.h"
#include "ScreenDirectory.h"
#include "SettingsPanel.h"
#include "SoundsManager.h"
#include "StatisticsManager.h"
#include "UpdaterThread.h"

namespace {
// Every day anything could have been recorded on, for "everything".
const QDate kFirstDay(2000, 1, 1);
const QDate kLastDay(2999, 12, 31);

// Fills the "%@" placeholders in order.
// "3 days", "1 lap": a count in the locale's format with its word in the right number.
QString Count(const char* key, long long count) {
    return AppResource::GetInstance().GetCountString(QString::fromUtf8(key), count,
                                                     Converter::GetCountString(count));
}

// The question before erasing a range of days, with each count in its own words.
QString EraseQuestion(const char* key, const SettingsReset::Extent& extent) {
    return AppResource::GetInstance().GetString(
        QString::fromUtf8(key), {Count("count__ %@ days", extent.days),
                                 Count("count__ %@ laps", extent.laps),
                                 Count("count__ %@ minute records", extent.minutes)});
}

struct Series {
    const char* textKey;
    const char* questionKey;
    double DAOBodyLog::*field;
    void (PedometerDBManager::*reset)();
};

const Series kSeries[4] = {
    {"settings__ Chest log", "settings__ Erase %@ chest measurements?", &DAOBodyLog::chest,
     &PedometerDBManager::ResetChest},
    {"settings__ Waist log", "settings__ Erase %@ waist measurements?", &DAOBodyLog::waist,
     &PedometerDBManager::ResetWaist},
    {"settings__ Hips log", "settings__ Erase %@ hips measurements?", &DAOBodyLog::hip,
     &PedometerDBManager::ResetHips},
    {"settings__ Weight log", "settings__ Erase %@ weight measurements?", &DAOBodyLog::weight,
     &PedometerDBManager::ResetWheight},
};

int Measured(double DAOBodyLog::*field) {
    int count = 0;
    for (const DAOBodyLog& log : PedometerDBManager::GetInstance().GetBodyLogs()) {
        if (log.*field != 0.0) ++count;
    }
    return count;
}
}  // namespace

SettingsReset::Extent SettingsReset::StatisticsExtent(const QDate& from, const QDate& to) const {
    Extent extent;
    std::set<QDate> days;
    const std::shared_ptr<DAOLap> recording = statistics_.GetCurrentLap();
    for (const auto& lap :
         PedometerDBManager::GetInstance().GetLapsForPeriod(from.startOfDay(), to.startOfDay())) {
        // A lap that holds nothing (the one opened at start, before a step) is not
        // recorded activity; the recording lap's steps of the last seconds are not stored yet.
        const bool stepping =
            recording && lap->id == recording->id && statistics_.GetLapSteps() != 0;
        if (lap->minutes.empty() && !stepping) continue;
        // The query's upper bound is the next midnight itself; a lap starting then
        // belongs to the next day and is erased with it.
        days.insert(lap->startDate.date());
        ++extent.laps;
        extent.minutes += int(lap->minutes.size());
    }
    extent.days = int(days.size());
    return extent;
}

void SettingsReset::EraseStatistics(const QDate& from, const QDate& to) {
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    StatisticsManager* statistics = &statistics_;
    const std::shared_ptr<DAOLap> lap = statistics->GetCurrentLap();
    // The lap being recorded goes with the day it started on (which is yesterday for a
    // lap counting across midnight), not only with today.
    const QDate lapDay = lap ? lap->startDate.date() : QDate();
    if (!lap || lapDay < from || to < lapDay) {
        db.ResetLogs(from.startOfDay(), to.startOfDay());
        return;
    }
    // Let an interval already handed over land first, let go of the lap, erase, and
    // record on in a new one.
    if (UpdaterThread* updater = statistics->GetUpdaterThread()) updater->WaitUntilIdle();
    statistics->WillClearData();
    db.ResetLogs(from.startOfDay(), to.startOfDay());
    statistics->StartNewLap();
}

SettingsReset::SettingsReset(StatisticsManager& statistics, QWidget* parent)
    : SettingsScreen(parent), statistics_(statistics) {}

bool SettingsReset::Initialize() {
    setObjectName(QStringLiteral("SettingsReset"));
    to_ = Clock::Now().date();
    from_ = to_;
    return true;
}

void SettingsReset::OnInitializing() {
    SettingsScreen::OnInitializing();
    popup_ = new HistoryConfirmPopup(*this, this);
    notice_ = new ReportPopup(this);
    notice_->Initialize(ID_NOTICE_OK, Text("settings__ OK"), this);
}

QString SettingsReset::TitleText() const {
    return Text("more__ Reset");
}

void SettingsReset::Fill(SettingsPanel& panel) {
    panel.AddHeader(Text("settings__ Statistics by date"));
    const auto [from, to] =
        panel.AddDateRange(Text("picker__ From"), Text("picker__ To"), from_, to_);
    fromField_ = from;
    toField_ = to;
    connect(from, &QDateEdit::dateChanged, this, [this](const QDate& date) { from_ = date; });
    connect(to, &QDateEdit::dateChanged, this, [this](const QDate& date) { to_ = date; });
    panel.AddRowButton(Text("settings__ Reset statistics of these days"), ID_RESET_RANGE, this);

    panel.AddHeader(Text("settings__ Body measurements"));
    for (int i = 0; i < 4; ++i)
        panel.AddRowButton(Text(kSeries[i].textKey), ID_RESET_CHEST + i, this);

    panel.AddHeader(Text("settings__ Everything"));
    panel.AddRowButton(Text("more__ Reset all statistics"), ID_RESET_ALL, this);
    panel.AddNote(Text("settings__ Settings, profile and goals are kept."), 34);
}

void SettingsReset::Ask(const QString& question, std::function<void()> erase) {
    erase_ = std::move(erase);
    popup_->ShowWithText(question);
}

void SettingsReset::OnActionPerformed(const QWidget& source, int actionId) {
    if (actionId == HistoryConfirmPopup::ID_CANCEL || actionId == HistoryConfirmPopup::ID_CONFIRM) {
        const std::function<void()> erase = std::exchange(erase_, nullptr);
        popup_->HandleAction(actionId, QString(), [&] {
            if (erase) erase();
            Refill();
        });
        return;
    }
    if (actionId == ID_NOTICE_OK) {
        SoundsManager::GetInstance().ClickSound();
        notice_->hide();
        return;
    }
    if (actionId == ID_RESET_RANGE) {
        SoundsManager::GetInstance().ClickSound();
        const QDate from = from_;
        const QDate to = to_;
        const Extent extent = StatisticsExtent(from, to);
        if (extent.laps == 0) {
            notice_->Show(Text("settings__ Nothing was recorded on these days."));
            return;
        }
        Ask(EraseQuestion("settings__ Erase %@ with %@ and %@?", extent),
            [this, from, to] { EraseStatistics(from, to); });
        return;
    }
    if (actionId >= ID_RESET_CHEST && actionId <= ID_RESET_WEIGHT) {
        SoundsManager::GetInstance().ClickSound();
        const Series& series = kSeries[actionId - ID_RESET_CHEST];
        Ask(Count(series.questionKey, Measured(series.field)),
            [reset = series.reset] { (PedometerDBManager::GetInstance().*reset)(); });
        return;
    }
    if (actionId == ID_RESET_ALL) {
        SoundsManager::GetInstance().ClickSound();
        const Extent extent = StatisticsExtent(kFirstDay, kLastDay);
        Ask(EraseQuestion("settings__ Erase all %@ with %@ and %@, and every body measurement?",
                          extent),
            [this] {
                EraseStatistics(kFirstDay, kLastDay);
                PedometerDBManager& db = PedometerDBManager::GetInstance();
                for (const Series& series : kSeries) (db.*series.reset)();
                db.ClearSygnals();
            });
        return;
    }
    SettingsScreen::OnActionPerformed(source, actionId);
}

PEDOMETER_SCREEN("settings-reset", [](CountingEngine& engine, const ScreenRequest&,
                                      QString*) -> PedometerForm* {
    auto* form = new SettingsReset(engine.Statistics());
    form->Initialize();
    return form;
});
