// Every picture in res/images must render, at both layouts, to a non-empty image of the
// size it declares.
#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QImage>
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

TEST(ArtworkTest, EveryPictureRendersAtBothLayouts) {
    const QStringList files = ArtworkFiles();
    ASSERT_GE(files.size(), 28) << "res/images looks incomplete";
    const QString savedRes = AppPaths::Res();
    AppPaths::SetRes(QStringLiteral(PEDOMETER_SOURCE_DIR "/res"));

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

        if (file != QLatin1String("transparent.svg")) {
            EXPECT_TRUE(HasVisiblePixel(full->toImage()));
        }
    }
    AppPaths::SetRes(savedRes);
}

}  // namespace
