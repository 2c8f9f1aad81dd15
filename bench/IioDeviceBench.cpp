// Figures for the IIO source against fake driver trees (FakeIioDevice):
//   bench_IioDevice wakeups buffered|polled [SECONDS] [RATE]
//     counts for SECONDS (60) from a device sampling at RATE Hz (50), fed by a child
//     process as the kernel would (a second of scans at a time, or the raw attributes
//     rewritten every sample), and prints each thread's wake-ups a second (voluntary
//     context switches from /proc/self/task/*/status) and the share of a core used.
//   bench_IioDevice stop
//     the time Stop takes while a read hangs in the driver for 5 s.
//   bench_IioDevice serve buffered|polled DRIVER FOLDER SECONDS
//     lays DRIVER's tree out under FOLDER and feeds it a walking swing at 50 Hz for
//     SECONDS, for running the application against it (see FakeIioDevice).
//   bench_IioDevice walk buffered|polled DRIVER SECONDS FILE...
//     the steps counted from the walks (joined, cut at SECONDS) fed through DRIVER's tree
//     in real time against the steps counted from the recording itself.
#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <map>
#include <memory>
#include <thread>

#include "AccelerationCsvReader.h"
#include "AccelerationRecording.h"
#include "AccelerometerListener.h"
#include "FakeIioDevice.h"
#include "IioAccelerometerSource.h"
#include "NullAccelerometerSource.h"
#include "QuorPedometer.h"
#include "RecordingStepCounter.h"
#include "StepTally.h"

namespace {
using Clock = std::chrono::steady_clock;

struct Counter : AccelerometerListener {
    std::atomic<long> samples{0};
    void OnDataReceived(float, float, float) override { ++samples; }
};

IioAccelerometerSource::Options optionsFor(const FakeIioDevice& device, bool buffered) {
    IioAccelerometerSource::Options options;
    options.devicesRoot = device.DevicesRoot();
    options.udevDataRoot = device.UdevDataRoot();
    options.devRoot = device.DevRoot();
    options.buffered = buffered;
    return options;
}

// A walking-like swing, so that samples change.
AccelerationSample swing(double seconds) {
    return {0.1f, float(0.3 * std::sin(seconds * 11.0)), float(1.0 + 0.4 * std::sin(seconds * 12.6))};
}

std::map<QString, long> contextSwitches() {
    std::map<QString, long> perThread;
    const QDir tasks(QStringLiteral("/proc/self/task"));
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile status(tasks.filePath(task + QStringLiteral("/status")));
        if (!status.open(QIODevice::ReadOnly)) continue;
        QString name;
        long switches = 0;
        for (const QByteArray& line : status.readAll().split('\n')) {
            if (line.startsWith("Name:")) name = QString::fromLatin1(line.mid(5).trimmed());
            if (line.startsWith("voluntary_ctxt_switches:")) switches = line.mid(24).trimmed().toLong();
        }
        perThread[task + QLatin1Char(' ') + name] = switches;
    }
    return perThread;
}

double cpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_utime.tv_sec + usage.ru_stime.tv_sec +
           (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

int wakeups(bool buffered, int seconds, double rate) {
    QTemporaryDir dir;
    const FakeIioDevice device(dir.path(), FakeIioDevice::Shapes()[0], 0);
    device.Write(QString::fromLatin1(device.GetShape().rateAttribute), QByteArray::number(rate));
    device.Write(QStringLiteral("sampling_frequency_available"), QByteArray::number(rate));
    const int feed = device.OpenFeed();
    // The feeder is another process, as the kernel is: its wake-ups are not ours.
    const pid_t feeder = fork();
    if (feeder == 0) {
        const auto start = Clock::now();
        const long perSecond = std::lround(rate);
        for (long second = 0;; ++second) {
            QByteArray block;  // the kernel wakes its reader once a second's worth is in
            for (long n = second * perSecond; n < (second + 1) * perSecond; ++n) {
                const double t = n / rate;
                if (buffered) {
                    block += device.Scan(swing(t), qint64(t * 1e9));
                } else {
                    std::this_thread::sleep_until(start + std::chrono::microseconds(long(t * 1e6)));
                    device.SetReading(swing(t));
                }
            }
            if (!buffered) continue;
            std::this_thread::sleep_until(start + std::chrono::seconds(second + 1));
            if (write(feed, block.constData(), size_t(block.size())) < 0) _exit(0);
        }
    }
    Counter counter;
    IioAccelerometerSource source(optionsFor(device, buffered));
    source.Start(&counter);
    QThread::sleep(2);  // settled: the device found, the buffer on
    const std::map<QString, long> before = contextSwitches();
    const double cpuBefore = cpuSeconds();
    const long samplesBefore = counter.samples.load();
    QThread::sleep(seconds);
    const std::map<QString, long> after = contextSwitches();
    const double cpu = cpuSeconds() - cpuBefore;
    const long samples = counter.samples.load() - samplesBefore;
    const bool wasBuffered = source.IsBuffered();
    source.Stop();
    kill(feeder, SIGKILL);
    waitpid(feeder, nullptr, 0);
    long total = 0;
    std::printf("%s at %.1f Hz for %d s (%s), %ld samples delivered\n",
                buffered ? "buffered" : "polled", rate, seconds,
                wasBuffered ? "read the buffer" : "polled", samples);
    for (const auto& [thread, switches] : after) {
        const long woke = switches - (before.count(thread) ? before.at(thread) : 0);
        total += woke;
        std::printf("  thread %-28s %7.2f wake-ups/s\n", qPrintable(thread), double(woke) / seconds);
    }
    std::printf("  whole process               %7.2f wake-ups/s, %.3f %% of a core\n",
                double(total) / seconds, 100.0 * cpu / seconds);
    return 0;
}

int stopTime() {
    QTemporaryDir dir;
    const FakeIioDevice device(dir.path(), FakeIioDevice::Shapes()[1], 0);
    const QString raw = device.Folder() + QStringLiteral("/in_accel_z_raw");
    QFile::remove(raw);
    mkfifo(raw.toLocal8Bit().constData(), 0600);
    const int writer = open(raw.toLocal8Bit().constData(), O_RDWR);
    // The read answers 5 s after it began.
    std::thread slow([writer] {
        std::this_thread::sleep_for(std::chrono::seconds(5));
        [[maybe_unused]] const ssize_t put = write(writer, "1\n", 2);
    });
    Counter counter;
    auto source = std::make_unique<IioAccelerometerSource>(optionsFor(device, false));
    source->Start(&counter);
    QThread::msleep(300);
    QElapsedTimer timer;
    timer.start();
    source.reset();
    std::printf("STOP to responsive with 5 s reads: %lld ms\n", timer.elapsed());
    slow.join();
    QThread::msleep(100);
    return 0;
}

int serve(bool buffered, const QString& driver, const QString& folder, int seconds) {
    const FakeIioDevice::Shape* shape = nullptr;
    for (const FakeIioDevice::Shape& s : FakeIioDevice::Shapes())
        if (driver == QLatin1String(s.driver)) shape = &s;
    if (shape == nullptr) return 1;
    const FakeIioDevice device(folder, *shape, 0);
    const int feed = device.OpenFeed();
    std::printf("PEDOMETER_SYSFS_ROOT=%s/sys PEDOMETER_UDEV_ROOT=%s/run/udev PEDOMETER_DEV_ROOT=%s/dev\n",
                qPrintable(folder), qPrintable(folder), qPrintable(folder));
    std::fflush(stdout);
    const auto start = Clock::now();
    for (long second = 0; second < seconds; ++second) {
        QByteArray block;
        for (long n = second * 50; n < (second + 1) * 50; ++n) {
            const double t = n / 50.0;
            if (buffered) {
                block += device.Scan(swing(t), qint64(t * 1e9));
            } else {
                std::this_thread::sleep_until(start + std::chrono::milliseconds(n * 20));
                device.SetReading(swing(t));
            }
        }
        std::this_thread::sleep_until(start + std::chrono::seconds(second + 1));
        // Nobody reading (the buffer not taken) must not stop the feed.
        if (buffered && fcntl(feed, F_SETFL, O_NONBLOCK) == 0) {
            [[maybe_unused]] const ssize_t put = write(feed, block.constData(), size_t(block.size()));
        }
    }
    return 0;
}

int walk(bool buffered, const QString& driver, double seconds, const QStringList& files) {
    AccelerationRecording recording;
    qint64 offset = 0;
    for (const QString& file : files) {
        AccelerationRecording part;
        QString error;
        if (!AccelerationCsvReader::ReadFile(file, &part, &error)) {
            std::fprintf(stderr, "%s\n", qPrintable(error));
            return 1;
        }
        for (std::size_t i = 0; i < part.Size() && offset + part.TimeNs(i) <= seconds * 1e9; ++i)
            recording.Append(offset + part.TimeNs(i), part.Sample(i));
        offset += part.DurationNs() + 30'000'000;
    }
    const FakeIioDevice::Shape* shape = nullptr;
    for (const FakeIioDevice::Shape& s : FakeIioDevice::Shapes())
        if (driver == QLatin1String(s.driver)) shape = &s;
    if (shape == nullptr) return 1;
    QTemporaryDir dir;
    const FakeIioDevice device(dir.path(), *shape, 0);
    const int feed = device.OpenFeed();
    StepTally tally;
    QuorPedometer detector(std::make_unique<NullAccelerometerSource>(), DetectorKind::Adaptive);
    detector.statistics = &tally;
    detector.startUpdating();
    IioAccelerometerSource source(optionsFor(device, buffered));
    source.Start(&detector);
    QThread::msleep(200);
    const auto start = Clock::now();
    QByteArray block;
    for (std::size_t i = 0; i < recording.Size(); ++i) {
        const auto due = start + std::chrono::nanoseconds(recording.TimeNs(i));
        if (buffered) {
            block += device.Scan(recording.Sample(i), recording.TimeNs(i));
            // The kernel wakes its reader once a second's worth is in.
            if (i + 1 < recording.Size() &&
                recording.TimeNs(i + 1) / 1'000'000'000 == recording.TimeNs(i) / 1'000'000'000)
                continue;
            std::this_thread::sleep_until(due);
            [[maybe_unused]] const ssize_t put = write(feed, block.constData(), size_t(block.size()));
            block.clear();
        } else {
            std::this_thread::sleep_until(due);
            device.SetReading(recording.Sample(i));
        }
    }
    QThread::msleep(500);
    source.Stop();
    detector.stopUpdating();
    std::printf("%-20s %-8s %5.0f s: %d steps through the device, %d counted from the recording\n",
                shape->driver, buffered ? "buffered" : "polled", recording.DurationNs() / 1e9,
                tally.Total(), RecordingStepCounter::Count(recording).Steps());
    return 0;
}
}  // namespace

int main(int argc, char** argv) {
    const QStringList args = [&] {
        QStringList list;
        for (int i = 1; i < argc; ++i) list << QString::fromLocal8Bit(argv[i]);
        return list;
    }();
    const QString what = args.value(0);
    const bool buffered = args.value(1) == QLatin1String("buffered");
    if (what == QLatin1String("wakeups"))
        return wakeups(buffered, args.value(2, QStringLiteral("60")).toInt(),
                       args.value(3, QStringLiteral("50")).toDouble());
    if (what == QLatin1String("stop")) return stopTime();
    if (what == QLatin1String("serve") && args.size() == 5)
        return serve(buffered, args[2], args[3], args[4].toInt());
    if (what == QLatin1String("walk") && args.size() >= 5)
        return walk(buffered, args[2], args[3].toDouble(), args.mid(4));
    std::fprintf(stderr,
                 "usage: bench_IioDevice wakeups buffered|polled [SECONDS] [RATE]\n"
                 "       bench_IioDevice stop\n"
                 "       bench_IioDevice serve buffered|polled DRIVER FOLDER SECONDS\n"
                 "       bench_IioDevice walk buffered|polled DRIVER SECONDS FILE...\n");
    return 2;
}
