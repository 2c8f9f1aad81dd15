#include "IioAccelerometerSource.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

#include "IioCapture.h"
#include "IioPaths.h"
#include "IioSysfs.h"

namespace {
// How long Stop waits for the sensor thread before leaving it to end by itself.
constexpr int kStopWaitMs = 100;

bool isAccelerometer(const QString& device) {
    for (const char* axis : {"x", "y", "z"}) {
        const QString stem = QStringLiteral("%1/in_accel_%2_").arg(device, QLatin1String(axis));
        double scale = 0.0;
        if (!QFileInfo::exists(stem + QStringLiteral("raw")) ||
            (!IioSysfs::Number(stem + QStringLiteral("scale"), &scale) &&
             !IioSysfs::Number(device + QStringLiteral("/in_accel_scale"), &scale))) {
            return false;
        }
    }
    return true;
}

// The number of an "iio:deviceN" folder, for ordering devices as numbers.
int deviceNumber(const QString& path) {
    bool ok = false;
    const int number = QFileInfo(path).fileName().section(QLatin1String("device"), -1).toInt(&ok);
    return ok ? number : INT_MAX;
}

// 0 for the screen's accelerometer, 2 for the keyboard base's, 1 for any other.
int placement(const QString& device, const QString& udevDataRoot) {
    QByteArray where = IioSysfs::Text(device + QStringLiteral("/label"));
    if (where.isEmpty())
        where = "accel-" +
                IioAccelerometerSource::UdevProperty(device, udevDataRoot, "ACCEL_LOCATION").toLatin1();
    return where == "accel-display" ? 0 : where == "accel-base" ? 2 : 1;
}
}  // namespace

IioAccelerometerSource::Options IioAccelerometerSource::DefaultOptions() {
    Options options;
    options.devicesRoot = IioPaths::DevicesRoot();
    options.udevDataRoot = IioPaths::UdevDataRoot();
    options.devRoot = IioPaths::DevRoot();
    return options;
}

IioAccelerometerSource::IioAccelerometerSource(Options options) : options_(std::move(options)) {}

IioAccelerometerSource::~IioAccelerometerSource() {
    Stop();
}

QStringList IioAccelerometerSource::Accelerometers(const QString& root,
                                                   const QString& udevDataRoot) {
    struct Found {
        int placement;
        int number;
        QString path;
    };
    std::vector<Found> found;
    const QDir dir(root);
    for (const QString& entry : dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString device = dir.filePath(entry);
        if (isAccelerometer(device))
            found.push_back({placement(device, udevDataRoot), deviceNumber(device), device});
    }
    std::sort(found.begin(), found.end(), [](const Found& a, const Found& b) {
        return std::tie(a.placement, a.number, a.path) < std::tie(b.placement, b.number, b.path);
    });
    QStringList paths;
    for (const Found& f : found) paths.append(f.path);
    return paths;
}

QString IioAccelerometerSource::FindDevice(const QString& root, const QString& udevDataRoot,
                                           const QString& preferred) {
    const QStringList found = Accelerometers(root, udevDataRoot);
    for (const QString& device : found)
        if (!preferred.isEmpty() && QFileInfo(device).fileName() == preferred) return device;
    return found.value(0);
}

QString IioAccelerometerSource::UdevProperty(const QString& device, const QString& udevDataRoot,
                                             const QByteArray& key) {
    if (udevDataRoot.isEmpty()) return {};
    // Devices with a character device are filed by its number, others by subsystem and name.
    const QByteArray number = IioSysfs::Text(device + QStringLiteral("/dev"));
    const QString files[] = {
        number.isEmpty() ? QString() : udevDataRoot + QStringLiteral("/c") + QString::fromLatin1(number),
        udevDataRoot + QStringLiteral("/+iio:") + QFileInfo(device).fileName()};
    const QByteArray prefix = "E:" + key + '=';
    for (const QString& file : files) {
        if (file.isEmpty()) continue;
        QByteArray text;
        if (IioSysfs::Read(file, &text) != 0) continue;
        for (const QByteArray& line : text.split('\n'))
            if (line.startsWith(prefix)) return QString::fromLatin1(line.mid(prefix.size()));
    }
    return {};
}

IioMountMatrix IioAccelerometerSource::ReadMountMatrix(const QString& device,
                                                       const QString& udevDataRoot) {
    IioMountMatrix matrix;
    const QString candidates[] = {
        UdevProperty(device, udevDataRoot, "ACCEL_MOUNT_MATRIX"),
        QString::fromLatin1(IioSysfs::Text(device + QStringLiteral("/in_accel_mount_matrix"))),
        QString::fromLatin1(IioSysfs::Text(device + QStringLiteral("/in_mount_matrix"))),
        QString::fromLatin1(IioSysfs::Text(device + QStringLiteral("/mount_matrix")))};
    for (const QString& text : candidates) {
        if (!text.isEmpty() && IioMountMatrix::Parse(text, &matrix)) break;
    }
    return matrix;
}

bool IioAccelerometerSource::IsAvailable() const {
    return QFileInfo(options_.devicesRoot).isDir();
}

QString IioAccelerometerSource::DevicePath() const {
    return FindDevice(options_.devicesRoot, options_.udevDataRoot, options_.preferredDevice);
}

void IioAccelerometerSource::Start(AccelerometerListener* listener) {
    if (listener == nullptr || IsRunning()) return;
    Stop();
    auto capture = std::make_shared<IioCapture>(options_, listener);
    std::lock_guard lock(captureMutex_);
    capture->ShareDevice(windowShown_);
    thread_ = std::thread([capture] { capture->Run(); });
    capture_ = std::move(capture);
}

void IioAccelerometerSource::Stop() {
    std::shared_ptr<IioCapture> capture;
    {
        std::lock_guard lock(captureMutex_);
        capture.swap(capture_);
    }
    if (!capture) return;
    capture->RequestStop();
    // A read that blocks in the driver cannot be interrupted: the thread then finishes
    // it on its own, holding its share of the capture, and delivers nothing more.
    if (capture->WaitUntilFinished(kStopWaitMs))
        thread_.join();
    else
        thread_.detach();
}

bool IioAccelerometerSource::IsRunning() const {
    std::lock_guard lock(captureMutex_);
    return capture_ != nullptr;
}

void IioAccelerometerSource::ReopenAfterResume() {
    std::lock_guard lock(captureMutex_);
    if (capture_) capture_->Reopen();
}

void IioAccelerometerSource::SetWindowShown(bool shown) {
    std::lock_guard lock(captureMutex_);
    windowShown_ = shown;
    if (capture_) capture_->ShareDevice(shown);
}

bool IioAccelerometerSource::IsBuffered() const {
    std::lock_guard lock(captureMutex_);
    return capture_ && capture_->IsBuffered();
}
