#include "DayCorrect.h"

#include <QLineEdit>
#include <QLocale>
#include <algorithm>
#include <cmath>
#include <tuple>

#include "AppResource.h"
#include "Body.h"
#include "Clock.h"
#include "DAOLap.h"
#include "DayCorrection.h"
#include "DistanceEntry.h"
#include "GoalFieldRow.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "ScreenDirectory.h"
#include "SoundsManager.h"
#include "TivLabel.h"
#include "TivNavigationController.h"
#include "TivUtils.h"

namespace {
// Sizes in the 480-wide layout: a caption over each row of fields.
constexpr int kContentGap = 24;
constexpr int kCaptionHeight = 36;
constexpr int kRowHeight = 84;
constexpr int kRowStep = kCaptionHeight + kRowHeight + 8;
constexpr int kSummaryLines = 3;

int StepsOf(const DAOLap& lap) {
    int steps = 0;
    for (const DAOLapMinutes& minute : lap.CopyMinutes()) steps += minute.steps;
    return steps;
}

// The field's whole number within 0..highest, written back (a text that is not a
// number counts as 0).
int ReadField(QLineEdit* field, int highest) {
    if (field == nullptr) return 0;
    const int value = std::clamp(field->text().toInt(), 0, highest);
    field->setText(QString::number(value));
    return value;
}
}  // namespace

DayCorrect::DayCorrect(QWidget* parent) : PedometerForm(parent) {}

DayCorrect::~DayCorrect() = default;

bool DayCorrect::InitializeForDay(const QDate& day) {
    setObjectName(QStringLiteral("DayCorrect"));
    day_ = day;
    return true;
}

bool DayCorrect::InitializeForLap(std::unique_ptr<DAOLap> lap) {
    setObjectName(QStringLiteral("DayCorrect"));
    if (!lap || lap->manual) return false;
    day_ = lap->startDate.date();
    const QDateTime after = lap->startDate.addSecs(1);
    for (const auto& other : PedometerDBManager::GetInstance().GetLapsForDate(day_.startOfDay())) {
        if (other->manual && other->startDate == after) previousTakeAway_ = other->id;
    }
    lap_ = std::move(lap);
    return true;
}

TivLabel* DayCorrect::AddCaption(const QString& text, int top, int lines) {
    auto* caption = new TivLabel(content_);
    caption->setObjectName(QStringLiteral("caption"));
    caption->SetText(text);
    caption->SetFontSize(TivUtils::Scaled(26));
    caption->SetNeedOutline(false);
    caption->SetTextColor(QColor(0xC8, 0xD2, 0xE6));
    const int margin = TivUtils::Scaled(30);
    caption->SetVerticalAlligment(TivLabel::ALIGN_TOP);
    caption->setGeometry(margin, top, content_->width() - 2 * margin,
                         TivUtils::Scaled(kCaptionHeight * lines));
    caption->show();
    return caption;
}

void DayCorrect::OnInitializing() {
    SetBackgroundImage(QStringLiteral("MainScreen_bg.png"));
    const bool takeAway = lap_ != nullptr;
    SetTitleText(
        AppResource::Text(takeAway ? "day_correct__ Take steps away" : "day_correct__ Add steps"));
    if (!takeAway) {
        GoalFieldRow::AddTabs(*this,
                              {{"day_correct__ Walk", ID_WALK},
                               {"day_correct__ Jog", ID_JOG},
                               {"day_correct__ Run", ID_RUN}},
                              0);
    }
    SetSoftkeyText(SOFTKEY_0,
                   AppResource::Text(takeAway ? "day_correct__ Take away" : "day_correct__ Add"));
    SetSoftkeyActionId(SOFTKEY_0, ID_SAVE);
    AddSoftkeyActionListener(SOFTKEY_0, this);
    ShowBackButton();

    const int top = GetClientTop() + TivUtils::Scaled(kContentGap);
    content_ = new QWidget(this);
    content_->setGeometry(0, top, width(), height() - top);
    content_->show();
    const auto edited = [this](QLineEdit& field) { Edited(field); };
    int y = 0;
    if (takeAway) {
        AddCaption(AppResource::Text("day_correct__ Counted in this lap: %1")
                       .arg(QLocale().toString(StepsOf(*lap_))),
                   y, 2);
        y += TivUtils::Scaled(2 * kCaptionHeight + 8);
    }
    AddCaption(
        AppResource::Text(takeAway ? "day_correct__ Steps to take away" : "day_correct__ Steps"),
        y);
    stepsRow_ =
        std::make_unique<GoalFieldRow>(*content_, y + TivUtils::Scaled(kCaptionHeight), edited);
    int taken = 0;
    if (previousTakeAway_ >= 0) {
        if (auto previous = PedometerDBManager::GetInstance().GetLap(previousTakeAway_)) {
            taken = -StepsOf(*previous);
        }
    }
    steps_ = stepsRow_->AddValue(5, taken, AppResource::Text("today_goal__ steps"), 180, 120);
    y += TivUtils::Scaled(kRowStep);
    if (!takeAway) {
        const bool miles = PedometerOptions::GetInstance().measurementSystem;
        AddCaption(AppResource::Text("day_correct__ Or the distance"), y);
        distanceRow_ =
            std::make_unique<GoalFieldRow>(*content_, y + TivUtils::Scaled(kCaptionHeight), edited);
        std::tie(whole_, fraction_) = distanceRow_->AddDistance(0.0, miles);
        y += TivUtils::Scaled(kRowStep);
        AddCaption(AppResource::Text("day_correct__ Started at"), y);
        hourRow_ =
            std::make_unique<GoalFieldRow>(*content_, y + TivUtils::Scaled(kCaptionHeight), edited);
        const QDateTime now = Clock::Now();
        // Today a walk that just ended, another day one around noon.
        const int hour = day_ == now.date() ? std::max(now.time().hour() - 1, 0) : 12;
        hour_ = hourRow_->AddValue(2, hour, QStringLiteral(":00"), 80, 100);
        y += TivUtils::Scaled(kRowStep);
    }
    summary_ = AddCaption({}, y, kSummaryLines);
    ShowDistanceOfSteps();
}

void DayCorrect::Edited(QLineEdit& field) {
    if (&field == whole_ || &field == fraction_) {
        const bool miles = PedometerOptions::GetInstance().measurementSystem;
        // A distance out of range is explained under the field and leaves the steps.
        const std::optional<double> km = GoalFieldRow::ReadDistance(*whole_, *fraction_, miles);
        if (!km) return;
        steps_->setText(QString::number(std::min(
            DayCorrection::StepsForDistance(*km * 1000.0, gait_, Body::GetInstance()), 99999)));
        ShowSummary();
        return;
    }
    if (&field == hour_) ReadField(hour_, 23);
    ShowDistanceOfSteps();
}

void DayCorrect::ShowDistanceOfSteps() {
    if (whole_ != nullptr && fraction_ != nullptr) {
        const bool miles = PedometerOptions::GetInstance().measurementSystem;
        const int steps = ReadField(steps_, 99999);
        const double km = steps * Body::GetInstance().getStepSize(gait_) / 1000.0;
        const DistanceEntry entry = DistanceEntry::FromKilometers(km, miles);
        whole_->setText(QString::number(std::min(entry.whole, 99)));
        fraction_->setText(entry.FractionText(miles));
    }
    ShowSummary();
}

std::unique_ptr<DAOLap> DayCorrect::Correction() const {
    const int steps = ReadField(steps_, 99999);
    if (lap_) return DayCorrection::TakenAway(*lap_, steps);
    const QDateTime start = day_.startOfDay().addSecs(qint64(ReadField(hour_, 23)) * 3600);
    return DayCorrection::Added(start, steps, gait_, Body::GetInstance());
}

void DayCorrect::ShowSummary() {
    if (summary_ == nullptr) return;
    const std::unique_ptr<DAOLap> correction = Correction();
    QString text;
    if (correction) {
        double distance = 0.0;
        double calories = 0.0;
        for (const auto& minute : correction->minutes) {
            distance += std::abs(minute->distance);
            calories += std::abs(minute->calories);
        }
        const bool miles = PedometerOptions::GetInstance().measurementSystem;
        const QLocale locale;
        const QString length = miles ? locale.toString(distance / 1609.344, 'f', 2) +
                                           QLatin1Char(' ') + AppResource::Text("history__ ml")
                                     : locale.toString(distance / 1000.0, 'f', 2) +
                                           QLatin1Char(' ') + AppResource::Text("today_goal__ km");
        text = AppResource::Text(lap_ ? "day_correct__ Takes away %1 %2 %3"
                                      : "day_correct__ Adds %1 %2 %3")
                   .arg(locale.toString(std::abs(StepsOf(*correction))), length,
                        locale.toString(calories, 'f', 0));
    }
    summary_->SetText(text);
    summary_->update();
}

bool DayCorrect::Save() {
    if (stepsRow_) stepsRow_->CommitEditing();
    if (distanceRow_) distanceRow_->CommitEditing();
    if (hourRow_) hourRow_->CommitEditing();
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    std::vector<std::unique_ptr<DAOLap>> laps;
    if (std::unique_ptr<DAOLap> correction = Correction()) {
        // A lap is known by its start (export and import rely on it): an added walk
        // moves on by a minute until its start is free.
        const auto existing = db.GetLapsForDate(day_.startOfDay());
        const auto taken = [&](const QDateTime& start) {
            return std::any_of(existing.begin(), existing.end(), [&](const auto& lap) {
                return lap->startDate == start && lap->id != previousTakeAway_;
            });
        };
        while (!lap_ && taken(correction->startDate)) {
            correction->startDate = correction->startDate.addSecs(60);
            correction->endDate = correction->endDate->addSecs(60);
        }
        laps.push_back(std::move(correction));
    }
    if (previousTakeAway_ >= 0) db.DeleteLap(previousTakeAway_);
    if (!laps.empty() && !db.ImportHistory(laps, {})) {
        summary_->SetText(AppResource::Text("day_correct__ Not saved"));
        summary_->update();
        return false;
    }
    if (TivNavigationController* navigation = getNavigationController()) navigation->PopForm(true);
    return true;
}

void DayCorrect::OnActionPerformed(const QWidget& source, int actionId) {
    if (actionId >= ID_WALK && actionId <= ID_RUN) {
        if (stepsRow_) stepsRow_->CommitEditing();
        SoundsManager::GetInstance().ClickSound();
        gait_ = actionId - 100;
        ShowDistanceOfSteps();
        return;
    }
    if (actionId == ID_SAVE) {
        SoundsManager::GetInstance().ClickSound();
        Save();
        return;
    }
    PedometerForm::OnActionPerformed(source, actionId);
}

PEDOMETER_SCREEN("day-correct", [](const ScreenRequest& request, QString* error) -> PedometerForm* {
    auto* screen = new DayCorrect();
    if (request.lapId < 0) {
        screen->InitializeForDay(request.day.isValid() ? request.day : Clock::Now().date());
        return screen;
    }
    std::unique_ptr<DAOLap> lap = PedometerDBManager::GetInstance().GetLap(request.lapId);
    const bool found = lap != nullptr;
    if (found && screen->InitializeForLap(std::move(lap))) return screen;
    *error = found ? QStringLiteral("lap %1 was entered by hand: remove it on its lap screen")
                         .arg(request.lapId)
                   : QStringLiteral("there is no lap %1 in the statistics").arg(request.lapId);
    delete screen;
    return nullptr;
});
