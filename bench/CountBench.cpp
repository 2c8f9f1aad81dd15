// `pedometer-cli count` on a whole day of sensor data.
//
// Writes a 24-hour recording at 100 samples per second (8.64 million lines, m/s^2, the
// layout phone recorders export) to /tmp unless it is already there, then runs
// `pedometer-cli count` on it and prints the wall time. Target: under 3 s.
//
//   bench_Count [--regenerate] [FILE]
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <cmath>
#include <cstdio>
#include <random>

#include "AccelerationRecorder.h"

namespace {

constexpr qint64 kSamples = 24LL * 3600 * 100;
constexpr qint64 kStepNs = 10'000'000;
constexpr double kG = 9.80665;

// The day: mostly lying still or carried quietly, with walks and a jog spread over it.
double strideAmplitude(double hour) {
    const double inHour = std::fmod(hour, 1.0);
    if (hour >= 7.0 && hour < 7.5) return 0.6;                    // morning jog
    if (inHour < 0.15 && hour >= 8.0 && hour < 20.0) return 0.3;  // walks every hour
    return 0.0;
}

bool writeDay(const QString& path) {
    AccelerationRecorder recorder(AccelerationRecorder::Unit::MetresPerSecondSquared);
    QString error;
    if (!recorder.Open(path, &error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return false;
    }
    std::mt19937 random(2024);
    std::normal_distribution<float> noise(0.0f, 0.05f);
    for (qint64 i = 0; i < kSamples; ++i) {
        const double t = i / 100.0;
        const double bounce = strideAmplitude(t / 3600.0) * std::sin(2 * M_PI * 1.9 * t);
        recorder.Append(i * kStepNs, static_cast<float>(0.4 + 0.2 * bounce * kG) + noise(random),
                        static_cast<float>(kG * (0.9 + bounce)) + noise(random),
                        static_cast<float>(3.1 + 0.5 * bounce * kG) + noise(random));
    }
    if (!recorder.Close(&error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    const bool regenerate = args.removeAll(QStringLiteral("--regenerate")) > 0;
    const QString path =
        args.isEmpty() ? QDir::temp().filePath(QStringLiteral("pedometer-24h.csv")) : args.first();

    if (regenerate || !QFileInfo::exists(path)) {
        std::printf("writing %s (%lld samples)...\n", qPrintable(path), kSamples);
        std::fflush(stdout);
        QElapsedTimer timer;
        timer.start();
        if (!writeDay(path)) return 1;
        std::printf("written in %.2f s\n", timer.elapsed() / 1000.0);
    }
    const double megabytes = QFileInfo(path).size() / 1e6;

    const QString cli = QCoreApplication::applicationDirPath() + QStringLiteral("/pedometer-cli");
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QElapsedTimer timer;
    timer.start();
    process.start(cli, {QStringLiteral("count"), path});
    if (!process.waitForFinished(-1) || process.exitCode() != 0) {
        std::fprintf(stderr, "%s failed\n", qPrintable(cli));
        return 1;
    }
    const double seconds = timer.elapsed() / 1000.0;
    std::printf("%s", process.readAllStandardOutput().constData());
    std::printf(
        "count: %.1f MB, %lld lines in %.2f s wall (%.1f M lines/s, %.0f MB/s); target < 3 s\n",
        megabytes, kSamples, seconds, kSamples / seconds / 1e6, megabytes / seconds);
    return 0;
}
