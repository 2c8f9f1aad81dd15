#pragma once

#include <QDateTime>
#include <vector>

#include "SettingsScreen.h"

class QLineEdit;

// "Calibrate step length": the user walks a known distance as a lap (or picks a lap
// walked before), enters how far it was (metres, or miles in imperial units), and the
// walking step length becomes distance / the lap's steps (StepLengthCalibration). A tap
// on the lap row picks the next older of the latest laps; a refused calibration says
// why and changes nothing. Opened from the profile ("settings-calibrate"). GUI thread only.
class SettingsCalibrate : public SettingsScreen {
    Q_OBJECT
public:
    static constexpr int ID_LAP = 220;
    static constexpr int ID_CALIBRATE = 221;
    static constexpr int kLapsOffered = 10;

    struct Lap {
        QDateTime start;
        int steps = 0;
    };

    explicit SettingsCalibrate(QWidget* parent = nullptr);
    bool Initialize();
    void OnActionPerformed(const QWidget& source, int actionId) override;

    // The latest stored laps with steps, newest first (at most kLapsOffered).
    static std::vector<Lap> LatestLaps();
    // A distance as typed: metres, or miles when `imperial`; in metres, 0 when unreadable.
    static double ParseDistance(const QString& text, bool imperial);

protected:
    QString TitleText() const override;
    void Fill(SettingsPanel& panel) override;

private:
    std::vector<Lap> laps_;
    bool lapsLoaded_ = false;
    std::size_t chosen_ = 0;
    QString distanceText_;
    QString message_;
    QLineEdit* distanceField_ = nullptr;
};
