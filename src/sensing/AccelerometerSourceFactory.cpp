#include "AccelerometerSourceFactory.h"

#include <mutex>

#include "AccelerometerPlugin.h"
#include "AppPlugins.h"
#include "CsvReplaySource.h"
#include "IioAccelerometerSource.h"
#include "IioPaths.h"
#include "IioStepCounterSource.h"
#include "NullAccelerometerSource.h"
#include "PedometerDBManager.h"
#include "StepDetectorFactory.h"

namespace {
const QLatin1String kReplayPrefix("replay:");

std::mutex& choiceMutex() {
    static std::mutex mutex;
    return mutex;
}

QString& currentChoice() {
    static QString choice = QStringLiteral("auto");
    return choice;
}

// Qt Sensors' source, from the sensor plug-in; the "none" source without it.
std::unique_ptr<AccelerometerSource> MakeQtSensorsSource() {
    if (auto* plugin = AppPlugins::Get<AccelerometerPlugin>(QStringLiteral("pedometer-sensors")))
        return plugin->MakeSource();
    return std::make_unique<NullAccelerometerSource>();
}
}  // namespace

void AccelerometerSourceFactory::SetChoice(const QString& choice) {
    std::lock_guard lock(choiceMutex());
    currentChoice() = choice;
}

QString AccelerometerSourceFactory::Choice() {
    std::lock_guard lock(choiceMutex());
    return currentChoice();
}

bool AccelerometerSourceFactory::IsValidChoice(const QString& choice) {
    return choice == QLatin1String("auto") || choice == QLatin1String("qt") ||
           choice == QLatin1String("iio") || choice == QLatin1String("iio-steps") ||
           choice == QLatin1String("none") ||
           (choice.startsWith(kReplayPrefix) && choice.size() > kReplayPrefix.size());
}

std::unique_ptr<AccelerometerSource> AccelerometerSourceFactory::Create(QString* error) {
    return Create(Choice(), error);
}

std::unique_ptr<AccelerometerSource> AccelerometerSourceFactory::Create(const QString& choice,
                                                                        QString* error) {
    if (choice == QLatin1String("qt")) return MakeQtSensorsSource();
    if (choice == QLatin1String("iio")) return std::make_unique<IioAccelerometerSource>(IioOptions());
    if (choice == QLatin1String("iio-steps"))
        return std::make_unique<IioStepCounterSource>(IioPaths::DevicesRoot());
    if (choice.startsWith(kReplayPrefix)) {
        auto replay = CsvReplaySource::FromFile(choice.mid(kReplayPrefix.size()), error);
        if (replay) return replay;
        return std::make_unique<NullAccelerometerSource>();
    }
    if (choice == QLatin1String("auto")) {
        auto qt = MakeQtSensorsSource();
        if (qt->IsAvailable()) return qt;
        auto iio = std::make_unique<IioAccelerometerSource>(IioOptions());
        if (iio->IsAvailable()) return iio;
        return std::make_unique<NullAccelerometerSource>();
    }
    if (choice != QLatin1String("none") && error) {
        *error = QStringLiteral("unknown accelerometer source \"%1\"").arg(choice);
    }
    return std::make_unique<NullAccelerometerSource>();
}

IioAccelerometerSource::Options AccelerometerSourceFactory::IioOptions() {
    IioAccelerometerSource::Options options = IioAccelerometerSource::DefaultOptions();
    options.preferredDevice =
        PedometerDBManager::GetInstance().GetPreference(QStringLiteral("sensor-iio-device"));
    options.minimumHz = StepDetectorFactory::Configured() == DetectorKind::Adaptive
                            ? kAdaptiveMinimumHz
                            : kClassicMinimumHz;
    return options;
}
