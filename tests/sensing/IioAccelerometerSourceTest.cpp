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

}  // namespace
