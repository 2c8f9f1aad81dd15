#include "SettingsAccelerometer.h"

#include <QFileInfo>
#include <cmath>

#include "GraphicAcc.h"
#include "IioAccelerometerSource.h"
#include "IioPaths.h"
#include "PedometerDBManager.h"
#include "PowerManager.h"
#include "QuorPedometer.h"
#include "ScreenDirectory.h"
#include "SensitivitySlider.h"
#include "SettingsPanel.h"
#include "SoundsManager.h"
#include "CountingEngine.h"
#include "StepDetectorFactory.h"
#include "TivLabel.h"
#include "TivUtils.h"

namespace {
const QString kDetectorPreference = QStringLiteral("detector");
const QString kSensorPreference = QStringLiteral("sensor");
const QString kIioDevicePreference = QStringLiteral("sensor-iio-device");
// Values piling up while the GUI thread is busy are dropped beyond a meter's width.
constexpr size_t kMaxPending = GraphicAcc::kPoints;

const char* SensorTextKey(const QString& choice) {
    if (choice == QLatin1String("iio")) return "settings__ Linux IIO device";
    if (choice == QLatin1String("iio-steps")) return "settings__ Step counter in the chip";
    if (choice == QLatin1String("none")) return "settings__ None";
    return "settings__ Automatic";
}
}  // namespace

const QStringList& SettingsAccelerometer::SensorChoices() {
    static const QStringList kChoices = {QStringLiteral("auto"), QStringLiteral("iio"),
                                         QStringLiteral("iio-steps"), QStringLiteral("none")};
    return kChoices;
}

QStringList SettingsAccelerometer::IioAccelerometers() {
    QStringList names;
    for (const QString& path :
         IioAccelerometerSource::Accelerometers(IioPaths::DevicesRoot(), IioPaths::UdevDataRoot()))
        names.append(QFileInfo(path).fileName());
    return names;
}

SettingsAccelerometer::SettingsAccelerometer(QuorPedometer& detector, QWidget* parent)
    : SettingsScreen(parent), detector_(detector), trigger_([this] { DeliverValues(); }) {}

SettingsAccelerometer::~SettingsAccelerometer() {
    StopMonitoring();
}

bool SettingsAccelerometer::Initialize() {
    setObjectName(QStringLiteral("SettingsAccelerometer"));
    return true;
}

QString SettingsAccelerometer::TitleText() const {
    return Text("more__ Accelerometer sensitivity");
}

void SettingsAccelerometer::Fill(SettingsPanel& panel) {
    meter_ = new GraphicAcc;
    panel.AddWidget(meter_, 170);
    const int inset = int(std::lround(10 * TivUtils::GetScale()));
    meter_->setGeometry(meter_->geometry().adjusted(inset, 0, -inset, 0));
    UpdateThresholds();
    panel.AddNote(Text("settings__ A movement above a line counts as a step of that kind."), 34);
    for (int gait = 1; gait <= 3; ++gait) {
        auto* slider = new SensitivitySlider(gait, [this] { UpdateThresholds(); });
        panel.AddWidget(slider, 96);
        slider->Initialize();
    }
    panel.AddNote(Text("settings__ New sensitivities count from the next start."), 34);

    PedometerDBManager& db = PedometerDBManager::GetInstance();
    const DetectorKind kind = detector_.SelectedDetector();
    panel.AddHeader(Text("settings__ Step counting"));
    panel.AddValueRow(
        Text("settings__ Step detector"),
        Text(kind == DetectorKind::Adaptive ? "settings__ Adaptive" : "settings__ Classic"),
        ID_DETECTOR, this);
    // Room for two lines each: the German texts wrap.
    panel.AddNote(Text("settings__ Adaptive: learns how you carry the phone; counts most exactly."),
                  52);
    panel.AddNote(Text("settings__ Classic: counts a movement above the meter's lines."), 52);
    const QString sensor = db.GetPreference(kSensorPreference, QStringLiteral("auto"));
    panel.AddValueRow(Text("settings__ Accelerometer"), Text(SensorTextKey(sensor)), ID_SENSOR,
                      this);
    const QStringList devices = IioAccelerometers();
    if (sensor != QLatin1String("none") && devices.size() > 1) {
        QString device = db.GetPreference(kIioDevicePreference);
        if (!devices.contains(device)) device = Text("settings__ Automatic");
        panel.AddValueRow(Text("settings__ IIO device"), device, ID_IIO_DEVICE, this);
    }
    panel.AddNote(Text("settings__ The accelerometer is chosen when the pedometer starts."), 34);
    StartMonitoring();
}

void SettingsAccelerometer::UpdateThresholds() {
    // The meter shows twice the raw sum's change; a gait's machine moves once the change
    // of its own sum reaches the threshold.
    if (meter_) {
        meter_->SetThresholds(2.0 * SensitivitySlider::Threshold(1),
                              2.0 * SensitivitySlider::Threshold(2),
                              2.0 * SensitivitySlider::Threshold(3));
    }
}

void SettingsAccelerometer::OnActionPerformed(const QWidget& source, int actionId) {
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    switch (actionId) {
        case ID_DETECTOR: {
            SoundsManager::GetInstance().ClickSound();
            DetectorKind kind = detector_.SelectedDetector();
            kind = kind == DetectorKind::Adaptive ? DetectorKind::Classic : DetectorKind::Adaptive;
            db.SetPreference(kDetectorPreference, kind == DetectorKind::Adaptive
                                                      ? QStringLiteral("adaptive")
                                                      : QStringLiteral("classic"));
            detector_.SelectDetector(kind);
            Refill();
            return;
        }
        case ID_SENSOR: {
            SoundsManager::GetInstance().ClickSound();
            const QStringList& choices = SensorChoices();
            const int now = choices.indexOf(db.GetPreference(kSensorPreference));
            db.SetPreference(kSensorPreference, choices[(std::max(now, 0) + 1) % choices.size()]);
            Refill();
            return;
        }
        case ID_IIO_DEVICE: {
            SoundsManager::GetInstance().ClickSound();
            const QStringList devices = IioAccelerometers();
            if (devices.isEmpty()) return;
            const int now = devices.indexOf(db.GetPreference(kIioDevicePreference));
            db.SetPreference(kIioDevicePreference, devices[(now + 1) % devices.size()]);
            Refill();
            return;
        }
        default:
            SettingsScreen::OnActionPerformed(source, actionId);
    }
}

void SettingsAccelerometer::StartMonitoring() {
    if (engine_ != nullptr) return;
    engine_ = &detector_;
    engine_->SetScreenKeeper([](bool on) { PowerManager::KeepScreenOnState(on, false); });
    engine_->accelerometerSettings = this;
    engine_->startMonitoring();
}

void SettingsAccelerometer::StopMonitoring() {
    if (engine_ == nullptr) return;
    engine_->stopMonitoring();  // returns after a DataRecieved in progress
    engine_->accelerometerSettings = nullptr;
    engine_ = nullptr;
}

void SettingsAccelerometer::OnTerminating() {
    StopMonitoring();
    SettingsScreen::OnTerminating();
}

void SettingsAccelerometer::ProgramWillPause() {
    StopMonitoring();
}

void SettingsAccelerometer::ProgramWillResume() {
    StartMonitoring();
}

void SettingsAccelerometer::DataRecieved(double value) {
    {
        std::lock_guard lock(pendingMutex_);
        if (pending_.size() >= kMaxPending) pending_.erase(pending_.begin());
        pending_.push_back(value);
    }
    trigger_.Trigger();
}

void SettingsAccelerometer::DeliverValues() {
    std::vector<double> values;
    {
        std::lock_guard lock(pendingMutex_);
        values.swap(pending_);
    }
    if (meter_ && !values.empty()) meter_->AddValues(values);
}

PEDOMETER_SCREEN("settings-sensitivity", [](CountingEngine& engine, const ScreenRequest&,
                                            QString*) -> PedometerForm* {
    auto* form = new SettingsAccelerometer(engine.Detector());
    form->Initialize();
    return form;
});
