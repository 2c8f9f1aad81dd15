#include "TivImagePanel.h"

#include <gtest/gtest.h>

#include "Touch.h"
#include "TivUtils.h"

namespace {

std::unique_ptr<QPixmap> Solid(int w, int h, const QColor& color) {
    auto p = std::make_unique<QPixmap>(w, h);
    p->fill(color);
    return p;
}

TEST(TivImagePanelTest, TakesThePictureSizeAndDrawsItUnscaled) {
    TivImagePanel panel;
    EXPECT_TRUE(panel.Initialize(QPoint(5, 6), Solid(30, 10, Qt::red)));
    EXPECT_EQ(panel.geometry(), QRect(5, 6, 30, 10));
    EXPECT_EQ(touch::PixelAt(panel, QPoint(29, 9)), QColor(Qt::red));

    // A new picture keeps the panel's size; a bigger one is clipped, not scaled.
    panel.SetImage(Solid(60, 20, Qt::blue));
    EXPECT_EQ(panel.size(), QSize(30, 10));
    EXPECT_EQ(touch::PixelAt(panel, QPoint(0, 0)), QColor(Qt::blue));

    panel.SetImage(nullptr);
    EXPECT_EQ(touch::PixelAt(panel, QPoint(0, 0)).alpha(), 0);
    EXPECT_TRUE(panel.Initialize(QPoint(1, 2), std::unique_ptr<QPixmap>()));  // an empty panel
    EXPECT_EQ(panel.geometry(), QRect(1, 2, 0, 0));

    // A named picture: sized at once, drawn when the panel paints.
    const QSize drawn = TivUtils::ScaledSize(QStringLiteral("unlock.png"));
    EXPECT_TRUE(panel.Initialize(QPoint(3, 4), QStringLiteral("unlock.png")));
    EXPECT_EQ(panel.geometry(), QRect(QPoint(3, 4), drawn));
    EXPECT_GT(touch::PixelAt(panel, QPoint(drawn.width() / 2, drawn.height() / 2)).alpha(), 0);
}

}  // namespace
