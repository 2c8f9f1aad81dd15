#include "IioAccelerometerSource.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QThread>
#include <memory>
#include <mutex>
#include <vector>

#include "AccelerationSample.h"
#include "AccelerometerListener.h"
#include "IioMountMatrix.h"
#include "TestData.h"

namespace {

class SampleLog : public AccelerometerListener {
public:
    void OnDataReceived(float x, float y, float z) override {
        std::lock_guard lock(mutex_);
        samples_.push_back({x, y, z});
    }
    std::vector<AccelerationSample> Samples() {
        std::lock_guard lock(mutex_);
        return samples_;
    }
    bool WaitFor(std::size_t count) {
        QElapsedTimer timer;
        timer.start();
        while (Samples().size() < count && timer.elapsed() < 5000) QThread::msleep(5);
        return Samples().size() >= count;
    }

private:
    std::mutex mutex_;
    std::vector<AccelerationSample> samples_;
};

// A stand-in for /sys/bus/iio/devices with whatever attribute files a test asks for.
class FakeIio {
public:
    FakeIio() : dir_(testdata::MakeTempDir()) {}
    QString Root() const { return dir_->path(); }
    void Write(const QString& device, const QString& name, const QByteArray& value) {
        QDir(Root()).mkpath(device);
        ASSERT_TRUE(testdata::WriteFile(
            Root() + QLatin1Char('/') + device + QLatin1Char('/') + name, value + "\n"));
    }
    QByteArray Read(const QString& device, const QString& name) const {
        QFile file(Root() + QLatin1Char('/') + device + QLatin1Char('/') + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
    }
    void WriteAccelerometer(const QString& device) {
        Write(device, QStringLiteral("in_accel_x_raw"), "100");
        Write(device, QStringLiteral("in_accel_y_raw"), "-50");
        Write(device, QStringLiteral("in_accel_z_raw"), "1000");
        Write(device, QStringLiteral("in_accel_scale"), "0.00980665");
    }

private:
    std::unique_ptr<QTemporaryDir> dir_;
};

TEST(IioAccelerometerSourceTest, AvailableOnlyWithAllThreeAxesAndAScale) {
    FakeIio iio;
    EXPECT_FALSE(IioAccelerometerSource(iio.Root()).IsAvailable());
    EXPECT_FALSE(IioAccelerometerSource(iio.Root() + QStringLiteral("/missing")).IsAvailable());
    iio.Write(QStringLiteral("iio:device0"), QStringLiteral("in_temp_raw"), "20");  // not one
    iio.Write(QStringLiteral("iio:device1"), QStringLiteral("in_accel_x_raw"), "1");
    iio.Write(QStringLiteral("iio:device1"), QStringLiteral("in_accel_y_raw"), "1");
    iio.Write(QStringLiteral("iio:device1"), QStringLiteral("in_accel_z_raw"), "1");
    EXPECT_FALSE(IioAccelerometerSource(iio.Root()).IsAvailable());  // no scale
    iio.WriteAccelerometer(QStringLiteral("iio:device2"));
    const IioAccelerometerSource source(iio.Root());
    EXPECT_TRUE(source.IsAvailable());
    EXPECT_TRUE(source.DevicePath().endsWith(QStringLiteral("iio:device2")));
}

TEST(IioAccelerometerSourceTest, DeliversScaledReadingsInGWhenTheyChange) {
    FakeIio iio;
    const QString device = QStringLiteral("iio:device0");
    iio.WriteAccelerometer(device);
    iio.Write(device, QStringLiteral("in_accel_z_scale"), "0.0196133");  // beats the shared one
    iio.Write(device, QStringLiteral("in_accel_x_offset"), "-100");
    IioAccelerometerSource source(iio.Root());
    // On the heap: a listener in a reused stack slot confuses the thread sanitizer's
    // view of its (never destroyed) mutex.
    auto owned = std::make_unique<SampleLog>();
    SampleLog& log = *owned;
    source.Start(&log);
    ASSERT_TRUE(log.WaitFor(1));
    QThread::msleep(100);  // several more polls of the same values deliver nothing new
    iio.Write(device, QStringLiteral("in_accel_y_raw"), "500");
    ASSERT_TRUE(log.WaitFor(2));
    source.Stop();
    EXPECT_FALSE(source.IsRunning());

    const std::vector<AccelerationSample> samples = log.Samples();
    ASSERT_EQ(samples.size(), 2u);
    EXPECT_FLOAT_EQ(samples[0].x, 0.0f);
    EXPECT_FLOAT_EQ(samples[0].y, -0.05f);
    EXPECT_FLOAT_EQ(samples[0].z, 2.0f);
    EXPECT_FLOAT_EQ(samples[1].y, 0.5f);
}

// The chip turned a quarter turn in its case: its y is the screen's x, its -x the
// screen's y. udev's property beats the kernel's attribute; a broken one is ignored.
// Opening asks for the slowest offered rate of at least 33 Hz.
TEST(IioAccelerometerSourceTest, MountMatrixAndSamplingFrequency) {
    const QByteArray turn = "0, 1, 0; -1, 0, 0; 0, 0, 1";
    struct Case {
        QByteArray kernel, udev, rate, offered, expectedRate;
        float x, y;  // the chip reads x 0.1 g, y -0.05 g
    } cases[] = {
        {"", "", "12.5", "1.5 12.5 25 100 50", "50", 0.1f, -0.05f},
        {turn, "", "50", "12.5 50 100", "50", -0.05f, -0.1f},
        {"1,0,0;0,1,0;0,0,-1", turn, "10", "5 10 20", "10", -0.05f, -0.1f},
        {turn, "0, 1, 0; -1, 0", "10", "", "10", -0.05f, -0.1f},
        {"0,0,0;0,1,0;0,0,1", "", "40", "", "40", 0.1f, -0.05f},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE((c.kernel + " | " + c.udev + " | " + c.offered).constData());
        FakeIio iio;
        const QString device = QStringLiteral("iio:device0");
        iio.WriteAccelerometer(device);
        iio.Write(device, "in_accel_sampling_frequency", c.rate);
        if (!c.offered.isEmpty())
            iio.Write(device, "in_accel_sampling_frequency_available", c.offered);
        if (!c.kernel.isEmpty()) iio.Write(device, "in_accel_mount_matrix", c.kernel);
        if (!c.udev.isEmpty()) {
            iio.Write(device, "dev", "247:3");
            iio.Write("udev", "c247:3", "E:ID_X=1\nE:ACCEL_MOUNT_MATRIX=" + c.udev);
        }
        IioAccelerometerSource source(iio.Root(), iio.Root() + "/udev");
        auto log = std::make_unique<SampleLog>();
        source.Start(log.get());
        ASSERT_TRUE(log->WaitFor(1));
        source.Stop();
        EXPECT_FLOAT_EQ(log->Samples()[0].x, c.x);
        EXPECT_FLOAT_EQ(log->Samples()[0].y, c.y);
        EXPECT_FLOAT_EQ(log->Samples()[0].z, 1.0f);
        EXPECT_EQ(iio.Read(device, "in_accel_sampling_frequency"), c.expectedRate);
    }
}

TEST(IioAccelerometerSourceTest, PicksTheScreenAccelerometerAmongSeveral) {
    const struct {
        std::vector<const char*> labels;  // one device each, "" unlabelled
        int expected;
    } cases[] = {{{"", ""}, 0},
                 {{"accel-base", "accel-display"}, 1},
                 {{"accel-base", ""}, 1},
                 {{"accel-base"}, 0},
                 {{"", "accel-display"}, 1}};
    for (const auto& c : cases) {
        FakeIio iio;
        for (std::size_t d = 0; d < c.labels.size(); ++d) {
            iio.WriteAccelerometer(QStringLiteral("iio:device%1").arg(d));
            if (*c.labels[d] != 0)
                iio.Write(QStringLiteral("iio:device%1").arg(d), "label", c.labels[d]);
        }
        EXPECT_EQ(IioAccelerometerSource::FindDevice(iio.Root()),
                  iio.Root() + QStringLiteral("/iio:device%1").arg(c.expected));
    }
}

// After a suspend the device may come back under another number, with its own matrix.
TEST(IioAccelerometerSourceTest, CarriesOnWhenTheDeviceVanishesAndComesBack) {
    FakeIio iio;
    iio.WriteAccelerometer(QStringLiteral("iio:device0"));
    IioAccelerometerSource source(iio.Root());
    auto log = std::make_unique<SampleLog>();
    source.Start(log.get());
    ASSERT_TRUE(log->WaitFor(1));
    // Reading a removed sysfs file fails; an emptied file fails the same way here.
    ASSERT_TRUE(QFile(iio.Root() + QStringLiteral("/iio:device0/in_accel_x_raw")).resize(0));
    ASSERT_TRUE(QDir(iio.Root() + QStringLiteral("/iio:device0")).removeRecursively());
    QThread::msleep(200);
    const QString back = QStringLiteral("iio:device3");
    iio.WriteAccelerometer(back);
    iio.Write(back, QStringLiteral("in_accel_mount_matrix"), "-1,0,0;0,-1,0;0,0,1");
    ASSERT_TRUE(log->WaitFor(2));
    // A resume opens the device anew, rereading what may have changed meanwhile.
    iio.Write(back, QStringLiteral("in_accel_mount_matrix"), "1,0,0;0,1,0;0,0,1");
    source.ReopenAfterResume();
    ASSERT_TRUE(log->WaitFor(3));
    source.Stop();
    const std::vector<AccelerationSample> samples = log->Samples();
    ASSERT_EQ(samples.size(), 3u);
    EXPECT_FLOAT_EQ(samples[1].x, -0.1f);
    EXPECT_FLOAT_EQ(samples[1].y, 0.05f);
    EXPECT_FLOAT_EQ(samples[2].x, 0.1f);
}

}  // namespace
