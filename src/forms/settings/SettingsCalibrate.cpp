#include "SettingsCalibrate.h"

#include <QLineEdit>
#include <QLocale>
#include <cmath>

#include "Body.h"
#include "BodyValueText.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "ScreenDirectory.h"
#include "SettingsPanel.h"
#include "SoundsManager.h"
#include "StepLengthCalibration.h"

namespace {
constexpr double kMetresPerMile = 1609.344;
}  // namespace

SettingsCalibrate::SettingsCalibrate(QWidget* parent) : SettingsScreen(parent) {}

bool SettingsCalibrate::Initialize() {
    setObjectName(QStringLiteral("SettingsCalibrate"));
    return true;
}

QString SettingsCalibrate::TitleText() const {
    return Text("profile__ Calibrate step length");
}

std::vector<SettingsCalibrate::Lap> SettingsCalibrate::LatestLaps() {
    std::vector<Lap> laps;
    for (const auto& [start, steps] :
         PedometerDBManager::GetInstance().GetLatestLapSteps(kLapsOffered)) {
        laps.push_back({start, steps});
    }
    return laps;
}

double SettingsCalibrate::ParseDistance(const QString& text, bool imperial) {
    bool ok = false;
    double value = QLocale().toDouble(text.trimmed(), &ok);
    if (!ok) value = QLocale::c().toDouble(text.trimmed(), &ok);
    if (!ok || !std::isfinite(value) || value <= 0.0) return 0.0;
    return imperial ? value * kMetresPerMile : value;
}

void SettingsCalibrate::Fill(SettingsPanel& panel) {
    if (!lapsLoaded_) {
        laps_ = LatestLaps();
        lapsLoaded_ = true;
    }
    const bool imperial = PedometerOptions::GetInstance().measurementSystem;
    panel.AddNote(Text("profile__ Walk a known distance as a lap, or pick a lap you walked, "
                       "and enter how far it was."),
                  60);
    if (laps_.empty()) {
        panel.AddNote(Text("profile__ No lap walked yet."), 34);
    } else {
        const Lap& lap = laps_[chosen_];
        panel.AddValueRow(Text("profile__ Lap"),
                          QStringLiteral("%1, %2").arg(
                              QLocale().toString(lap.start, QLocale::ShortFormat),
                              Text("profile__ %1 steps").arg(lap.steps)),
                          ID_LAP, this);
    }
    distanceField_ = panel.AddTextField(
        Text(imperial ? "profile__ Distance (mi)" : "profile__ Distance (m)"), distanceText_);
    panel.AddRowButton(Text("profile__ Calibrate step length"), ID_CALIBRATE, this);
    if (!message_.isEmpty()) panel.AddNote(message_, 60);
}

void SettingsCalibrate::OnActionPerformed(const QWidget& source, int actionId) {
    if (distanceField_ != nullptr) distanceText_ = distanceField_->text();
    switch (actionId) {
        case ID_LAP:
            SoundsManager::GetInstance().ClickSound();
            if (!laps_.empty()) chosen_ = (chosen_ + 1) % laps_.size();
            message_.clear();
            Refill();
            return;
        case ID_CALIBRATE: {
            SoundsManager::GetInstance().ClickSound();
            const bool imperial = PedometerOptions::GetInstance().measurementSystem;
            const int steps = laps_.empty() ? 0 : laps_[chosen_].steps;
            const StepLengthCalibration::Result result =
                StepLengthCalibration::Apply(ParseDistance(distanceText_, imperial), steps);
            message_ = result.verdict == StepLengthCalibration::Verdict::Calibrated
                           ? Text("profile__ Walk step calibrated: %1")
                                 .arg(BodyValueText::Length(result.stepLength * 100.0, imperial))
                           : Text(StepLengthCalibration::MessageKey(result.verdict));
            Refill();
            return;
        }
        default:
            SettingsScreen::OnActionPerformed(source, actionId);
    }
}

PEDOMETER_SCREEN("settings-calibrate", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* form = new SettingsCalibrate;
    form->Initialize();
    return form;
});
