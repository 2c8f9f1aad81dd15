#include "TivUtils.h"

#include <QFileInfo>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPixmapCache>
#include <QSet>
#include <QSvgRenderer>
#include <atomic>
#include <cmath>
#include <mutex>

#include "AppPaths.h"

namespace {
std::atomic<int> screenWidth{TivUtils::WVGA_WIDTH};

std::mutex warnedMutex;
QSet<QString> warnedNames;

// One warning per unknown picture, so a screen redrawn every second does not flood.
void WarnMissing(const QString& name, const QString& path) {
    std::lock_guard lock(warnedMutex);
    if (warnedNames.contains(name)) return;
    warnedNames.insert(name);
    qWarning("pedometer: picture \"%s\" is missing or unreadable (%s)", qPrintable(name),
             qPrintable(path));
}
}  // namespace

void TivUtils::SetScreenResolution(int width) {
    if (width > 0) screenWidth.store(width);
}

int TivUtils::GetScreenResolution() {
    return screenWidth.load();
}

double TivUtils::GetScale() {
    return double(GetScreenResolution()) / WVGA_WIDTH;
}

int TivUtils::GetSystemFontSize() {
    return int(std::lround(30 * GetScale()));
}

QString TivUtils::GetArtworkPath(const QString& name) {
    const QString base = QFileInfo(name).completeBaseName();
    if (base.isEmpty()) return {};
    return AppPaths::ResFile(QStringLiteral("images/%1.svg").arg(base));
}

std::unique_ptr<QPixmap> TivUtils::GetBitmapWithRightResolutionN(const QString& name) {
    const QString path = GetArtworkPath(name);
    if (path.isEmpty()) {
        WarnMissing(name, QStringLiteral("no file name"));
        return nullptr;
    }
    const int width = GetScreenResolution();
    const QString key = QStringLiteral("TivUtils:%1@%2").arg(path).arg(width);
    QPixmap cached;
    if (QPixmapCache::find(key, &cached)) return std::make_unique<QPixmap>(cached);

    QSvgRenderer renderer;
    if (!QFileInfo(path).isFile() || !renderer.load(path) || !renderer.isValid()) {
        WarnMissing(name, path);
        return nullptr;
    }
    QSizeF drawn = renderer.defaultSize();
    if (drawn.isEmpty()) drawn = renderer.viewBoxF().size();
    const QSize size(int(std::lround(drawn.width() * GetScale())),
                     int(std::lround(drawn.height() * GetScale())));
    if (size.isEmpty()) {
        WarnMissing(name, path);
        return nullptr;
    }
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        renderer.render(&painter, QRectF(QPointF(0, 0), QSizeF(size)));
    }
    QPixmap pixmap = QPixmap::fromImage(std::move(image));
    QPixmapCache::insert(key, pixmap);
    return std::make_unique<QPixmap>(pixmap);
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
    font.setPixelSize(std::max(1, int(std::lround(std::max(size, 1) * ratio))));
    return font;
}
