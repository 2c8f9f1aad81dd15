#include "IioAccelerometerSource.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>
#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

#include "AccelerationCsvReader.h"
#include "AccelerationRecording.h"
#include "AccelerometerListener.h"
#include "FakeIioDevice.h"
#include "IioMountMatrix.h"
#include "IioSamplingFrequency.h"
#include "IioScanLayout.h"
#include "IioStepCounter.h"
#include "IioStepCounterSource.h"
#include "NullAccelerometerSource.h"
#include "QuorPedometer.h"
#include "RecordingStepCounter.h"
#include "SampleLog.h"
#include "SensorStatus.h"
#include "SpinUntil.h"
#include "StepTally.h"
#include "TestData.h"

namespace {

IioAccelerometerSource::Options OptionsFor(const FakeIioDevice& device, bool buffered,
                                           double minimumHz = 33.0) {
    IioAccelerometerSource::Options options;
    options.devicesRoot = device.DevicesRoot();
    options.udevDataRoot = device.UdevDataRoot();
    options.devRoot = device.DevRoot();
    options.buffered = buffered;
    options.minimumHz = minimumHz;
    return options;
}

// The chip reading (0.1, -0.05, 1) g seen on the screen's axes, by the driver's matrix.
AccelerationSample Expected(const FakeIioDevice::Shape& shape) {
    IioMountMatrix matrix;
    const QByteArray udev(shape.udevProperties);
    const int at = udev.indexOf("ACCEL_MOUNT_MATRIX=");
    IioMountMatrix::Parse(at >= 0 ? QString::fromLatin1(udev.mid(at + 19)) : QString(shape.matrix),
                          &matrix);
    const std::array<double, 3> g = matrix.Apply({0.1, -0.05, 1.0});
    return {float(g[0]), float(g[1]), float(g[2])};
}

void ExpectNear(const AccelerationSample& got, const AccelerationSample& want) {
    EXPECT_NEAR(got.x, want.x, 0.005);
    EXPECT_NEAR(got.y, want.y, 0.005);
    EXPECT_NEAR(got.z, want.z, 0.005);
}

bool Feed(int fd, const QByteArray& bytes) {
    return ::write(fd, bytes.constData(), size_t(bytes.size())) == bytes.size();
}

// Each driver's tree, polled and buffered: the values, the matrix, the rate chosen for the
// way it is read, the trigger and the buffer's one-second watermark.
TEST(IioAccelerometerSourceTest, EveryDriverShapeDeliversPolledAndBuffered) {
    const QList<QByteArrayList> rates = testdata::Table("iio-driver-rates.tsv");
    for (std::size_t i = 0; i < FakeIioDevice::Shapes().size(); ++i) {
        const FakeIioDevice::Shape& shape = FakeIioDevice::Shapes()[i];
        SCOPED_TRACE(shape.driver);
        const QByteArrayList rate = rates.value(qsizetype(i));
        ASSERT_EQ(rate.value(0), shape.driver);
        const auto dir = testdata::MakeTempDir();
        const FakeIioDevice device(dir->path(), shape, 3);
        const AccelerationSample chip{0.1f, -0.05f, 1.0f};
        ASSERT_TRUE(device.SetReading(chip));
        {
            IioAccelerometerSource polled(OptionsFor(device, false));
            auto log = std::make_unique<SampleLog>();
            polled.Start(log.get());
            ASSERT_TRUE(log->WaitFor(1));
            polled.Stop();
            ExpectNear(log->Samples()[0], Expected(shape));
            EXPECT_EQ(device.Read(shape.rateAttribute).toDouble(), rate[1].toDouble());
        }
        const int feed = device.OpenFeed();
        ASSERT_GE(feed, 0);
        IioAccelerometerSource buffered(OptionsFor(device, true, 12.5));
        auto log = std::make_unique<SampleLog>();
        buffered.Start(log.get());
        QByteArray blocks;  // two seconds at 50 Hz, the reading changing after the first
        for (int n = 0; n < 100; ++n)
            blocks +=
                device.Scan(n < 50 ? chip : AccelerationSample{0, 0, 1}, 1000 + n * 20'000'000LL);
        ASSERT_TRUE(Feed(feed, blocks));
        ASSERT_TRUE(log->WaitFor(2));
        // Of the 66 ticks of 30 ms before the last scan, 64 brought nothing new.
        EXPECT_TRUE(SpinUntil([&] { return log->TicksWithoutSample() == 64; }, 5000));
        EXPECT_TRUE(buffered.IsBuffered());
        EXPECT_EQ(device.Read("buffer/enable"), "1");
        EXPECT_EQ(device.Read("buffer/watermark"), rate[3]);
        EXPECT_EQ(device.Read(shape.rateAttribute).toDouble(), rate[2].toDouble());
        if (*shape.trigger != 0) {
            EXPECT_EQ(device.Read("trigger/current_trigger"),
                      QString::fromLatin1(shape.trigger).replace("%1", "3").toLatin1());
        }
        buffered.Stop();
        ::close(feed);
        EXPECT_EQ(device.Read("buffer/enable"), "0");
        ExpectNear(log->Samples()[0], Expected(shape));
        EXPECT_EQ(log->Samples().size(), 2u);
    }
}

// A walk fed through each driver's buffer at full speed counts as the recording does.
TEST(IioAccelerometerSourceTest, AWalkThroughEveryDriverBufferCountsAsTheRecording) {
    PEDOMETER_WALKS_DIR(walks);
    AccelerationRecording walk;
    QString error;
    ASSERT_TRUE(
        AccelerationCsvReader::ReadFile(walks + "/walker-a-inhand-samsung-1.csv", &walk, &error))
        << error.toStdString();
    const int expected = RecordingStepCounter::Count(walk).Steps();
    for (const FakeIioDevice::Shape& shape : FakeIioDevice::Shapes()) {
        SCOPED_TRACE(shape.driver);
        const auto dir = testdata::MakeTempDir();
        const FakeIioDevice device(dir->path(), shape, 0);
        const int feed = device.OpenFeed();
        auto tally = std::make_unique<StepTally>();
        auto detector = std::make_unique<QuorPedometer>(std::make_unique<NullAccelerometerSource>(),
                                                        DetectorKind::Classic);
        detector->statistics = tally.get();
        detector->startUpdating();
        IioAccelerometerSource source(OptionsFor(device, true));
        source.Start(detector.get());
        QByteArray block;
        for (std::size_t i = 0; i < walk.Size(); ++i) {
            block += device.Scan(walk.Sample(i), walk.TimeNs(i));
            if (block.size() < 4096 && i + 1 < walk.Size()) continue;
            ASSERT_TRUE(Feed(feed, block));
            block.clear();
        }
        // Drained when the FIFO is empty and the last tick is delivered.
        QElapsedTimer timer;
        timer.start();
        int queued = 1;
        while (timer.elapsed() < 10000 && (::ioctl(feed, FIONREAD, &queued) != 0 || queued > 0))
            QThread::msleep(10);
        QThread::msleep(100);
        source.Stop();
        ::close(feed);
        detector->stopUpdating();
        EXPECT_NEAR(tally->Total(), expected, 5);
    }
}

// Faults of real devices, each healed without a restart: renumbered between runs, none
// at start, a failed open at start, busy in another program (said in the notice).
TEST(IioAccelerometerSourceTest, RecoversFromFaultsOfRealDevices) {
    const FakeIioDevice::Shape& shape = FakeIioDevice::Shapes()[0];
    enum Fault { Renumbered, NoneAtStart, FailedOpen, Busy };
    for (const Fault fault : {Renumbered, NoneAtStart, FailedOpen, Busy}) {
        SCOPED_TRACE(int(fault));
        const auto dir = testdata::MakeTempDir();
        QDir().mkpath(dir->path() + "/sys/bus/iio/devices");
        std::unique_ptr<FakeIioDevice> device;
        if (fault != NoneAtStart) device = std::make_unique<FakeIioDevice>(dir->path(), shape, 0);
        IioAccelerometerSource::Options options;
        options.devicesRoot = dir->path() + "/sys/bus/iio/devices";
        options.udevDataRoot = dir->path() + "/run/udev/data";
        options.buffered = false;
        IioAccelerometerSource source(options);
        EXPECT_TRUE(source.IsAvailable());
        auto log = std::make_unique<SampleLog>();
        const QString raw = "/sys/bus/iio/devices/iio:device0/in_accel_x_raw";
        if (fault == Renumbered) {
            source.Start(log.get());
            ASSERT_TRUE(log->WaitFor(1));
            source.Stop();
            ASSERT_TRUE(QFile::remove(dir->path() + "/sys/bus/iio/devices/iio:device0"));
            device = std::make_unique<FakeIioDevice>(dir->path(), shape, 7);
            ASSERT_TRUE(device->SetReading({0, 0, 2}));
        }
        if (fault == FailedOpen || fault == Busy) {
            // A read that fails with an errno (EISDIR here, EBUSY on a phone).
            ASSERT_TRUE(QFile::remove(dir->path() + raw));
            ASSERT_TRUE(QDir().mkpath(dir->path() + raw));
            if (fault == Busy) device->Write("buffer/enable", "1");
        }
        source.Start(log.get());
        QThread::msleep(300);
        QString key, detail;
        SensorStatus::Current(&key, &detail);
        EXPECT_EQ(key, fault == Busy ? SensorStatus::Key(SensorStatus::Problem::Busy) : "");
        if (fault == NoneAtStart) device = std::make_unique<FakeIioDevice>(dir->path(), shape, 0);
        if (fault == FailedOpen || fault == Busy) {
            ASSERT_TRUE(QDir(dir->path() + raw).removeRecursively());
            device->Write("buffer/enable", "0");
            device->SetReading({0, 0, 1});
        }
        ASSERT_TRUE(log->WaitFor(fault == Renumbered ? 2 : 1));
        SensorStatus::Current(&key, &detail);
        EXPECT_EQ(key, "");
        source.Stop();
    }
}

// While the window is shown the device is polled and its buffer left to the desktop's
// orientation service; hidden, the source takes the buffer, and gives it back when shown.
TEST(IioAccelerometerSourceTest, TheBufferIsLeftFreeWhileTheWindowIsShown) {
    const auto dir = testdata::MakeTempDir();
    const FakeIioDevice device(dir->path(), FakeIioDevice::Shapes()[0], 0);
    ASSERT_TRUE(device.SetReading({0.1f, -0.05f, 1.0f}));
    const int feed = device.OpenFeed();
    ASSERT_GE(feed, 0);
    IioAccelerometerSource source(OptionsFor(device, true));
    auto log = std::make_unique<SampleLog>();
    source.SetWindowShown(true);
    source.Start(log.get());
    ASSERT_TRUE(log->WaitFor(1));
    const auto bufferTurns = [&](const char* state) {
        for (int i = 0; i < 100 && device.Read("buffer/enable") != state; ++i) QThread::msleep(20);
        return device.Read("buffer/enable") == state;
    };
    EXPECT_TRUE(bufferTurns("0"));
    EXPECT_FALSE(source.IsBuffered());
    source.SetWindowShown(false);
    EXPECT_TRUE(bufferTurns("1"));
    source.SetWindowShown(true);
    EXPECT_TRUE(bufferTurns("0"));
    source.Stop();
    ::close(feed);
}

// A driver without a trigger of its own runs on the administrator's hrtimer trigger
// "pedometer", set to the device's rate.
TEST(IioAccelerometerSourceTest, ADriverWithoutATriggerUsesThePedometerTimer) {
    const auto dir = testdata::MakeTempDir();
    const FakeIioDevice device(dir->path(), FakeIioDevice::Shapes()[0], 3);
    const QString timer = device.DevicesRoot() + "/trigger9/";
    ASSERT_TRUE(testdata::WriteFile(device.DevicesRoot() + "/trigger3/name", "other-dev1"));
    ASSERT_TRUE(QDir().mkpath(timer));
    ASSERT_TRUE(testdata::WriteFile(timer + "name", "pedometer"));
    ASSERT_TRUE(testdata::WriteFile(timer + "sampling_frequency", "0"));
    const int feed = device.OpenFeed();
    IioAccelerometerSource source(OptionsFor(device, true, 12.5));
    auto log = std::make_unique<SampleLog>();
    source.Start(log.get());
    QByteArray blocks;
    for (int n = 0; n < 50; ++n)
        blocks += device.Scan({0, 0, n < 25 ? 1.0f : 2.0f}, n * 50'000'000LL);
    ASSERT_TRUE(Feed(feed, blocks));
    ASSERT_TRUE(log->WaitFor(1));
    EXPECT_EQ(device.Read("trigger/current_trigger"), "pedometer");
    QFile rate(timer + "sampling_frequency");
    ASSERT_TRUE(rate.open(QIODevice::ReadOnly));
    EXPECT_EQ(rate.readAll().trimmed(), device.Read("sampling_frequency"));
    source.Stop();
    ::close(feed);
}

// Stop gives the caller back at once while a read hangs in the driver (a FIFO nobody
// writes to stands in for it), and nothing is delivered after it.
TEST(IioAccelerometerSourceTest, StopIsBoundedWhileAReadHangs) {
    const auto dir = testdata::MakeTempDir();
    const FakeIioDevice device(dir->path(), FakeIioDevice::Shapes()[1], 0);
    const QString raw = device.Folder() + "/in_accel_y_raw";
    ASSERT_TRUE(QFile::remove(raw));
    ASSERT_EQ(::mkfifo(raw.toLocal8Bit().constData(), 0600), 0);
    const int writer = ::open(raw.toLocal8Bit().constData(), O_RDWR);
    auto source = std::make_unique<IioAccelerometerSource>(OptionsFor(device, false));
    auto log = std::make_shared<SampleLog>();
    source->Start(log.get());
    QThread::msleep(200);
    QElapsedTimer timer;
    timer.start();
    source.reset();
    EXPECT_LT(timer.elapsed(), 1000);  // unbounded before: the read would never return
    ASSERT_TRUE(Feed(writer, "5\n"));
    QThread::msleep(100);
    ::close(writer);
    EXPECT_TRUE(log->Samples().empty());
}

// Devices by the one rule the source and the settings share: placement by label or udev,
// then by number (10 after 2), the chosen one first; per-axis scales qualify.
TEST(IioAccelerometerSourceTest, FindsDevicesInOrder) {
    const auto dir = testdata::MakeTempDir();
    const auto& shapes = FakeIioDevice::Shapes();
    FakeIioDevice(dir->path(), shapes[4], 1);  // ACCEL_LOCATION=base
    FakeIioDevice(dir->path(), shapes[0], 10);
    FakeIioDevice(dir->path(), shapes[2], 2);
    const FakeIioDevice display(dir->path(), shapes[1], 4);           // udev +iio file: display
    QDir().mkpath(dir->path() + "/sys/bus/iio/devices/iio:device0");  // a light sensor
    const QString devices = display.DevicesRoot(), udev = display.UdevDataRoot();
    QStringList names;
    for (const QString& path : IioAccelerometerSource::Accelerometers(devices, udev))
        names << QFileInfo(path).fileName();
    EXPECT_EQ(names.join(' '), "iio:device4 iio:device2 iio:device10 iio:device1");
    EXPECT_TRUE(
        IioAccelerometerSource::FindDevice(devices, udev, "iio:device10").endsWith("device10"));
    EXPECT_TRUE(
        IioAccelerometerSource::FindDevice(devices, udev, "iio:device9").endsWith("device4"));
}

// The chip's own counter (bma400, bmi270, bmi323): switched on, read as differences, a
// count that went down started again from zero, an unreadable count says so.
TEST(IioAccelerometerSourceTest, HardwareStepCounterAddsDifferences) {
    const auto dir = testdata::MakeTempDir();
    const QString device = dir->path() + "/iio:device1";
    QDir().mkpath(device);
    ASSERT_TRUE(testdata::WriteFile(device + "/in_steps_en", "0\n"));
    ASSERT_TRUE(testdata::WriteFile(device + "/in_steps_input", "1200\n"));
    ASSERT_EQ(IioStepCounter::FindDevice(dir->path()), device);
    IioStepCounter counter(device);
    QString why;
    ASSERT_TRUE(counter.Enable(&why)) << why.toStdString();
    QFile enabled(device + "/in_steps_en");
    ASSERT_TRUE(enabled.open(QIODevice::ReadOnly));
    EXPECT_EQ(enabled.readAll().trimmed(), "1");
    for (const QByteArrayList& r : testdata::Table("chip-step-counts.tsv")) {
        ASSERT_TRUE(testdata::WriteFile(device + "/in_steps_input",
                                        r[0] == "empty" ? QByteArray("\n") : r[0] + "\n"));
        EXPECT_EQ(counter.Read(), r[1].toInt()) << r[0].toStdString();
    }
    // The source reads on its own thread, and at once after a resume.
    struct Steps : AccelerometerListener {
        void OnDataReceived(float, float, float) override {}
        void OnStepsCounted(int steps) override { counted += steps; }
        std::atomic<int> counted{0};
    } listener;
    ASSERT_TRUE(testdata::WriteFile(device + "/in_steps_input", "500\n"));
    IioStepCounterSource source(dir->path());
    source.Start(&listener);
    QThread::msleep(200);
    ASSERT_TRUE(testdata::WriteFile(device + "/in_steps_input", "542\n"));
    source.ReopenAfterResume();
    EXPECT_TRUE(SpinUntil([&] { return listener.counted == 42; }, 2000));
    source.Stop();
}

TEST(IioAccelerometerSourceTest, ScanTypesAndOfferedRates) {
    for (const QByteArrayList& t : testdata::Table("iio-scan-types.tsv")) {
        SCOPED_TRACE(t[0].toStdString());
        IioScanLayout::Channel c;
        ASSERT_EQ(IioScanLayout::ParseType(t[0], &c), t[1] != "bad");
        if (t[1] == "bad") continue;
        EXPECT_EQ(std::tuple(c.bigEndian, c.isSigned, c.bits, c.storageBits, c.repeat, c.shift),
                  std::tuple(t[1] == "1", t[2] == "1", t[3].toInt(), t[4].toInt(), t[5].toInt(),
                             t[6].toInt()));
    }
    for (const QByteArrayList& r : testdata::Table("iio-rates.tsv")) {
        SCOPED_TRACE(r[0].toStdString());
        const double minimum = r[1].toDouble();
        EXPECT_NEAR(IioSamplingFrequency::Pick(
                        IioSamplingFrequency::Offered(r[0], minimum), minimum),
                    r[2].toDouble(), 1e-6);
    }
    // A device already at the wanted rate is left alone (an ordinary user could not write it).
    const auto dir = testdata::MakeTempDir();
    const FakeIioDevice device(dir->path(), FakeIioDevice::Shapes()[0], 0);
    ASSERT_TRUE(device.Write(device.GetShape().rateAttribute, "50.000000"));
    const auto outcome = IioSamplingFrequency::Apply(device.Folder(), 33, false);
    EXPECT_EQ(std::pair(outcome.hz, outcome.problem), std::pair(50.0, QString()));
    EXPECT_EQ(device.Read(device.GetShape().rateAttribute), "50.000000");
}

}  // namespace
