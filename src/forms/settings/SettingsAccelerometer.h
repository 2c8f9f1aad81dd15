#pragma once

#include <QPointer>
#include <mutex>
#include <vector>

#include "AccelerometerMonitor.h"
#include "CrossThreadTrigger.h"
#include "SettingsScreen.h"

class GraphicAcc;
class QuorPedometer;

// Accelerometer sensitivity: a live meter of the raw movement value (GraphicAcc) over the
// walk, jog and run thresholds, one slider per gait (SensitivitySlider), the step
// detector (classic or adaptive) and the accelerometer to use (automatic, the Linux IIO
// device, or none, and which IIO device when there are several).
//
// While the screen is shown the application's detector (handed in) monitors: DataRecieved arrives on the sensor thread, and the values reach the meter on
// the GUI thread through a mutex-guarded list and a CrossThreadTrigger (the old event
// 101); the screen stays lit meanwhile (PowerManager). Monitoring ends when the screen
// is closed or the application goes to the background.
//
// Writes: the thresholds into the body profile (SaveBody); the preference "detector"
// ("classic"/"adaptive"), which also switches the running detector at once
// (QuorPedometer::SelectDetector); the preferences "sensor" ("auto", "iio", "iio-steps", "none") and
// "sensor-iio-device" (a device folder name, listed when there are several), used from
// the next start.
// Opened by "settings-sensitivity" and the settings menu. GUI thread only, but for
// DataRecieved.
class SettingsAccelerometer : public SettingsScreen, public AccelerometerMonitor {
    Q_OBJECT
public:
    static constexpr int ID_DETECTOR = 200;
    static constexpr int ID_SENSOR = 201;
    static constexpr int ID_IIO_DEVICE = 202;

    // The sensor choices in the order a tap steps through them.
    static const QStringList& SensorChoices();
    // The IIO accelerometers by folder name, best first, by the rule the source uses
    // (IioAccelerometerSource::Accelerometers under IioPaths' roots).
    static QStringList IioAccelerometers();

    // `detector` is the application's; it outlives the screen.
    explicit SettingsAccelerometer(QuorPedometer& detector, QWidget* parent = nullptr);
    ~SettingsAccelerometer() override;
    bool Initialize();

    void OnTerminating() override;
    void ProgramWillPause() override;
    void ProgramWillResume() override;
    void OnActionPerformed(const QWidget& source, int actionId) override;

    // Sensor thread.
    void DataRecieved(double value) override;

    GraphicAcc* GetMeter() const { return meter_; }
    bool IsMonitoring() const { return engine_ != nullptr; }

protected:
    QString TitleText() const override;
    void Fill(SettingsPanel& panel) override;

private:
    void StartMonitoring();
    void StopMonitoring();
    void DeliverValues();
    void UpdateThresholds();

    QPointer<GraphicAcc> meter_;
    QuorPedometer& detector_;
    QuorPedometer* engine_ = nullptr;  // the detector while monitored, or null
    std::mutex pendingMutex_;
    std::vector<double> pending_;  // values from the sensor thread not yet drawn
    CrossThreadTrigger trigger_;
};
