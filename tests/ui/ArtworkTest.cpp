// Every picture in res/images must render, at both layouts, to a non-empty image of the
// size it declares. With PEDOMETER_ART_SHEET=<folder> set, the test also writes each
// render as PNG and contact sheets (backgrounds, controls, small pictures doubled) there
// for a visual check.
#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include "AppPaths.h"
#include "TivUtils.h"

namespace {

QStringList ArtworkFiles() {
    QDir dir(QStringLiteral(PEDOMETER_SOURCE_DIR "/res/images"));
    return dir.entryList({QStringLiteral("*.svg")}, QDir::Files, QDir::Name);
}

bool HasVisiblePixel(const QImage& image) {
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < argb.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(argb.constScanLine(y));
        for (int x = 0; x < argb.width(); ++x) {
            if (qAlpha(line[x]) > 0) return true;
        }
    }
    return false;
}

// Lays the renders out in rows on a dark checkerboard, each scaled by `scale`.
QImage ContactSheet(const QList<QPair<QString, QImage>>& items, double scale, int width) {
    const int pad = 12, label = 18;
    QList<QRect> cells;
    int x = pad, y = pad, rowHeight = 0;
    for (const auto& item : items) {
        const QSize size = (QSizeF(item.second.size()) * scale).toSize();
        const int cellWidth = std::max(size.width(), 120);
        if (x + cellWidth + pad > width && x > pad) {
            x = pad;
            y += rowHeight + label + pad;
            rowHeight = 0;
        }
        cells.append(QRect(QPoint(x, y), size));
        x += cellWidth + pad;
        rowHeight = std::max(rowHeight, size.height());
    }
    QImage sheet(width, y + rowHeight + label + pad, QImage::Format_ARGB32);
    QPainter p(&sheet);
    for (int cy = 0; cy < sheet.height(); cy += 16) {
        for (int cx = 0; cx < width; cx += 16)
            p.fillRect(cx, cy, 16, 16,
                       ((cx + cy) / 16) % 2 ? QColor(40, 44, 52) : QColor(30, 33, 40));
    }
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    p.setPen(Qt::white);
    QFont font = p.font();
    font.setPixelSize(11);
    p.setFont(font);
    for (int i = 0; i < items.size(); ++i) {
        p.drawImage(cells[i], items[i].second);
        p.drawText(cells[i].left(), cells[i].bottom() + 14, items[i].first);
    }
    return sheet;
}

TEST(ArtworkTest, EveryPictureRendersAtBothLayouts) {
    const QStringList files = ArtworkFiles();
    ASSERT_GE(files.size(), 28) << "res/images looks incomplete";
    const QString savedRes = AppPaths::Res();
    AppPaths::SetRes(QStringLiteral(PEDOMETER_SOURCE_DIR "/res"));

    QList<QPair<QString, QImage>> backgrounds, controls;
    for (const QString& file : files) {
        SCOPED_TRACE(file.toStdString());
        const QString name = QFileInfo(file).completeBaseName() + QStringLiteral(".png");
        QSvgRenderer renderer(QStringLiteral(PEDOMETER_SOURCE_DIR "/res/images/") + file);
        ASSERT_TRUE(renderer.isValid());
        const QSize declared = renderer.defaultSize();
        ASSERT_FALSE(declared.isEmpty());

        TivUtils::SetScreenResolution(TivUtils::HVGA_WIDTH);
        auto small = TivUtils::GetBitmapWithRightResolutionN(name);
        TivUtils::SetScreenResolution(TivUtils::WVGA_WIDTH);
        auto full = TivUtils::GetBitmapWithRightResolutionN(name);
        ASSERT_TRUE(full && small);
        EXPECT_EQ(full->size(), declared);
        EXPECT_EQ(small->width(), qRound(declared.width() * 2.0 / 3.0));
        EXPECT_EQ(small->height(), qRound(declared.height() * 2.0 / 3.0));

        const QImage image = full->toImage();
        if (file != QLatin1String("transparent.svg")) EXPECT_TRUE(HasVisiblePixel(image));
        (declared.width() >= 400 && declared.height() >= 400 ? backgrounds : controls)
            .append({QFileInfo(file).completeBaseName(), image});
    }
    AppPaths::SetRes(savedRes);

    const QString sheetDir = qEnvironmentVariable("PEDOMETER_ART_SHEET");
    if (!sheetDir.isEmpty()) {
        QDir().mkpath(sheetDir);
        for (const auto& list : {backgrounds, controls}) {
            for (const auto& item : list) item.second.save(sheetDir + '/' + item.first + ".png");
        }
        ContactSheet(backgrounds, 0.5, 1000).save(sheetDir + "/sheet-backgrounds.png");
        ContactSheet(controls, 1.0, 1000).save(sheetDir + "/sheet-controls.png");
        QList<QPair<QString, QImage>> small;
        for (const auto& item : controls) {
            if (item.second.width() <= 160 && item.second.height() <= 100) small.append(item);
        }
        ContactSheet(small, 2.0, 1400).save(sheetDir + "/sheet-small-x2.png");
    }
}

}  // namespace
