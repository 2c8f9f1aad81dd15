#include "IioCapture.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <QFileInfo>
#include <QtGlobal>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <vector>

#include "AccelerometerListener.h"
#include "IioBuffer.h"
#include "IioSamplingFrequency.h"
#include "IioSysfs.h"
#include "SampleTicker.h"
#include "SensorStatus.h"

namespace {
constexpr double kStandardGravity = 9.80665;
constexpr int kTickMs = 30;
// Between searches while no accelerometer is there: cheap, and soon enough.
constexpr int kSearchMs = 3000;
// Before opening again a device that failed, was busy or vanished.
constexpr int kRetryMs = 1000;
// Reads that fail in a row before the device counts as gone.
constexpr int kFailuresToLose = 3;
// A buffer that delivers nothing for this long is opened again.
constexpr int kBufferSilenceMs = 5000;
const char* const kAxes[] = {"x", "y", "z"};

// The axis's own attribute, else the one shared by all axes.
bool readAttribute(const QString& device, const char* axis, const char* attribute,
                   double* value) {
    return IioSysfs::Number(QStringLiteral("%1/in_accel_%2_%3")
                                .arg(device, QLatin1String(axis), QLatin1String(attribute)),
                            value) ||
           IioSysfs::Number(QStringLiteral("%1/in_accel_%2").arg(device, QLatin1String(attribute)),
                            value);
}

qint64 nowMs() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}
}  // namespace

IioCapture::IioCapture(IioAccelerometerSource::Options options, AccelerometerListener* listener)
    : options_(std::move(options)),
      listener_(listener),
      wake_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

IioCapture::~IioCapture() {
    if (wake_ >= 0) ::close(wake_);
}

void IioCapture::RequestStop() {
    {
        std::lock_guard lock(deliveryMutex_);
        stopped_ = true;
    }
    stopping_.store(true);
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t put = ::write(wake_, &one, sizeof one);
    SensorStatus::Clear(SensorStatus::Problem::Busy);
    SensorStatus::Clear(SensorStatus::Problem::RateFixed);
}

void IioCapture::Reopen() {
    reopen_.store(true);
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t put = ::write(wake_, &one, sizeof one);
}

void IioCapture::ShareDevice(bool share) {
    if (shareDevice_.exchange(share) != share) Reopen();
}

bool IioCapture::WaitUntilFinished(int ms) {
    std::unique_lock lock(finishedMutex_);
    return finishedChanged_.wait_for(lock, std::chrono::milliseconds(ms),
                                     [this] { return finished_; });
}

bool IioCapture::Wait(int ms, int fd) {
    pollfd fds[2] = {{wake_, POLLIN, 0}, {fd, POLLIN, 0}};
    ::poll(fds, fd >= 0 ? 2 : 1, ms);
    if (fds[0].revents != 0) {
        std::uint64_t count = 0;
        [[maybe_unused]] const ssize_t got = ::read(wake_, &count, sizeof count);
    }
    return !stopping_.load() && !reopen_.load();
}

void IioCapture::Run() {
    while (!stopping_.load()) {
        reopen_.store(false);
        const QString device =
            IioAccelerometerSource::FindDevice(options_.devicesRoot, options_.udevDataRoot,
                                               options_.preferredDevice);
        if (device.isEmpty()) {
            Wait(kSearchMs);
            continue;
        }
        Outcome outcome = Outcome::NoBuffer;
        if (options_.buffered && !shareDevice_.load()) outcome = ReadBuffer(device);
        buffered_.store(false);
        if (outcome == Outcome::NoBuffer) outcome = Poll(device);
        if (outcome == Outcome::Lost || outcome == Outcome::Busy) Wait(kRetryMs);
    }
    {
        std::lock_guard lock(finishedMutex_);
        finished_ = true;
    }
    finishedChanged_.notify_all();
}

bool IioCapture::ReadCalibration(const QString& device) {
    for (int i = 0; i < 3; ++i) {
        if (!readAttribute(device, kAxes[i], "scale", &calibration_.scale[i])) return false;
        calibration_.offset[i] = 0.0;
        readAttribute(device, kAxes[i], "offset", &calibration_.offset[i]);
    }
    calibration_.matrix = IioAccelerometerSource::ReadMountMatrix(device, options_.udevDataRoot);
    return true;
}

AccelerationSample IioCapture::ToSample(const std::array<long long, 3>& raw) const {
    std::array<double, 3> chip{};
    for (int i = 0; i < 3; ++i)
        chip[i] = (double(raw[i]) + calibration_.offset[i]) * calibration_.scale[i] /
                  kStandardGravity;
    const std::array<double, 3> g = calibration_.matrix.Apply(chip);
    return {float(g[0]), float(g[1]), float(g[2])};
}

// One tick's reading: the same as the tick before is no news, but the tick still tells the
// listener that its 30 ms passed (the adaptive detector keeps time in ticks).
void IioCapture::Deliver(const AccelerationSample& sample) {
    const bool fresh = !haveLast_ || !(sample == last_);
    haveLast_ = true;
    last_ = sample;
    std::lock_guard lock(deliveryMutex_);
    if (stopped_) return;
    if (fresh)
        listener_->OnDataReceived(sample.x, sample.y, sample.z);
    else
        listener_->OnTickWithoutSample();
}

bool IioCapture::Busy(const QString& device, int error) {
    // The drivers refuse raw reads with EBUSY while another program has the buffer on.
    if (error != EBUSY && IioSysfs::Text(device + QStringLiteral("/buffer/enable")) != "1")
        return false;
    saidBusy_ = true;
    std::lock_guard lock(deliveryMutex_);
    if (!stopped_) SensorStatus::Report(SensorStatus::Problem::Busy, QFileInfo(device).fileName());
    return true;
}

void IioCapture::ReportRate(const QString& device, const QString& problem) {
    std::lock_guard lock(deliveryMutex_);
    if (stopped_) return;
    if (problem.isEmpty()) {
        SensorStatus::Clear(SensorStatus::Problem::RateFixed);
        return;
    }
    SensorStatus::Report(SensorStatus::Problem::RateFixed, problem);
    if (saidRate_ != problem)
        qWarning("%s: the sampling rate cannot be set: %s", qPrintable(device), qPrintable(problem));
    saidRate_ = problem;
}

IioCapture::Outcome IioCapture::Poll(const QString& device) {
    if (!ReadCalibration(device)) return Outcome::Lost;
    std::array<int, 3> fds{-1, -1, -1};
    const auto closeAll = [&fds] {
        for (int& fd : fds)
            if (fd >= 0) ::close(fd), fd = -1;
    };
    for (int i = 0; i < 3; ++i) {
        const QString path = QStringLiteral("%1/in_accel_%2_raw").arg(device, kAxes[i]);
        fds[i] = ::open(path.toLocal8Bit().constData(), O_RDONLY | O_CLOEXEC);
        if (fds[i] < 0) {
            const int error = errno;
            closeAll();
            return Busy(device, error) ? Outcome::Busy : Outcome::Lost;
        }
    }
    const IioSamplingFrequency::Outcome rate =
        IioSamplingFrequency::Apply(device, options_.minimumHz, /*polled=*/true);
    ReportRate(device, rate.problem);
    Outcome outcome = Outcome::Stopped;
    int failures = 0;
    qint64 nextMs = nowMs();
    while (!stopping_.load() && !reopen_.load()) {
        std::array<long long, 3> raw{};
        int error = 0;
        for (int i = 0; i < 3 && error == 0; ++i) error = IioSysfs::ReadInteger(fds[i], &raw[i]);
        if (error == 0) {
            failures = 0;
            if (saidBusy_) SensorStatus::Clear(SensorStatus::Problem::Busy);
            saidBusy_ = false;
            Deliver(ToSample(raw));
        } else if (Busy(device, error)) {
            outcome = Outcome::Busy;
            break;
        } else if (++failures >= kFailuresToLose) {
            outcome = Outcome::Lost;
            break;
        }
        // The next tick on the 30 ms grid; ticks missed by a slow read are skipped.
        const qint64 now = nowMs();
        nextMs += kTickMs;
        if (nextMs <= now) nextMs = now + kTickMs - (now - nextMs) % kTickMs;
        if (!Wait(int(nextMs - now))) break;
    }
    if (reopen_.load() && !stopping_.load()) outcome = Outcome::Reopen;
    closeAll();
    return outcome;
}

IioCapture::Outcome IioCapture::ReadBuffer(const QString& device) {
    if (!ReadCalibration(device)) return Outcome::Lost;
    IioBuffer buffer;
    QString why;
    switch (buffer.Open(device, options_.devRoot, options_.minimumHz, &why)) {
        case IioBuffer::Result::Open:
            break;
        case IioBuffer::Result::Busy:
        case IioBuffer::Result::Unavailable:
            if (!saidUnbuffered_)
                qWarning("Reading the accelerometer by polling, its buffer cannot be had: %s",
                         qPrintable(why));
            saidUnbuffered_ = true;
            return Outcome::NoBuffer;
    }
    buffered_.store(true);
    ReportRate(device, buffer.RateProblem());
    const IioScanLayout& layout = buffer.Layout();
    const int scanBytes = layout.ScanBytes();
    const qint64 periodNs = qint64(1e9 / buffer.RateHz());
    std::vector<std::uint8_t> bytes(std::size_t(scanBytes) * 256);
    std::size_t held = 0;
    SampleTicker ticker;
    qint64 untimedNs = 0;
    qint64 lastDataMs = nowMs();
    const auto deliver = [this](const AccelerationSample& sample) { Deliver(sample); };
    while (Wait(kBufferSilenceMs, buffer.Fd())) {
        const ssize_t got = ::read(buffer.Fd(), bytes.data() + held, bytes.size() - held);
        if (got < 0 && (errno == EAGAIN || errno == EINTR)) {
            if (nowMs() - lastDataMs > kBufferSilenceMs) return Outcome::Lost;
            continue;
        }
        if (got <= 0) return Outcome::Lost;  // the device went away
        lastDataMs = nowMs();
        held += std::size_t(got);
        std::size_t used = 0;
        for (; used + std::size_t(scanBytes) <= held; used += std::size_t(scanBytes)) {
            std::array<long long, 3> raw{};
            qint64 timeNs = untimedNs += periodNs;
            layout.Decode(bytes.data() + used, &raw, &timeNs);
            ticker.Add(timeNs, ToSample(raw), deliver);
        }
        std::memmove(bytes.data(), bytes.data() + used, held - used);
        held -= used;
    }
    return reopen_.load() && !stopping_.load() ? Outcome::Reopen : Outcome::Stopped;
}
