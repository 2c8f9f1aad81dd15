#include "TivUtils.h"

#include <QFileInfo>
#include <QFontMetrics>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QHash>
#include <QImage>
#include <QPainter>
#include <QPixmapCache>
#include <QSet>
#include <QSvgRenderer>
#include <algorithm>
#include <atomic>
#include <cmath>
#include <memory>
#include <mutex>

#include "AppPaths.h"

namespace {
std::atomic<int> startupWidth{TivUtils::WVGA_WIDTH};
std::atomic<double> layoutScale{1.0};
std::atomic<int> smallestText{1};

std::mutex warnedMutex;
QSet<QString> warnedNames;

// Which picture each render shows, by the render's cache key, so that a control can ask
// for the same picture again at a new scale (GUI thread only).
QHash<qint64, QString>& renderedNames() {
    static QHash<qint64, QString> names;
    return names;
}

// One warning per unknown picture, so a screen redrawn every second does not flood.
void WarnMissing(const QString& name, const QString& path) {
    std::lock_guard lock(warnedMutex);
    if (warnedNames.contains(name)) return;
    warnedNames.insert(name);
    qWarning("pedometer: picture \"%s\" is missing or unreadable (%s)", qPrintable(name),
             qPrintable(path));
}

double DevicePixelRatio() {
    return qGuiApp != nullptr ? std::max(1.0, qGuiApp->devicePixelRatio()) : 1.0;
}

// A picture's artwork, parsed once per run: its reference size and every render at any
// scale come from the same document (GUI thread only). Null, with one warning, when the
// artwork cannot be used.
struct Artwork {
    QSvgRenderer renderer;
    QSizeF drawn;
};

Artwork* LoadArtwork(const QString& name) {
    const QString path = TivUtils::GetArtworkPath(name);
    if (path.isEmpty()) {
        WarnMissing(name, QStringLiteral("no file name"));
        return nullptr;
    }
    static QHash<QString, std::shared_ptr<Artwork>> loaded;
    if (auto known = loaded.constFind(path); known != loaded.constEnd()) return known->get();
    auto artwork = std::make_shared<Artwork>();
    QSizeF& drawn = artwork->drawn;
    QSvgRenderer& renderer = artwork->renderer;
    if (QFileInfo(path).isFile() && renderer.load(path) && renderer.isValid()) {
        drawn = renderer.defaultSize();
        if (drawn.isEmpty()) drawn = renderer.viewBoxF().size();
    }
    if (drawn.isEmpty()) {
        WarnMissing(name, path);
        return nullptr;  // not remembered: a file put in place later is found
    }
    return loaded.insert(path, std::move(artwork))->get();
}

// `size` logical pixels of the picture, rendered at the device pixel ratio; cached.
QPixmap Render(const QString& name, const QSize& size) {
    const double ratio = DevicePixelRatio();
    // Keyed by the artwork's path, so pictures from another resource folder are not mixed up.
    const QString key = QStringLiteral("TivUtils:%1@%2x%3*%4")
                            .arg(TivUtils::GetArtworkPath(name))
                            .arg(size.width())
                            .arg(size.height())
                            .arg(ratio);
    QPixmap cached;
    if (QPixmapCache::find(key, &cached)) return cached;
    Artwork* artwork = size.isEmpty() ? nullptr : LoadArtwork(name);
    if (artwork == nullptr) return {};
    QImage image(
        QSize(int(std::lround(size.width() * ratio)), int(std::lround(size.height() * ratio))),
        QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        artwork->renderer.render(&painter, QRectF(QPointF(0, 0), QSizeF(image.size())));
    }
    image.setDevicePixelRatio(ratio);
    QPixmap pixmap = QPixmap::fromImage(std::move(image));
    QPixmapCache::insert(key, pixmap);
    renderedNames().insert(pixmap.cacheKey(), name);
    return pixmap;
}
}  // namespace

void TivUtils::SetScreenResolution(int width) {
    if (width <= 0) return;
    startupWidth.store(width);
    layoutScale.store(double(width) / WVGA_WIDTH);
}

int TivUtils::GetStartupResolution() {
    return startupWidth.load();
}

int TivUtils::GetScreenResolution() {
    return int(std::lround(WVGA_WIDTH * GetScale()));
}

double TivUtils::GetScale() {
    return layoutScale.load();
}

int TivUtils::Scaled(int size) {
    return int(std::lround(size * GetScale()));
}

QRect TivUtils::Scaled(const QRect& rect) {
    return QRect(Scaled(rect.x()), Scaled(rect.y()), Scaled(rect.width()), Scaled(rect.height()));
}

void TivUtils::SetScale(double scale) {
    if (scale > 0) layoutScale.store(scale);
}

void TivUtils::SetSmallestTextPx(int pixels) {
    smallestText.store(std::max(1, pixels));
}

int TivUtils::GetSmallestTextPx() {
    return smallestText.load();
}

int TivUtils::GetSystemFontSize() {
    return int(std::lround(30 * GetScale()));
}

QString TivUtils::GetArtworkPath(const QString& name) {
    const QString base = QFileInfo(name).completeBaseName();
    if (base.isEmpty()) return {};
    return AppPaths::ResFile(QStringLiteral("images/%1.svg").arg(base));
}

QSize TivUtils::ReferenceSize(const QString& name) {
    const Artwork* artwork = LoadArtwork(name);
    if (artwork == nullptr) return {};
    return QSize(int(std::lround(artwork->drawn.width())),
                 int(std::lround(artwork->drawn.height())));
}

QSize TivUtils::ScaledSize(const QString& name) {
    const QSize reference = ReferenceSize(name);  // the parsed artwork is kept
    if (reference.isEmpty()) return {};
    return QSize(int(std::lround(reference.width() * GetScale())),
                 int(std::lround(reference.height() * GetScale())));
}

std::unique_ptr<QPixmap> TivUtils::GetBitmapWithRightResolutionN(const QString& name) {
    const QSize size = ScaledSize(name);
    if (size.isEmpty()) return nullptr;
    QPixmap pixmap = Render(name, size);
    if (pixmap.isNull()) return nullptr;
    return std::make_unique<QPixmap>(pixmap);
}

std::unique_ptr<QPixmap> TivUtils::RenderAgain(const QPixmap& picture) {
    const auto name = renderedNames().constFind(picture.cacheKey());
    if (name == renderedNames().constEnd()) return nullptr;
    // A copy: rendering inserts into the same table, which may move its entries.
    const QString copy = *name;
    return GetBitmapWithRightResolutionN(copy);
}

std::unique_ptr<QPixmap> TivUtils::RenderAgain(const QPixmap& picture, const QSize& size) {
    const auto name = renderedNames().constFind(picture.cacheKey());
    if (name == renderedNames().constEnd() || size.isEmpty()) return nullptr;
    const QString copy = *name;  // as above
    QPixmap pixmap = Render(copy, size);
    if (pixmap.isNull()) return nullptr;
    return std::make_unique<QPixmap>(pixmap);
}

QPixmap TivUtils::RenderPicture(const QString& name, const QSize& size) {
    return Render(name, size);
}

int TivUtils::LargestFittingSize(int smallest, int largest, const std::function<bool(int)>& fits) {
    if (largest <= smallest || fits(largest)) return largest;
    int low = smallest;  // fits, or the floor
    int high = largest;  // does not fit
    while (high - low > 1) {
        const int middle = low + (high - low) / 2;
        (fits(middle) ? low : high) = middle;
    }
    return low;
}

int TivUtils::LargestFittingSize(int smallest, int largest, const QStringList& texts, int width) {
    return LargestFittingSize(smallest, largest, [&texts, width](int size) {
        const QFontMetrics metrics(CreateFont(FONT_STYLE_PLAIN, size));
        return std::all_of(texts.begin(), texts.end(), [&](const QString& text) {
            return metrics.horizontalAdvance(text) <= width;
        });
    });
}

QFont TivUtils::CreateFont(int style, int size, const QString& family) {
    QFont font = QGuiApplication::font();
    if (!family.isEmpty()) font.setFamily(family);
    font.setBold((style & FONT_STYLE_BOLD) != 0);
    font.setItalic((style & FONT_STYLE_ITALIC) != 0);
    // Measure the line height of this family at a large reference size and scale the
    // em so that one line is `size` pixels high.
    constexpr int reference = 100;
    font.setPixelSize(reference);
    const double lineHeight = QFontMetricsF(font).height();
    const double ratio = lineHeight > 0 ? reference / lineHeight : 1.0;
    font.setPixelSize(std::max(smallestText.load(), int(std::lround(std::max(size, 1) * ratio))));
    return font;
}
